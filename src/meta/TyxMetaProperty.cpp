// Property descriptions, their stream form and their meta object.
#include <tyx/TyxMetaProperty.h>

#include <sstream>
#include <type_traits>

#include <tyx/TyxMetaObjectImpl.h>

namespace tyx {

namespace {

[[maybe_unused]] const bool joinedVariant = internal::TyxVariantRegistrar::join<TyxMetaProperty>();

/// Meta object of TyxMetaProperty: its seven fields and its name.
class TyxMetaPropertyMetaObj : public TyxMetaObjectImpl<TyxMetaPropertyMetaObj, TyxMetaProperty> {
public:
    using TyxMetaObjectImpl::TyxMetaObjectImpl;

    void initProperties() override
    {
        using Meta = TyxMetaPropertyMetaObj;
        beginProperties(L"TyxMetaProperty");
        addProperty(
            TyxMetaProperty(L"name", TyxMetaType::String, TyxMetaFlag(), L"Name"),
            [](Meta &m, const TyxVariant &v) {
                return setText(v, [&](const TyxString &t) { m.object()->setName(t); });
            },
            [](Meta &m, TyxVariant &v) { return (v = m.object()->name()), 0; });
        addProperty(
            TyxMetaProperty(L"label", TyxMetaType::String, TyxMetaFlag(), L"Label"),
            [](Meta &m, const TyxVariant &v) {
                return setText(v, [&](const TyxString &t) { m.object()->setLabel(t); });
            },
            [](Meta &m, TyxVariant &v) { return (v = m.object()->label()), 0; });
        addProperty(
            TyxMetaProperty(L"type", TyxMetaType::String, TyxMetaFlag(), L"Type"),
            [](Meta &m, const TyxVariant &v) {
                return setText(v,
                               [&](const TyxString &t) { m.object()->setType(TyxMetaType::fromString(t)); });
            },
            [](Meta &m, TyxVariant &v) { return (v = m.object()->type().toString()), 0; });
        addProperty(
            TyxMetaProperty(L"flags", TyxMetaType::String, TyxMetaFlag(), L"Flags"),
            [](Meta &m, const TyxVariant &v) {
                return setText(v,
                               [&](const TyxString &t) { m.object()->setFlags(TyxMetaFlag::fromString(t)); });
            },
            [](Meta &m, TyxVariant &v) { return (v = m.object()->flags().toString()), 0; });
        addProperty(
            TyxMetaProperty(L"description", TyxMetaType::String, TyxMetaFlag(), L"Description"),
            [](Meta &m, const TyxVariant &v) {
                return setText(v, [&](const TyxString &t) { m.object()->setDescription(t); });
            },
            [](Meta &m, TyxVariant &v) { return (v = m.object()->description()), 0; });
        addProperty(
            TyxMetaProperty(L"command_flag", TyxMetaType::Char, TyxMetaFlag(), L"Command Flag"),
            [](Meta &m, const TyxVariant &v) {
                wchar_t letter = 0;
                if (!take(v, letter))
                    return 1;
                m.object()->setCmdLineFlag(letter);
                return 0;
            },
            [](Meta &m, TyxVariant &v) { return (v = TyxVariant(m.object()->cmdLineFlag())), 0; });
        addProperty(
            TyxMetaProperty(L"data", internal::aliasType(internal::TyxValueAlias::Variant), TyxMetaFlag(),
                            L"Data"),
            [](Meta &m, const TyxVariant &v) { return m.object()->setData(v), 0; },
            [](Meta &m, TyxVariant &v) { return (v = m.object()->data()), 0; });
        addProperty(
            TyxMetaProperty(L"validator", internal::TyxVariantTraits<TyxValidatorConstPtr>::type(),
                            TyxMetaFlag(), L"Validator"),
            [](Meta &m, const TyxVariant &v) {
                if (v.type() != internal::TyxVariantTraits<TyxValidatorConstPtr>::type())
                    return 1;
                m.object()->setValidator(v.value<TyxValidatorConstPtr>());
                return 0;
            },
            [](Meta &m, TyxVariant &v) { return (v = TyxVariant(m.object()->validator())), 0; });
    }

private:
    template <class Apply>
    static int setText(const TyxVariant &value, Apply apply)
    {
        TyxString text;
        if (!take(value, text))
            return 1;
        apply(text);
        return 0;
    }
};

// Reads up to \p stop into \p text; false at the end of input.
template <class C>
bool readUpTo(std::basic_istream<C> &is, C stop, std::basic_string<C> &text)
{
    text.clear();
    C c = 0;
    while (is.get(c)) {
        if (c == stop)
            return true;
        text += c;
    }
    return false;
}

void writeHead(std::wostream &os, const TyxMetaProperty &property)
{
    os << L'(' << static_cast<const std::wstring &>(property.name()) << L','
       << static_cast<const std::wstring &>(property.label()) << L',' << property.type() << L','
       << property.flags() << L',' << static_cast<const std::wstring &>(property.description()) << L',';
}

// Reads the stream form on either kind of stream; \p decode turns the
// stream's text into a TyxString.
template <class C, class Decode>
std::basic_istream<C> &readForm(std::basic_istream<C> &is, TyxMetaProperty &property, Decode decode)
{
    const auto fail = [&is]() -> std::basic_istream<C> & {
        is.setstate(std::ios_base::failbit);
        return is;
    };
    is >> std::ws;
    C open = 0;
    if (!is.get(open) || open != C('('))
        return fail();
    std::basic_string<C> text;
    if (!readUpTo(is, C(','), text))
        return fail();
    property.setName(decode(text));
    if (!readUpTo(is, C(','), text))
        return fail();
    property.setLabel(decode(text));
    if (!readUpTo(is, C(','), text))
        return fail();
    property.setType(TyxMetaType::fromString(trim(decode(text))));
    if (!readUpTo(is, C(','), text))
        return fail();
    property.setFlags(TyxMetaFlag::fromString(decode(text)));
    if (!readUpTo(is, C(','), text))
        return fail();
    property.setDescription(decode(text));
    C letter = 0;
    C separator = 0;
    if (!is.get(letter) || !is.get(separator))
        return fail();
    property.setCmdLineFlag(static_cast<wchar_t>(std::make_unsigned_t<C>(letter)));
    // The data runs to the ")" that closes the form; parentheses inside the
    // data (a list, a coordinate) are balanced so that they survive.
    text.clear();
    int depth = 0;
    C c = 0;
    bool closed = false;
    while (is.get(c)) {
        if (c == C('(')) {
            ++depth;
        } else if (c == C(')')) {
            if (depth == 0) {
                closed = true;
                break;
            }
            --depth;
        }
        text += c;
    }
    if (!closed)
        return fail();
    TyxVariant data;
    if (!text.empty()) {
        std::wistringstream dataStream(decode(text));
        dataStream >> data;
    }
    property.setData(data);
    return is;
}

} // namespace

TyxMetaProperty::TyxMetaProperty() : TyxKeyedObject(TyxString()) { m_label = name(); }

TyxMetaProperty::TyxMetaProperty(const TyxString &name, const TyxMetaType &type, const TyxMetaFlag &flags,
                                 const TyxString &label, const TyxString &description, wchar_t cmdLineFlag)
    // A keyed object keeps its name as given; a property's name is looked up
    // by text, so it is trimmed here and never has surrounding white space.
    : TyxKeyedObject(trim(name)), m_type(type), m_flags(flags), m_label(label), m_description(description),
      m_cmdLineFlag(cmdLineFlag)
{
    if (m_label.empty())
        m_label = this->name();
}

TyxMetaProperty::TyxMetaProperty(wchar_t cmdLineFlag, const TyxString &name, const TyxString &label,
                                 const TyxMetaType &type, const TyxMetaFlag &flags,
                                 const TyxString &description)
    : TyxMetaProperty(name, type, flags, label, description, cmdLineFlag)
{
}

TyxMetaProperty::~TyxMetaProperty() = default;

void TyxMetaProperty::setName(const TyxString &name) { TyxKeyedObject::setName(trim(name)); }

void TyxMetaProperty::setValidator(const TyxValidator *validator)
{
    m_validator = TyxValidatorConstPtr(validator ? validator->clone() : nullptr);
}

bool TyxMetaProperty::operator==(const TyxMetaProperty &other) const
{
    if (name() != other.name() || m_label != other.m_label || m_description != other.m_description ||
        m_flags != other.m_flags || m_type != other.m_type || m_cmdLineFlag != other.m_cmdLineFlag ||
        !(m_data == other.m_data))
        return false;
    if (!m_validator || !other.m_validator)
        return !m_validator && !other.m_validator;
    return m_validator->isEqual(other.m_validator.get());
}

TyxString TyxMetaProperty::className() const { return L"TyxMetaProperty"; }

TyxMetaObjectConstPtr TyxMetaProperty::metaObject() const
{
    return TyxMetaObjectConstPtr(new TyxMetaPropertyMetaObj(const_cast<TyxMetaProperty *>(this)));
}

std::wostream &operator<<(std::wostream &os, const TyxMetaProperty &property)
{
    writeHead(os, property);
    os.put(property.cmdLineFlag());
    return os << L',' << property.data() << L')';
}

std::ostream &operator<<(std::ostream &os, const TyxMetaProperty &property)
{
    std::wostringstream front;
    writeHead(front, property);
    std::wostringstream back;
    back << L',' << property.data() << L')';
    os << toUTF8(front.str());
    // The letter is one raw byte on a narrow stream.
    os.put(static_cast<char>(property.cmdLineFlag() & 0xFF));
    return os << toUTF8(back.str());
}

std::wistream &operator>>(std::wistream &is, TyxMetaProperty &property)
{
    return readForm(is, property, [](const std::wstring &text) { return TyxString(text); });
}

std::istream &operator>>(std::istream &is, TyxMetaProperty &property)
{
    return readForm(is, property, [](const std::string &text) { return fromUTF8(text); });
}

namespace internal {

bool TyxDefaultCasts<TyxMetaProperty>::toString(const TyxMetaProperty &value, TyxString &text)
{
    std::wostringstream os;
    os << value;
    text = os.str();
    return true;
}

bool TyxDefaultCasts<TyxMetaProperty>::fromString(const TyxString &text, TyxMetaProperty &value)
{
    std::wistringstream is(text);
    TyxMetaProperty read = value;
    is >> read;
    if (is.fail())
        return false;
    value = read;
    return true;
}

} // namespace internal

} // namespace tyx
