// Parameters: a value, its description and an optional cross reference.
#include <tyx/TyxParameter.h>

#include <ostream>
#include <sstream>

#include <tyx/TyxMetaObjectImpl.h>

namespace tyx {

namespace {

/// Meta object of TyxParameter.
class TyxParameterMetaObj : public TyxMetaObjectImpl<TyxParameterMetaObj, TyxParameter> {
public:
    using TyxMetaObjectImpl::TyxMetaObjectImpl;

    void initProperties() override
    {
        using Meta = TyxParameterMetaObj;
        beginProperties(L"TyxParameter");
        addProperty(
            TyxMetaProperty(L"cross_ref", TyxMetaType::String, TyxMetaFlag(), L"Cross Reference"),
            [](Meta &m, const TyxVariant &v) {
                TyxString text;
                if (!take(v, text))
                    return 1;
                m.object()->setCrossRef(text);
                return 0;
            },
            [](Meta &m, TyxVariant &v) { return (v = m.object()->crossRef()), 0; });
        addProperty(
            TyxMetaProperty(L"value", internal::aliasType(internal::TyxValueAlias::Variant), TyxMetaFlag(),
                            L"Value"),
            [](Meta &m, const TyxVariant &v) {
                return m.object()->setValue(v, m.object()->isExpression()), 0;
            },
            [](Meta &m, TyxVariant &v) { return (v = m.object()->value()), 0; });
        addProperty(
            TyxMetaProperty(L"properties", internal::TyxVariantTraits<TyxMetaProperty>::type(), TyxMetaFlag(),
                            L"Properties"),
            [](Meta &m, const TyxVariant &v) {
                if (v.type() != internal::TyxVariantTraits<TyxMetaProperty>::type())
                    return 1;
                m.object()->properties() = v.value<TyxMetaProperty>();
                return 0;
            },
            [](Meta &m, TyxVariant &v) { return (v = TyxVariant(m.object()->properties())), 0; });
    }
};

uint32_t withExpression(uint32_t flags, bool isExpression)
{
    return isExpression ? flags | TyxMetaFlag::Expression
                        : flags & ~static_cast<uint32_t>(TyxMetaFlag::Expression);
}

} // namespace

TyxParameter::TyxParameter() : TyxKeyedObject(TyxString()) { m_properties.setName(name()); }

TyxParameter::TyxParameter(const TyxMetaProperty &property)
    : TyxKeyedObject(property.name()), m_properties(property)
{
}

TyxParameter::TyxParameter(const TyxString &name, const TyxString &crossRef)
    : TyxKeyedObject(name), m_crossRef(crossRef), m_value(TyxString())
{
    m_properties.setName(this->name());
    m_properties.setLabel(this->name());
    m_properties.setType(m_value.type());
}

TyxParameter::TyxParameter(const TyxString &name, const TyxVariant &value, bool isExpression)
    : TyxKeyedObject(name), m_value(value)
{
    m_properties.setName(this->name());
    m_properties.setLabel(this->name());
    m_properties.setType(m_value.type());
    m_properties.setFlags(TyxMetaFlag(withExpression(m_properties.flags().value(), isExpression)));
}

TyxParameter::TyxParameter(const TyxParameter &other)
    : TyxKeyedObject(other), m_crossRef(other.m_crossRef), m_value(other.m_value),
      m_properties(other.m_properties)
{
}

TyxParameter &TyxParameter::operator=(const TyxParameter &other)
{
    if (this != &other) {
        TyxKeyedObject::operator=(other);
        m_crossRef = other.m_crossRef;
        m_value = other.m_value;
        m_properties = other.m_properties;
    }
    return *this;
}

TyxParameter::~TyxParameter() = default;

void TyxParameter::setValue(const TyxVariant &value, bool isExpression)
{
    m_value = value;
    m_properties.setFlags(TyxMetaFlag(withExpression(m_properties.flags().value(), isExpression)));
}

void TyxParameter::setName(const TyxString &name)
{
    TyxKeyedObject::setName(trim(name));
    m_properties.setName(this->name());
}

bool TyxParameter::operator==(const TyxParameter &other) const
{
    return m_crossRef == other.m_crossRef && m_properties == other.m_properties && m_value == other.m_value;
}

TyxString TyxParameter::className() const { return L"TyxParameter"; }

TyxMetaObjectConstPtr TyxParameter::metaObject() const
{
    return TyxMetaObjectConstPtr(new TyxParameterMetaObj(const_cast<TyxParameter *>(this)));
}

std::wostream &operator<<(std::wostream &os, const TyxParameter &parameter)
{
    return os << L'(' << static_cast<const std::wstring &>(parameter.name()) << L',' << parameter.value()
              << L',' << parameter.properties() << L')';
}

std::ostream &operator<<(std::ostream &os, const TyxParameter &parameter)
{
    std::wostringstream wide;
    wide << parameter;
    return os << toUTF8(wide.str());
}

} // namespace tyx
