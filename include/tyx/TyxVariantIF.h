// Interface of the implementation object behind a variant.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <memory>

#include <tyx/TyxMetaType.h>

namespace tyx {

/// The typed value behind a TyxVariant. Objects are shared between variants
/// and unchanged once shared; the operations keep their order, since it is
/// part of the binary interface.
class TYX_EXPORT TyxVariantIF {
public:
    TyxVariantIF() = default;
    TyxVariantIF(const TyxVariantIF &other) : m_fastCode(other.m_fastCode) {}
    TyxVariantIF &operator=(const TyxVariantIF &) { return *this; }
    virtual ~TyxVariantIF();

    /// The built-in code that TyxVariantImpl<T> holds, or -1. TyxVariant's
    /// value<T>() compares it to answer for the held type without a virtual
    /// call; only TyxVariantImpl sets it, so a match proves the class.
    int32_t fastCode() const noexcept { return m_fastCode; }

    /// A new object of the same class holding a copy of \p value, which
    /// points at a value of the held type.
    virtual std::shared_ptr<TyxVariantIF> create(const void *value) const = 0;
    /// A new object of the same class holding a copy of this value.
    virtual std::shared_ptr<TyxVariantIF> clone() const = 0;
    /// Whether \p other, converted to this object's type, equals this value.
    /// The comparison is in this side's type, so it is not symmetric.
    virtual bool isEqual(const TyxVariantIF &other) const = 0;
    /// Writes the value, not the type.
    virtual std::wostream &write(std::wostream &os) const = 0;
    /// Reads the value; a failure sets the stream's failure bit.
    virtual std::wistream &read(std::wistream &is) = 0;
    /// The held type.
    virtual const TyxMetaType &type() const = 0;
    /// Points at the held value.
    virtual const void *constData() const = 0;
    /// Points at the held value, writable: only for the sole owner.
    virtual void *data() = 0;
    /// Converts the value to \p target into \p dest, which points at a value
    /// of that type. Answers false when there is no cast or it failed; for a
    /// built-in target without a cast the target's default is written.
    virtual bool value(const TyxMetaType &target, void *dest) const = 0;
    /// Copies from \p src when \p source is the held type; otherwise answers
    /// false and changes nothing.
    virtual bool setValue(const TyxMetaType &source, const void *src) = 0;
    /// The held type's class name; "TyxVariantIF" here.
    virtual TyxString className() const;

protected:
    explicit TyxVariantIF(int32_t fastCode) noexcept : m_fastCode(fastCode) {}

private:
    int32_t m_fastCode = -1;
};

} // namespace tyx
