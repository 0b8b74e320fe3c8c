// Translation layer in front of a source metadata.
#include <tyx/TyxMetaDataTranslated.h>

#include <cwctype>

namespace tyx {

namespace {
[[maybe_unused]] const bool joinedVariant =
    internal::TyxVariantRegistrar::join<TyxMetaDataTranslated::FieldInfo>();
}

bool TyxMetaDataTranslated::FieldInfo::operator==(const FieldInfo &other) const
{
    return kind == other.kind && sourceField == other.sourceField && data == other.data &&
           getTranslator == other.getTranslator && translator == other.translator &&
           setTranslator == other.setTranslator;
}

TyxMetaDataTranslated::TyxMetaDataTranslated(const TyxMetaDataPtr &source) : m_source(source) {}

TyxMetaDataTranslated::~TyxMetaDataTranslated() = default;

TyxString TyxMetaDataTranslated::className() const { return L"TyxMetaDataTranslated"; }

void TyxMetaDataTranslated::setSourceMetadata(const TyxMetaDataPtr &source)
{
    const TyxMetaDataPtr keep = source;
    m_source = keep;
}

void TyxMetaDataTranslated::quiet(bool) const {}

const TyxVariant &TyxMetaDataTranslated::value(const TyxString &path) const
{
    return TyxMetaData::value(path);
}

TyxString TyxMetaDataTranslated::toFieldName(const TyxString &text)
{
    if (text.size() < 4 || text.back() != L']')
        return text;
    const size_t open = text.rfind(L'[');
    if (open == TyxString::npos || open == 0 || open + 2 >= text.size())
        return text;
    for (size_t i = open + 1; i + 1 < text.size(); ++i) {
        if (!std::iswdigit(text[i]))
            return text;
    }
    return text.substr(0, open);
}

int TyxMetaDataTranslated::store(const TyxString &name, const FieldInfo &info)
{
    return baseSetValue(name, TyxVariant(info), TyxString(), TyxString());
}

int TyxMetaDataTranslated::setConstant(const TyxString &name, const TyxVariant &value)
{
    FieldInfo info;
    info.kind = FieldInfo::Constant;
    info.data = value;
    return store(name, info);
}

int TyxMetaDataTranslated::setAlias(const TyxString &name, const TyxString &sourceField,
                                    GetTranslator getTranslator)
{
    return setAlias(name, sourceField, TyxVariant(), getTranslator);
}

int TyxMetaDataTranslated::setAlias(const TyxString &name, const TyxString &sourceField,
                                    const TyxVariant &fallback, GetTranslator getTranslator)
{
    if (sourceField.find_first_not_of(L" \t\r\n") == TyxString::npos)
        return 1;
    FieldInfo info;
    info.kind = FieldInfo::Alias;
    info.sourceField = sourceField;
    info.data = fallback;
    info.getTranslator = getTranslator;
    return store(name, info);
}

int TyxMetaDataTranslated::setTranslator(const TyxString &name, Translator translator,
                                         SetTranslator setTranslator, const TyxVariant &fallback)
{
    if (!translator)
        return 1;
    FieldInfo info;
    info.kind = FieldInfo::Translated;
    info.translator = translator;
    info.setTranslator = setTranslator;
    info.data = fallback;
    return store(name, info);
}

TyxVariant TyxMetaDataTranslated::get(const TyxString &path)
{
    if (!m_source)
        return EMPTY_VARIANT();
    const TyxVariant &stored = TyxMetaData::value(path);
    if (stored.type() != internal::TyxVariantTraits<FieldInfo>::type())
        return EMPTY_VARIANT();
    const FieldInfo &info = static_cast<const TyxVariantImpl<FieldInfo> &>(stored.impl()).get();
    const TyxString trimmed = trim(path);
    switch (info.kind) {
    case FieldInfo::Alias: {
        const TyxVariant raw = m_source->get(info.sourceField);
        if (!raw.isValid())
            return EMPTY_VARIANT();
        return info.getTranslator ? (this->*info.getTranslator)(trimmed, raw) : raw;
    }
    case FieldInfo::Translated: {
        const TyxVariant result = (this->*info.translator)(trimmed);
        return result.isValid() ? result : info.data;
    }
    default: return info.data;
    }
}

int TyxMetaDataTranslated::basePushBack(const TyxString &path, const TyxVariant &value,
                                        const TyxString &description, const TyxString &formatSpec)
{
    return TyxMetaData::pushBack(path, value, description, formatSpec);
}

int TyxMetaDataTranslated::baseSetValue(const TyxString &path, const TyxVariant &value,
                                        const TyxString &description, const TyxString &formatSpec)
{
    return TyxMetaData::setValue(path, value, description, formatSpec);
}

int TyxMetaDataTranslated::pushBackImpl(const TyxString &path, const TyxVariant &value,
                                        const TyxString &description, const TyxString &formatSpec,
                                        BaseOp base, BaseWrite forward)
{
    if (!m_source)
        return 1;
    const TyxMetaType type = value.type();
    if (type == internal::TyxVariantTraits<TyxMetaDataField>::type() ||
        type == internal::TyxVariantTraits<TyxMetaDataSet>::type())
        return (this->*base)(path, value, description, formatSpec);
    const TyxVariant &stored = TyxMetaData::value(path);
    if (stored.type() != internal::TyxVariantTraits<FieldInfo>::type())
        return 1;
    const FieldInfo &info = static_cast<const TyxVariantImpl<FieldInfo> &>(stored.impl()).get();
    if (info.kind == FieldInfo::Alias)
        return ((*m_source).*forward)(info.sourceField, value, description, formatSpec);
    if (info.kind == FieldInfo::Translated && info.setTranslator)
        return (this->*info.setTranslator)(trim(path), value) ? 0 : 1;
    return 1;
}

int TyxMetaDataTranslated::setValue(TyxString &&path, const TyxVariant &value, const TyxString &description,
                                    const TyxString &formatSpec)
{
    const TyxString target = std::move(path);
    return setValue(target, value, description, formatSpec);
}

int TyxMetaDataTranslated::setValue(const TyxString &path, const TyxVariant &value,
                                    const TyxString &description, const TyxString &formatSpec)
{
    // The source's own virtual setValue runs, so a translated source translates again.
    return pushBackImpl(path, value, description, formatSpec, &TyxMetaDataTranslated::baseSetValue,
                        static_cast<BaseWrite>(&TyxMetaData::setValue));
}

int TyxMetaDataTranslated::pushBack(const TyxString &path, const TyxVariant &value,
                                    const TyxString &description, const TyxString &formatSpec)
{
    return pushBackImpl(path, value, description, formatSpec, &TyxMetaDataTranslated::basePushBack,
                        static_cast<BaseWrite>(&TyxMetaData::pushBack));
}

} // namespace tyx
