// Tests of the translation layer over a source metadata.
#include <tyx/TyxMetaDataTranslated.h>

#include <gtest/gtest.h>

namespace {

using namespace tyx;

// Presents a raster's source tree under other names.
class RasterView : public TyxMetaDataTranslated {
public:
    explicit RasterView(const TyxMetaDataPtr &source) : TyxMetaDataTranslated(source)
    {
        EXPECT_EQ(setConstant(L"format", TyxVariant(L"GeoTIFF")), 0);
        EXPECT_EQ(setAlias(L"columns", L"image/width"), 0);
        EXPECT_EQ(setAlias(L"rows_km", L"image/height", static_cast<GetTranslator>(&RasterView::toKm)), 0);
        EXPECT_EQ(setTranslator(L"pixels", static_cast<Translator>(&RasterView::pixels),
                                static_cast<SetTranslator>(&RasterView::setPixels), TyxVariant(-1)),
                  0);
        EXPECT_EQ(setTranslator(L"missing", static_cast<Translator>(&RasterView::nothing), nullptr,
                                TyxVariant(L"fallback")),
                  0);
        EXPECT_EQ(setAlias(L"empty", L"  "), 1);
    }
    TyxVariant toKm(const TyxString &, const TyxVariant &value)
    {
        return TyxVariant(value.value<double>() / 1000);
    }
    TyxVariant pixels(const TyxString &)
    {
        return TyxVariant(sourceMetadata()->get(L"image/width").value<int>() *
                          sourceMetadata()->get(L"image/height").value<int>());
    }
    bool setPixels(const TyxString &, const TyxVariant &value)
    {
        lastPixels = value.value<int>();
        return lastPixels > 0;
    }
    TyxVariant nothing(const TyxString &) { return TyxVariant(); }
    int lastPixels = 0;
};

TEST(TyxMetaDataTranslatedTest, ReadsByKindAndWritesThroughToTheSource)
{
    const TyxMetaDataPtr source(new TyxMetaData);
    source->setValue(L"image/width", TyxVariant(640));
    source->setValue(L"image/height", TyxVariant(2000));
    RasterView view(source);
    EXPECT_EQ(view.get(L"format").value<TyxString>(), L"GeoTIFF");
    EXPECT_EQ(view.get(L" columns ").value<int>(), 640);
    EXPECT_DOUBLE_EQ(view.get(L"rows_km").value<double>(), 2.0);
    EXPECT_EQ(view.get(L"pixels").value<int>(), 640 * 2000);
    EXPECT_EQ(view.get(L"missing").value<TyxString>(), L"fallback");
    EXPECT_FALSE(view.get(L"unknown").isValid());

    EXPECT_EQ(view.setValue(L"columns", TyxVariant(800)), 0);
    EXPECT_EQ(source->value(L"image/width").value<int>(), 800);
    EXPECT_EQ(view.pushBack(L"columns", TyxVariant(900)), 0);
    EXPECT_EQ(source->size(L"image/width"), 2u);
    EXPECT_EQ(view.setValue(L"pixels", TyxVariant(5)), 0);
    EXPECT_EQ(view.lastPixels, 5);
    EXPECT_EQ(view.setValue(L"pixels", TyxVariant(-5)), 1);
    EXPECT_EQ(view.setValue(L"format", TyxVariant(L"PNG")), 1);
    EXPECT_EQ(view.setValue(L"unknown", TyxVariant(1)), 1);
    EXPECT_EQ(view.get(L"format").value<TyxString>(), L"GeoTIFF");
}

TEST(TyxMetaDataTranslatedTest, NoSourceQuietFlagAndFieldNames)
{
    RasterView view{TyxMetaDataPtr()};
    EXPECT_FALSE(view.get(L"format").isValid());
    EXPECT_EQ(view.setValue(L"columns", TyxVariant(1)), 1);
    view.quiet(true);
    EXPECT_FALSE(view.quiet());
    EXPECT_EQ(TyxMetaDataTranslated::toFieldName(L"abc[12]"), L"abc");
    EXPECT_EQ(TyxMetaDataTranslated::toFieldName(L"[1]"), L"[1]");
    EXPECT_EQ(TyxMetaDataTranslated::toFieldName(L"abc[x]"), L"abc[x]");
}

} // namespace
