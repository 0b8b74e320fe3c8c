// tyx example: a plug-in offering one factory, "Scaler", whose objects scale
// samples by a factor set as a property.
#include <tyx/TyxFactoryRegistry.h>
#include <tyx/TyxMetaObjectImpl.h>
#include <tyx/TyxPluginProtocol.h>

#include "ExampleFilter.h"

using namespace tyx;

namespace {

class Scaler : public ExampleFilter {
public:
    double factor = 1.0;

    TyxString className() const override { return L"Scaler"; }
    TyxMetaObjectConstPtr metaObject() const override;
    using TyxObject::metaObject;

    std::vector<double> run(const std::vector<double> &samples) const override
    {
        std::vector<double> scaled;
        scaled.reserve(samples.size());
        for (double sample : samples)
            scaled.push_back(sample * factor);
        return scaled;
    }
};

class ScalerMetaObj : public TyxMetaObjectImpl<ScalerMetaObj, Scaler> {
public:
    using TyxMetaObjectImpl::TyxMetaObjectImpl;

    void initProperties() override
    {
        beginProperties(L"Scaler");
        addProperty(
            TyxMetaProperty(L'f', L"factor", L"Factor", TyxMetaType::Double, TyxMetaFlag::Required,
                            L"multiplies every sample"),
            [](ScalerMetaObj &m, const TyxVariant &v) { return take(v, m.object()->factor) ? 0 : 1; },
            [](ScalerMetaObj &m, TyxVariant &v) { return (v = m.object()->factor), 0; });
    }
};

TyxMetaObjectConstPtr Scaler::metaObject() const
{
    return TyxMetaObjectConstPtr(new ScalerMetaObj(const_cast<Scaler *>(this)));
}

class ScalerFactory : public TyxFactory {
public:
    explicit ScalerFactory(const TyxPluginProtocolPtr &protocol) : TyxFactory(protocol) {}
    std::unique_ptr<TyxObject> create() const override { return std::make_unique<Scaler>(); }
    const TyxString &key() const override
    {
        static const TyxString name(L"Scaler");
        return name;
    }
    std::unique_ptr<TyxObject> create(const TyxVariantMap &arguments) const override
    {
        auto scaler = std::make_unique<Scaler>();
        for (const auto &[name, value] : arguments)
            scaler->metaObject()->setProperty(name, value);
        return scaler;
    }
    TyxString description() const override { return L"Scales samples by a factor"; }
};

class ScalerProtocol : public TyxPluginProtocol {
public:
    TyxTextMsg initialize() override
    {
        factories().insert(new ScalerFactory(selfPtr()));
        return TyxTextMsg();
    }
    void terminate() override { factories().clear(); }
    TyxString name() const override { return L"scaler"; }
    const TyxVersion &version() const override
    {
        static const TyxVersion built(4, 1, 0);
        return built;
    }
    TyxString description() const override { return L"Example plug-in"; }
    TyxString vendor() const override { return L"tyx"; }
};

} // namespace

TYX_PLUGIN_ENTRY_POINT
{
    static ScalerProtocol protocol;
    return &protocol;
}
