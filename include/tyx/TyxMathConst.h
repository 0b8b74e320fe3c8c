// Named mathematical and physical constants, as a code class.
#pragma once

#include <cstdint>
#include <iosfwd>

#include <tyx/TyxEnum.h>
#include <tyx/TyxScalar.h>
#include <tyx/TyxStrList.h>

namespace tyx {

/// One of a fixed table of constants, each with a key that starts with an
/// underscore ("_pi", "_c") and a value that is a number or a scalar with
/// units. Keys are matched without regard to case; an unknown key gives the
/// invalid code, never an error. Units are given as unit text, where a
/// category named again replaces the earlier entry (see TyxUnits): "J s" is
/// kg m^2 s.
class TYX_EXPORT TyxMathConst {
public:
    enum Code : int32_t {
        FineStructure = 0,   ///< "_alpha"
        AstronomicalUnit,    ///< "_au", m
        SpeedOfLight,        ///< "_c", m / s
        DegreesToRadians,    ///< "_DtoR"
        ElementaryCharge,    ///< "_e", C
        VacuumPermittivity,  ///< "_eps0", F / m: s^4 A^2 / m kg
        Euler,               ///< "_euler"
        Faraday,             ///< "_F", C / mol
        Gravitation,         ///< "_G", m^3 / kg s^2
        StandardGravity,     ///< "_gn", m / s^2
        Planck,              ///< "_h", J s: kg m^2 s
        ReducedPlanck,       ///< "_hbar", J s: kg m^2 s
        ImaginaryUnit,       ///< "_i"
        Boltzmann,           ///< "_k", J / K
        LightYear,           ///< "_ly", m
        EarthMass,           ///< "_M_earth", kg
        SunMass,             ///< "_M_sun", kg
        ElectronMass,        ///< "_me", kg
        NeutronMass,         ///< "_mn", kg
        ProtonMass,          ///< "_mp", kg
        VacuumPermeability,  ///< "_mu0", N / A^2
        Loschmidt,           ///< "_n0", m^-3
        Avogadro,            ///< "_Na", mol^-1
        StandardPressure,    ///< "_p0", Pa
        Parsec,              ///< "_parsec", m
        GoldenRatio,         ///< "_phi"
        Pi,                  ///< "_pi"
        GasConstant,         ///< "_R", J / mol K
        EarthRadius,         ///< "_R_earth", m
        ElectronRadius,      ///< "_re", m
        RadiansToDegrees,    ///< "_RtoD"
        Rydberg,             ///< "_rydberg", m^-1
        StefanBoltzmann,     ///< "_sigma", W / m^2 K^4: kg / m^2 s^3 K^4
        StandardTemperature, ///< "_T0", K
        AtomicMass,          ///< "_u", kg
        MolarVolume,         ///< "_Vm", m^3 / mol
        Invalid = 36
    };

    /// The invalid constant.
    TyxMathConst() = default;
    /// A code outside the table becomes Invalid.
    TyxMathConst(Code code);
    /// The constant whose key is \p key, ignoring case; Invalid when none is.
    explicit TyxMathConst(const TyxString &key) : m_code(fromString(key).m_code) {}

    operator Code() const { return m_code; }
    Code toEnum() const { return m_code; }
    /// The key; empty for Invalid.
    const TyxString &toString() const;
    operator const TyxString &() const { return toString(); }
    bool isValid() const { return m_code != Invalid; }

    bool operator==(const TyxMathConst &other) const { return m_code == other.m_code; }
    bool operator!=(const TyxMathConst &other) const { return m_code != other.m_code; }
    bool operator==(Code code) const { return m_code == code; }
    bool operator!=(Code code) const { return m_code != code; }

    /// The value as a scalar, with its units; 0 without units for Invalid.
    TyxScalar value() const;
    operator TyxScalar() const { return value(); }
    /// The real part of the value; its units are dropped.
    operator double() const { return value().real(); }

    /// The table: one item per constant, its data a variant that holds the
    /// value as a Double or a TyxScalar.
    static const TyxEnum &enumerator();
    /// The keys in code order.
    static TyxStrList allKeys();
    /// The constant whose key is \p key, ignoring case; Invalid when none is.
    static TyxMathConst fromString(const TyxString &key);
    /// Whether \p key names a constant, ignoring case.
    static bool isValid(const TyxString &key);

private:
    Code m_code = Invalid;
};

/// Writes the key.
TYX_EXPORT std::wostream &operator<<(std::wostream &os, const TyxMathConst &constant);
TYX_EXPORT std::ostream &operator<<(std::ostream &os, const TyxMathConst &constant);
/// Reads one white-space-delimited word and looks it up by key.
TYX_EXPORT std::wistream &operator>>(std::wistream &is, TyxMathConst &constant);
TYX_EXPORT std::istream &operator>>(std::istream &is, TyxMathConst &constant);

} // namespace tyx
