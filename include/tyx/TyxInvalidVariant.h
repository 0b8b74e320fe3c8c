// The implementation of the variant that holds nothing.
#pragma once

#include <tyx/TyxVariantImpl.h>

namespace tyx {

/// Holds no value: every empty variant shares one object of this class.
class TYX_EXPORT TyxInvalidVariant : public TyxVariantImpl<internal::TyxNoValue> {
public:
    TyxInvalidVariant() = default;
    explicit TyxInvalidVariant(const internal::TyxNoValue &) {}

    /// The shared invalid variant.
    std::shared_ptr<TyxVariantIF> create(const void *value) const override;
    /// The shared invalid variant.
    std::shared_ptr<TyxVariantIF> clone() const override;
    /// True for another invalid variant only.
    bool isEqual(const TyxVariantIF &other) const override;
    /// Leaves the stream alone.
    std::wostream &write(std::wostream &os) const override;
    /// Leaves the stream alone.
    std::wistream &read(std::wistream &is) override;
    /// Writes the target's default and answers false; asking for the invalid
    /// type itself answers true.
    bool value(const TyxMetaType &target, void *dest) const override;
    /// Succeeds for the invalid type and does nothing.
    bool setValue(const TyxMetaType &source, const void *src) override;
};

} // namespace tyx
