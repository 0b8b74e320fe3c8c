// JSON node kinds and their keys.
#include <tyx/TyxJsonNodeType.h>

namespace tyx {

TyxJsonNodeType::TyxJsonNodeType(Code code) : m_code(static_cast<unsigned>(code) > Invalid ? Invalid : code)
{
}

TyxJsonNodeType::TyxJsonNodeType(const TyxString &key) : m_code(Invalid)
{
    const std::vector<TyxString> &keys = allKeys();
    for (size_t i = 0; i < keys.size(); ++i) {
        if (isEqual(keys[i], key)) {
            m_code = static_cast<Code>(i);
            break;
        }
    }
}

const TyxString &TyxJsonNodeType::toString() const
{
    static const TyxString empty;
    return isValid() ? allKeys()[m_code] : empty;
}

const std::vector<TyxString> &TyxJsonNodeType::allKeys()
{
    static const std::vector<TyxString> keys{L"Null", L"String", L"Number", L"Bool", L"Array", L"Node"};
    return keys;
}

} // namespace tyx
