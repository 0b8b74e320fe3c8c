// Recognising an argument in the command line and taking its value.
#include <tyx/TyxClArg.h>

#include <tyx/TyxTextMsg.h>

#include "core/TyxPost.h"

namespace tyx {

namespace {

wchar_t g_delimiter = L' ';

} // namespace

TyxClArg::TyxClArg(const TyxMetaProperty &properties, const TyxVariant &defaultValue,
                   const TyxClArgVisitorIFConstPtr &visitor)
    : TyxKeyedObject(properties.name()), m_properties(properties), m_value(defaultValue),
      m_defaultValue(defaultValue), m_visitor(visitor)
{
    const wchar_t f = m_properties.cmdLineFlag();
    if (f == flagStartChar() || f == L' ')
        TYX_THROW_ERROR(TyxString(L"Argument flag cannot be either '") + flagStartString() + L"' or '" +
                        nameStartString() + L"' or a space: " + TyxString(1, f));
    const TyxString &n = m_properties.name();
    if (n.starts_with(flagStartString()) || n.starts_with(L" "))
        TYX_THROW_ERROR(TyxString(L"Argument name cannot begin with either '") + flagStartString() +
                        L"' or '" + nameStartString() + L"' or space: " + n);
}

TyxClArg::~TyxClArg() = default;

TyxString TyxClArg::className() const { return L"TyxClArg"; }

bool TyxClArg::isRequired() const { return m_properties.flags().isRequired(); }

void TyxClArg::reset()
{
    m_value = m_defaultValue;
    m_isValueSet = false;
    m_isXorSet = false;
    m_hits = 0;
    m_moreWelcome = false;
}

bool TyxClArg::welcomeMoreValues()
{
    const bool before = m_moreWelcome;
    m_moreWelcome = true;
    return before;
}

TyxVariantList TyxClArg::valueList() const
{
    return m_isValueSet ? m_value.value<TyxVariantList>() : TyxVariantList();
}

void TyxClArg::appendValue(const TyxString &text)
{
    TyxVariantList list = valueList();
    list.push_back(convert(text));
    setTypedValue(TyxVariant(std::move(list)));
}

bool TyxClArg::matches(const TyxClArg &other) const
{
    if (hasFlag() && m_properties.cmdLineFlag() == other.m_properties.cmdLineFlag())
        return true;
    return !name().empty() && name() == other.name();
}

TyxString TyxClArg::flag() const
{
    return hasFlag() ? TyxString(1, m_properties.cmdLineFlag()) : TyxString();
}

TyxString TyxClArg::description() const
{
    if (!isRequired())
        return m_properties.description();
    return L"(" + m_requireLabel + L")  " + m_properties.description();
}

wchar_t TyxClArg::delimiter() { return g_delimiter; }

void TyxClArg::setDelimiter(wchar_t delimiter) { g_delimiter = delimiter; }

void TyxClArg::forceRequired()
{
    TyxMetaFlag flags(m_properties.flags().value() | TyxMetaFlag::Required);
    m_properties.setFlags(flags);
}

bool TyxClArg::argMatches(const TyxString &text) const
{
    if (hasFlag() && text == flagStartString() + flag())
        return true;
    return !name().empty() && text == nameStartString() + name();
}

bool TyxClArg::combinedSwitchesMatch(TyxString &text) const
{
    if (!text.starts_with(flagStartString()) || text.starts_with(nameStartString()))
        return false;
    if (text.find(delimiter()) != TyxString::npos)
        return false;
    if (!hasFlag() || text.size() < 2)
        return false;
    for (size_t i = 1; i < text.size(); ++i) {
        if (text[i] == m_properties.cmdLineFlag()) {
            text[i] = blankChar();
            return true;
        }
    }
    return false;
}

bool TyxClArg::ignoreRest() const
{
    return isIgnorable() && m_ignoreVisitor && m_ignoreVisitor->ignoreRest();
}

void TyxClArg::splitStr(const TyxString &text, TyxString &flagPart, TyxString &valuePart)
{
    const size_t at = text.find(delimiter());
    if (at == TyxString::npos) {
        flagPart = text;
        valuePart.clear();
        return;
    }
    flagPart = text.substr(0, at);
    valuePart = text.substr(at + 1);
}

bool TyxClArg::hasBlanks(const TyxString &text)
{
    for (size_t i = 1; i < text.size(); ++i) {
        if (text[i] == blankChar())
            return true;
    }
    return false;
}

bool TyxClArg::lastCombined(const TyxString &text)
{
    for (size_t i = 1; i < text.size(); ++i) {
        if (text[i] != blankChar())
            return false;
    }
    return true;
}

TyxString TyxClArg::valueName(const TyxString &valueId) const
{
    return m_properties.label().empty() ? valueId : m_properties.label();
}

TyxString TyxClArg::flagWithValue(const TyxString &valueId) const
{
    const wchar_t d = delimiter();
    return flagStartString() + flag() + (d == L' ' ? TyxString(L" ") : TyxString(1, d)) + L"<" +
           valueName(valueId) + L">";
}

TyxString TyxClArg::nameWithValue(const TyxString &valueId) const
{
    const wchar_t d = delimiter();
    return nameStartString() + name() + (d == L' ' ? TyxString(L" ") : TyxString(1, d)) + L"<" +
           valueName(valueId) + L">";
}

void TyxClArg::checkNotSet() const
{
    if (m_isXorSet)
        TYX_THROW_ERROR(L"Mutually exclusive argument already set: " + messageId());
    if (m_isValueSet)
        TYX_THROW_ERROR(L"Argument already set: " + messageId());
}

TyxVariant TyxClArg::convert(const TyxString &text) const
{
    const TyxVariant source(text);
    TyxVariant result(m_properties.type(), nullptr);
    // A fresh variant of the target type, not shared with anyone: the text is
    // converted straight into its value.
    if (!result.isValid() ||
        !source.value(m_properties.type(), const_cast<void *>(result.impl().constData())))
        TYX_THROW_ERROR(L"Couldn't read argument value from string '" + text + L"': " + messageId());
    if (const TyxValidatorConstPtr &validator = m_properties.validator()) {
        TyxTextMsg why;
        if (!validator->isValid(result, &why)) {
            TyxString text2 = L"Value '" + text + L"' does not meet constraint: " + messageId();
            if (!why.text().empty())
                text2 += L" (" + why.text() + L")";
            TYX_THROW_ERROR(text2);
        }
    }
    return result;
}

void TyxClArg::setValue(const TyxString &text) { setTypedValue(convert(text)); }

void TyxClArg::setTypedValue(const TyxVariant &value)
{
    m_value = value;
    m_isValueSet = true;
    ++m_hits;
    if (m_visitor)
        m_visitor->visit();
}

} // namespace tyx
