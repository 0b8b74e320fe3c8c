// The implementation of the variant that holds text.
#pragma once

#include <tyx/TyxVariantImpl.h>

namespace tyx {

/// Holds a TyxString; the text is written as it stands.
class TYX_EXPORT TyxStringVariant : public TyxVariantImpl<TyxString> {
public:
    using TyxVariantImpl<TyxString>::TyxVariantImpl;

    /// Reads text in double quotes up to the closing quote when the first
    /// non-blank character is a quote; otherwise the rest of the input.
    std::wistream &read(std::wistream &is) override;
};

} // namespace tyx
