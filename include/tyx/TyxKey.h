// Unsigned key that identifies an object; 0xFFFFFFFF is the invalid key.
#pragma once

#include <iosfwd>

#include <tyx/TyxObject.h>
#include <tyx/TyxString.h>

namespace tyx {

/// An identity number. The default key is invalid; counting with ++ never
/// lands on the invalid value.
class TYX_EXPORT TyxKey : public TyxObject {
public:
    /// The value that marks a key as invalid.
    static constexpr unsigned int INVALID = 0xFFFFFFFFu;

    TyxKey() = default;
    TyxKey(unsigned int value) : m_value(value) {}
    TyxKey(const TyxKey &) = default;
    TyxKey &operator=(const TyxKey &) = default;
    ~TyxKey() override;

    /// "TyxKey".
    TyxString className() const override;

    unsigned int value() const { return m_value; }
    bool isValid() const { return m_value != INVALID; }
    void invalidate() { m_value = INVALID; }

    /// Adds 1, except that 0xFFFFFFFE is followed by 0. An invalid key
    /// becomes 0.
    TyxKey &operator++()
    {
        m_value = m_value >= INVALID - 1 ? 0 : m_value + 1;
        return *this;
    }
    TyxKey operator++(int)
    {
        const TyxKey before = *this;
        ++*this;
        return before;
    }

    bool operator==(const TyxKey &other) const { return m_value == other.m_value; }
    bool operator!=(const TyxKey &other) const { return m_value != other.m_value; }
    bool operator==(unsigned int value) const { return m_value == value; }
    bool operator!=(unsigned int value) const { return m_value != value; }

    /// The value in decimal; the invalid key gives "4294967295".
    operator TyxString() const;

private:
    unsigned int m_value = INVALID;
};

/// Writes the value in decimal.
TYX_EXPORT std::wostream &operator<<(std::wostream &os, const TyxKey &key);
TYX_EXPORT std::ostream &operator<<(std::ostream &os, const TyxKey &key);
/// Reads an unsigned decimal value; a failed read leaves the key invalid.
TYX_EXPORT std::wistream &operator>>(std::wistream &is, TyxKey &key);
TYX_EXPORT std::istream &operator>>(std::istream &is, TyxKey &key);

} // namespace tyx
