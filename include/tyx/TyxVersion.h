// Three-part version number, "major.minor.build".
#pragma once

#include <iosfwd>

#include <tyx/TyxString.h>

namespace tyx {

/// A version of major, minor and build numbers; 1.0.0 by default.
class TYX_EXPORT TyxVersion {
public:
    TyxVersion() = default;
    TyxVersion(unsigned int major, unsigned int minor, unsigned int build)
        : m_major(major), m_minor(minor), m_build(build)
    {
    }
    /// Starts from 1.0.0 and reads \p text as operator>> does, so "4.1" is
    /// 4.1.0, "2" is 2.0.0 and only the first line counts: "4.1\n5.6" is
    /// 4.1.0.
    explicit TyxVersion(const TyxString &text);

    unsigned int major() const { return m_major; }
    unsigned int minor() const { return m_minor; }
    unsigned int build() const { return m_build; }

    bool operator==(const TyxVersion &other) const
    {
        return m_major == other.m_major && m_minor == other.m_minor && m_build == other.m_build;
    }
    bool operator!=(const TyxVersion &other) const { return !(*this == other); }
    /// Compares with the version that \p text reads as.
    bool operator==(const TyxString &text) const { return *this == TyxVersion(text); }
    bool operator!=(const TyxString &text) const { return !(*this == text); }
    bool operator<(const TyxVersion &other) const;
    bool operator<=(const TyxVersion &other) const { return !(other < *this); }
    bool operator>(const TyxVersion &other) const { return other < *this; }
    bool operator>=(const TyxVersion &other) const { return !(*this < other); }

    /// "major.minor.build" in decimal.
    operator TyxString() const { return toString(L".", true); }
    /// The fields joined by \p delimiter; without \p withBuild only major and
    /// minor.
    TyxString toString(const TyxString &delimiter, bool withBuild = true) const;

    /// Overwrites the fields that a "major.minor.build" text holds, in order;
    /// fields it lacks keep their values.
    void read(const TyxString &text);

private:
    unsigned int m_major = 1;
    unsigned int m_minor = 0;
    unsigned int m_build = 0;
};

TYX_EXPORT std::wostream &operator<<(std::wostream &os, const TyxVersion &version);
TYX_EXPORT std::ostream &operator<<(std::ostream &os, const TyxVersion &version);
/// Reads a line and takes its "."-separated fields as unsigned numbers.
TYX_EXPORT std::wistream &operator>>(std::wistream &is, TyxVersion &version);
TYX_EXPORT std::istream &operator>>(std::istream &is, TyxVersion &version);

} // namespace tyx
