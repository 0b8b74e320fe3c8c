// Validator that accepts numbers within an interval.
#pragma once

#include <cstdint>

#include <tyx/TyxValidator.h>

namespace tyx {

/// Accepts values that, converted to \p T, lie within [lower, upper] or its
/// open forms. The bound flags: 0x01 lower inclusive, 0x02 lower exclusive,
/// 0x04 upper inclusive, 0x08 upper exclusive. Flags 0 accept everything;
/// both bits of one side skip that side's test. Members exist for the ten
/// sample types and for long long and unsigned long long.
template <class T>
class TYX_EXPORT TyxNumValidator : public TyxValidator {
public:
    enum BoundFlags : uint8_t {
        LowerInclusive = 0x01,
        LowerExclusive = 0x02,
        UpperInclusive = 0x04,
        UpperExclusive = 0x08
    };

    TyxNumValidator() = default;
    TyxNumValidator(uint8_t flags, T lower, T upper) : m_flags(flags), m_lower(lower), m_upper(upper) {}
    ~TyxNumValidator() override;

    uint8_t flags() const { return m_flags; }
    T lower() const { return m_lower; }
    T upper() const { return m_upper; }
    void setFlags(uint8_t flags) { m_flags = flags; }
    void setLower(T lower) { m_lower = lower; }
    void setUpper(T upper) { m_upper = upper; }

    /// "TyxNumValidator".
    TyxString className() const override;
    /// A new TyxNumValidatorMetaObj over this validator.
    TyxMetaObjectConstPtr metaObject() const override;
    using TyxObject::metaObject;
    TyxValidator *clone() const override;
    /// False for a null pointer or another element type.
    bool isEqual(const TyxValidator *other) const override;
    /// On refusal \p msg receives "The value of '<value>' is not within "
    /// and the interval, such as "[0, 10]." or "(-inf, 10].".
    bool isValid(const TyxVariant &value, TyxTextMsg *msg) const override;

    /// The element type's text name: "signed char", ..., "TyxI64", "TyxU64", "float", "double".
    static TyxString typeName();
    /// The element type's numeric type code, 0 to 9.
    static int templateType();

    bool operator==(const TyxNumValidator &other) const
    {
        return m_flags == other.m_flags && m_lower == other.m_lower && m_upper == other.m_upper;
    }
    bool operator!=(const TyxNumValidator &other) const { return !(*this == other); }

private:
    uint8_t m_flags = 0;
    T m_lower{};
    T m_upper{};
};

extern template class TyxNumValidator<signed char>;
extern template class TyxNumValidator<unsigned char>;
extern template class TyxNumValidator<short>;
extern template class TyxNumValidator<unsigned short>;
extern template class TyxNumValidator<int>;
extern template class TyxNumValidator<unsigned int>;
extern template class TyxNumValidator<long>;
extern template class TyxNumValidator<unsigned long>;
extern template class TyxNumValidator<long long>;
extern template class TyxNumValidator<unsigned long long>;
extern template class TyxNumValidator<float>;
extern template class TyxNumValidator<double>;

namespace internal {

/// A new meta object over the validator at \p validator, whose element type
/// has the variant type identity \p typeID; null for an unknown identity.
TYX_EXPORT TyxMetaObjectPtr numValidatorMetaObj(const void *validator, uint64_t typeID);

} // namespace internal

} // namespace tyx
