// Validator over the keys of an enumeration.
#include <tyx/TyxEnumValidator.h>

#include "core/TyxPost.h"

namespace tyx {

TyxEnumValidator::~TyxEnumValidator() = default;

TyxString TyxEnumValidator::className() const { return L"TyxEnumValidator"; }

TyxValidator *TyxEnumValidator::clone() const { return new TyxEnumValidator(*this); }

bool TyxEnumValidator::isEqual(const TyxValidator *other) const
{
    const auto *same = dynamic_cast<const TyxEnumValidator *>(other);
    return same && *this == *same;
}

bool TyxEnumValidator::isValid(const TyxVariant &value, TyxTextMsg *msg) const
{
    const TyxString valueText = value.value<TyxString>();
    TyxString text = valueText;
    if (!text.empty() && text.front() == L'(') {
        // A tuple is tested by its first element.
        const size_t end = text.find_first_of(L",)", 1);
        text = text.substr(1, end == TyxString::npos ? TyxString::npos : end - 1);
    }
    if (m_enumerator.isValid(text))
        return true;
    if (msg) {
        TyxString keys;
        for (const TyxString &key : m_enumerator.allKeys()) {
            if (!keys.empty())
                keys += L",";
            keys += key;
        }
        TYX_FILL_ERROR(msg, L"The value of '" + valueText + L"' is not a member of {" + keys + L"}.");
    }
    return false;
}

} // namespace tyx
