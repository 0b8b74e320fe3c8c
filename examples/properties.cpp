// tyx example: a processing class that describes its properties, set by name
// from text and checked by the validators of their descriptions.
#include <iostream>
#include <memory>

#include <tyx/TyxEnum.h>
#include <tyx/TyxEnumValidator.h>
#include <tyx/TyxMetaObjectImpl.h>
#include <tyx/TyxMetaProperties.h>
#include <tyx/TyxNumValidator.h>
#include <tyx/TyxTextMsg.h>

using namespace tyx;

namespace {

// The kernels a resampler knows.
const TyxEnum &kernels()
{
    static const TyxEnum table = [] {
        TyxEnum e;
        e.insert(TyxEnum::Item(0, L"Nearest"));
        e.insert(TyxEnum::Item(1, L"Bilinear"));
        e.insert(TyxEnum::Item(2, L"Cubic"));
        return e;
    }();
    return table;
}

// A small processing class with four properties.
class Resampler : public TyxObject {
public:
    double radius = 1.0;
    int kernel = 0;
    TyxString label = L"resampled";
    bool verbose = false;

    TyxString className() const override { return L"Resampler"; }
    TyxMetaObjectConstPtr metaObject() const override;
    using TyxObject::metaObject;
};

class ResamplerMetaObj : public TyxMetaObjectImpl<ResamplerMetaObj, Resampler> {
public:
    using TyxMetaObjectImpl::TyxMetaObjectImpl;

    void initProperties() override
    {
        using Meta = ResamplerMetaObj;
        beginProperties(L"Resampler");
        const TyxNumValidator<double> range(
            TyxNumValidator<double>::LowerExclusive | TyxNumValidator<double>::UpperInclusive, 0.0, 8.0);
        addProperty(
            TyxMetaProperty(L'r', L"radius", L"Radius", TyxMetaType::Double, TyxMetaFlag::Required,
                            L"kernel radius in pixels"),
            [](Meta &m, const TyxVariant &v) { return take(v, m.object()->radius) ? 0 : 1; },
            [](Meta &m, TyxVariant &v) { return (v = m.object()->radius), 0; }, &range);
        const TyxEnumValidator names(kernels());
        addProperty(
            TyxMetaProperty(L'k', L"kernel", L"Kernel", TyxMetaType::String, TyxMetaFlag(),
                            L"interpolation kernel"),
            [](Meta &m, const TyxVariant &v) {
                const int code = kernels().fromString(v.value<TyxString>());
                if (code == TyxEnum::INVALID_ENUM())
                    return 1;
                m.object()->kernel = code;
                return 0;
            },
            [](Meta &m, TyxVariant &v) { return (v = kernels().toString(m.object()->kernel)), 0; }, &names);
        addProperty(
            TyxMetaProperty(L'l', L"label", L"Label", TyxMetaType::String, TyxMetaFlag::Ignorable,
                            L"name of the output band"),
            [](Meta &m, const TyxVariant &v) { return take(v, m.object()->label) ? 0 : 1; },
            [](Meta &m, TyxVariant &v) { return (v = m.object()->label), 0; });
        addProperty(
            TyxMetaProperty(L'v', L"verbose", L"Verbose", TyxMetaType::Bool, TyxMetaFlag::Ignorable,
                            L"report progress"),
            [](Meta &m, const TyxVariant &v) { return take(v, m.object()->verbose) ? 0 : 1; },
            [](Meta &m, TyxVariant &v) { return (v = m.object()->verbose), 0; });
    }
};

TyxMetaObjectConstPtr Resampler::metaObject() const
{
    return TyxMetaObjectConstPtr(new ResamplerMetaObj(const_cast<Resampler *>(this)));
}

std::string text(const TyxString &wide) { return toUTF8(wide); }

} // namespace

int main()
{
    Resampler resampler;
    const TyxMetaObjectPtr meta = resampler.metaObject();
    const TyxMetaPropertiesConstPtr properties = meta->properties();

    // Settings as they would come from a command line or a file: all text.
    const std::pair<const wchar_t *, const wchar_t *> settings[] = {
        {L"radius", L"2.5"}, {L"kernel", L"cubic"}, {L"label", L"smoothed"}, {L"verbose", L"true"}};
    for (const auto &[name, value] : settings) {
        const int status = meta->setProperty(name, TyxVariant(value));
        std::cout << "set " << text(name) << " = " << text(value) << (status == 0 ? "" : " (refused)")
                  << "\n";
    }
    std::cout << "set colour = red"
              << (meta->setProperty(L"colour", TyxVariant(L"red")) == 0 ? "" : " (refused)") << "\n";

    std::cout << "\nproperties of " << text(properties->metaClassName()) << ":\n";
    for (auto it = properties->begin(); it != properties->end(); ++it) {
        const TyxMetaPropertyPtr property = *it;
        TyxVariant value;
        meta->getProperty(property->name(), value);
        bool valid = true;
        if (property->validator())
            valid = property->validator()->isValid(value, nullptr);
        std::cout << "  -" << static_cast<char>(property->cmdLineFlag()) << " " << text(property->label())
                  << " " << property->flags() << " = " << text(value.value<TyxString>())
                  << (valid ? "" : " (invalid)") << "\n";
    }

    std::cout << "\nchecking bad values:\n";
    const std::pair<const wchar_t *, const wchar_t *> bad[] = {{L"radius", L"12"}, {L"kernel", L"Lanczos"}};
    for (const auto &[name, value] : bad) {
        const TyxMetaPropertyConstPtr property = properties->property(name);
        TyxTextMsg msg;
        if (!property->validator()->isValid(TyxVariant(value), &msg))
            std::cout << "  " << text(name) << ": " << text(msg.text()) << "\n";
    }
    return 0;
}
