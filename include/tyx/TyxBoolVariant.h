// The implementation of the variant that holds a bool.
#pragma once

#include <tyx/TyxVariantImpl.h>

namespace tyx {

/// Holds a bool, written and read as "true" and "false".
class TYX_EXPORT TyxBoolVariant : public TyxVariantImpl<bool> {
public:
    using TyxVariantImpl<bool>::TyxVariantImpl;

    /// Writes "true" or "false" whatever the stream's boolalpha flag.
    std::wostream &write(std::wostream &os) const override;
    /// Reads "true" or "false"; anything else fails the stream.
    std::wistream &read(std::wistream &is) override;
};

} // namespace tyx
