#include <tyx/TyxColorModel.h>
#include <tyx/TyxEnum.h>
#include <tyx/TyxVariant.h>

#include <gtest/gtest.h>

#include <sstream>
#include <vector>

namespace {

using namespace tyx;
using CM = TyxColorModel;
using Extra = std::vector<TyxColorModel::ExtraBandType>;

std::wstring textOf(const TyxColorModel &model)
{
    std::wostringstream out;
    out << model;
    return out.str();
}

// The text forms below carry the key and colour band count of each code.
TEST(TyxColorModelTest, KeysIgnoreCaseAndTheVariantCodeIs29)
{
    EXPECT_EQ(CM::fromString(L"srgb"), CM::sRGB);
    EXPECT_EQ(CM::fromString(L"Lab"), CM::Invalid);
    // A key of a caller-counted type cannot make a model on its own.
    EXPECT_FALSE(TyxColorModel(TyxString(L"Other")).isValid());
    EXPECT_EQ(CM::allKeys().size(), 19u);
    EXPECT_EQ(CM::enumerator().data(CM::MultiSpectral).value<unsigned>(), 0u);

    const TyxVariant v(TyxColorModel(CM::CMYK, Extra{CM::AssociatedAlpha}));
    EXPECT_EQ(v.value<int>(), 10);

    // Integers build the model from the bare code.
    EXPECT_EQ(TyxVariant(3).value<TyxColorModel>(), TyxColorModel(CM::sRGB));
    EXPECT_FALSE(TyxVariant(1).value<TyxColorModel>().isValid());
    EXPECT_EQ(TyxVariant(L"(hsi,3,0)").value<TyxColorModel>(), TyxColorModel(CM::HSI));
    EXPECT_FALSE(
        TyxVariant::prototype(TyxMetaType(TyxMetaType::ColorModel)).value<TyxColorModel>().isValid());
}

TEST(TyxColorModelTest, SetTypeMessages)
{
    struct Case {
        int code;
        bool withBands;
        unsigned bands;
        const wchar_t *text;
        unsigned bandsAfter;
    };
    // Each case starts from GrayScale: a failure leaves its one band.
    const Case cases[] = {
        {20, false, 0, L"Passed invalid color model type [20]. ", 1},
        {19, true, 3, L"Passed invalid color model type [19]. ", 1},
        {1, false, 0,
         L"Passed invalid color model type MultiSpectral or Other. Please use the alternate setType method.",
         1},
        {18, true, 0, L"Passed invalid number of image bands (less than 1).", 1},
        {-1, false, 0, L"Passed an invalid (out-of-range) enumeration type.", 1},
        // The band count of the table stays after the mismatch.
        {2, true, 4, L"Passed type (RGB) but with an invalid number of bands (4).", 3},
        {10, true, 3, L"Passed type (CMYK) but with an invalid number of bands (3).", 4},
        // The caller gives the count of MultiSpectral and Other.
        {1, true, 7, L"", 7},
        {2, true, 3, L"", 3},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(testing::Message() << c.code << " " << c.bands);
        TyxColorModel model(CM::GrayScale);
        const auto code = static_cast<CM::Code>(c.code);
        const TyxTextMsg msg = c.withBands ? model.setType(code, c.bands) : model.setType(code);
        EXPECT_EQ(msg.text(), c.text);
        EXPECT_EQ(model.isValid(), *c.text == L'\0');
        EXPECT_EQ(model.numColorBands(), c.bandsAfter);
    }
}

TEST(TyxColorModelTest, ExtraBandsCountAndCompareInOrder)
{
    const TyxColorModel a(CM::RGB, Extra{CM::AssociatedAlpha, CM::Mask});
    EXPECT_EQ(a.numBands(), 5u);
    // A rejected type still keeps the extra bands.
    EXPECT_EQ(TyxColorModel(CM::Other, Extra{CM::Depth}).numExtraBands(), 1u);
    EXPECT_EQ(a, TyxColorModel(CM::RGB, 3, Extra{CM::AssociatedAlpha, CM::Mask}));
    EXPECT_NE(a, TyxColorModel(CM::RGB, Extra{CM::Mask, CM::AssociatedAlpha}));
    EXPECT_NE(TyxColorModel(CM::MultiSpectral, 4, {}), TyxColorModel(CM::MultiSpectral, 5, {}));
}

TEST(TyxColorModelTest, TextFormsRoundTrip)
{
    const struct {
        TyxColorModel model;
        const wchar_t *text;
    } cases[] = {
        {TyxColorModel(CM::RGB, Extra{CM::UnassociatedAlpha}), L"(RGB,3,1:2)"},
        {TyxColorModel(CM::GrayScale), L"(GrayScale,1,0)"},
        {TyxColorModel(CM::CMYK), L"(CMYK,4,0)"},
        {TyxColorModel(CM::MultiSpectral, 12, Extra{CM::Mask, CM::Depth, CM::Unspecified}),
         L"(MultiSpectral,12,3:3,4,0)"},
        {TyxColorModel(), L"(,0,0)"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(textOf(c.model), c.text);
        std::wistringstream in(c.text);
        TyxColorModel read(CM::MultiSpectral, 0, Extra{CM::Depth});
        in >> read;
        EXPECT_FALSE(in.fail());
        EXPECT_EQ(read, c.model);
    }
    EXPECT_EQ(textOf(TyxColorModel(CM::Other, 5, Extra{CM::Mask, static_cast<CM::ExtraBandType>(-7)})),
              L"(Other,5,2:3,-7)");
    std::ostringstream narrow;
    narrow << TyxColorModel(CM::CMYK);
    EXPECT_EQ(narrow.str(), "(CMYK,4,0)");
}

TEST(TyxColorModelTest, ReadingLeavesTheCloserWithoutExtraBands)
{
    std::wistringstream in(L"(YUV,3,0)|(RGB,3,1:1)|");
    TyxColorModel first, second;
    in >> first;
    EXPECT_EQ(static_cast<wchar_t>(in.get()), L')');
    EXPECT_EQ(static_cast<wchar_t>(in.get()), L'|');
    in >> second;
    EXPECT_EQ(static_cast<wchar_t>(in.get()), L'|');
    EXPECT_EQ(first, TyxColorModel(CM::YUV));
    EXPECT_EQ(second, TyxColorModel(CM::RGB, Extra{CM::AssociatedAlpha}));

    // A claimed count beyond the numbers present stops at the text's end.
    std::wistringstream truncated(L"(RGB,3,1000000000:1,2)");
    TyxColorModel model;
    truncated >> model;
    EXPECT_EQ(model.numExtraBands(), 2u);
}

} // namespace
