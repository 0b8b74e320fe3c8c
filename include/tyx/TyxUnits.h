// Physical units: a product of base units with real exponents, and its text syntax.
#pragma once

#include <iosfwd>
#include <memory>
#include <vector>

#include <tyx/TyxEnum.h>
#include <tyx/TyxString.h>
#include <tyx/TyxTextMsg.h>
#include <tyx/TyxVariantImpl.h>

namespace tyx {

/// The physical dimension of a value, as a product of base units with real
/// exponents, at most one unit per category ("kg m^2 / s^2"). Copies share
/// their list of units; every change builds a new list.
///
/// Unit text: factors separated by blanks or "*"; a factor is a unit name
/// (case matters), optionally with "^" and a signed, possibly fractional
/// exponent, or a parenthesised expression. A "/" puts every factor after it,
/// up to the end of its parentheses, in the denominator, so "kg / m s^2" and
/// "kg / m / s^2" read alike. A factor whose category is already named
/// replaces the earlier entry, unit and exponent: "m cm" is cm with the scale
/// 1.0, "m / m" is m^-1 and "J s" (a derived unit expands entry by entry) is
/// kg m^2 s. Unit text names units and does not multiply them: multFactor()
/// and divFactor() are the way to form the units of a product or a quotient,
/// adding exponents. "unitless", and empty text, name no units.
class TYX_EXPORT TyxUnits {
public:
    /// The base units, in the order of the unit table. A code outside the
    /// table stands for no unit.
    enum Unit : int {
        UnitLess = 0,
        Meter,
        Centimeter,
        Millimeter,
        Micrometer,
        Nanometer,
        Kilometer,
        Inch,
        Foot,
        Yard,
        Mile,
        NauticalMile,
        Kilogram,
        Gram,
        Milligram,
        Microgram,
        AtomicMassUnit,
        Second,
        Millisecond,
        Microsecond,
        Nanosecond,
        Minute,
        Hour,
        Radian,
        Milliradian,
        Microradian,
        Nanoradian,
        Degree,
        Arcminute,
        Arcsecond,
        Kelvin,
        Ampere,
        Count,
        Cycle,
        Electron,
        Photon,
        Mole,
        NumUnits
    };

    /// The physical categories; units of one category convert into each other.
    enum Category : int {
        UnitLessCategory = 0,
        LengthCategory,
        MassCategory,
        TimeCategory,
        AngleCategory,
        TemperatureCategory,
        CurrentCategory,
        CountCategory,
        CyclesCategory,
        ElectronsCategory,
        PhotonsCategory,
        AmountCategory,
        NumCategories
    };

    /// One base unit raised to an exponent.
    struct UnitExp {
        Unit unit = UnitLess;
        double exponent = 0.0;

        bool operator==(const UnitExp &other) const
        {
            return unit == other.unit && exponent == other.exponent;
        }
        bool operator!=(const UnitExp &other) const { return !(*this == other); }
    };

    /// Unit-less.
    TyxUnits() = default;
    /// \p unit with the exponent 1.
    TyxUnits(Unit unit);
    TyxUnits(Unit unit, double exponent);
    explicit TyxUnits(const UnitExp &unitExp);
    /// Parses \p text as fromString(text) does and throws as it does. The
    /// scale factor of the text is dropped: "mJ" gives the units of "J".
    explicit TyxUnits(const TyxString &text);

    /// Equal lists of units and exponents; "m" and "cm" are not equal.
    bool operator==(const TyxUnits &other) const;
    bool operator!=(const TyxUnits &other) const { return !(*this == other); }

    /// Becomes unit-less.
    void clear() { m_list.reset(); }

    /// The entry at \p index in category order; a unit-less entry when
    /// \p index is out of range.
    const UnitExp &operator[](int index) const;
    /// The number of entries, one per category present.
    unsigned int numCategories() const;
    bool hasCategory(Category category) const;
    bool isUnitLess() const { return numCategories() == 0; }

    /// Raises every exponent to the power \p e; an \p e of 0 leaves no units.
    void pow(double e);

    /// Parses \p text into this object and returns its scale factor: the
    /// number that a value in the text's units is multiplied with to be in
    /// these units ("mJ" gives 0.001). Throws a TyxTextMsg starting with
    /// "Error parsing physical units: " on bad text, leaving this unchanged.
    double fromString(const TyxString &text);
    /// As fromString(text), but a failure fills \p msg, leaves this
    /// unchanged and returns 0.0. \p msg is untouched on success.
    double fromString(const TyxString &text, TyxTextMsg &msg);

    /// Whether \p text parses.
    static bool isValid(const TyxString &text);

    /// The category of \p unit; unit-less for a code outside the table.
    static Category category(Unit unit);
    /// The units of \p category, their codes named as the unit syntax spells
    /// them; an empty table for a code outside the categories.
    static const TyxEnum &enumerator(Category category);
    /// The text of \p unit as the unit syntax spells it ("km"); empty for a
    /// code outside the table.
    static const TyxString &unitName(Unit unit);
    /// The factor from \p unit to the SI unit of its category; 0.0 for a code
    /// outside the table.
    static double unitFactor(Unit unit);

    /// The factor that brings a value in \p b's units into \p a's units, or
    /// 0.0 when they are not compatible.
    static double addFactor(const TyxUnits &a, const TyxUnits &b);
    /// Stores the units of a product of values in \p a's and \p b's units in
    /// \p result (which may be \p a or \p b) and returns the factor that the
    /// product of the values is multiplied with. A category that both share
    /// takes \p a's unit and the sum of the exponents: m times cm is m^2 with
    /// the factor 0.01. This, not unit text, is the way to multiply units.
    static double multFactor(const TyxUnits &a, const TyxUnits &b, TyxUnits *result);
    /// As multFactor, for the quotient of \p a by \p b.
    static double divFactor(const TyxUnits &a, const TyxUnits &b, TyxUnits *result);

    /// The text form: in category order the factors with positive exponents,
    /// then " / " and those with negative ones, as in "m^2 kg / s^2"; "m^-3"
    /// when none is positive; "unitless" without units. It parses back to
    /// equal units.
    TyxString toString() const;
    operator TyxString() const { return toString(); }

private:
    using List = std::vector<UnitExp>;

    const List &list() const;
    /// Adds \p unitExp, replacing the entry of its category if there is one.
    void insert(const UnitExp &unitExp);
    /// Drops the entry of \p category.
    void remove(Category category);

    std::shared_ptr<const List> m_list;
};

/// Writes the text form.
TYX_EXPORT std::wostream &operator<<(std::wostream &os, const TyxUnits &units);
TYX_EXPORT std::ostream &operator<<(std::ostream &os, const TyxUnits &units);
/// Reads the rest of the line and parses it; bad text sets the failure bit
/// and leaves \p units unchanged.
TYX_EXPORT std::wistream &operator>>(std::wistream &is, TyxUnits &units);
TYX_EXPORT std::istream &operator>>(std::istream &is, TyxUnits &units);

namespace internal {

template <>
struct TyxVariantTraits<TyxUnits> : TyxBuiltinVariantTraits<TyxUnits, TyxMetaType::Units> {
};

template <>
struct TYX_EXPORT TyxDefaultCasts<TyxUnits> {
    /// The text form.
    static bool toString(const TyxUnits &value, TyxString &text);
    /// Parses the text; false, leaving \p value alone, when it does not
    /// parse. A scale in the text is dropped: "mJ" gives the units of "J".
    static bool fromString(const TyxString &text, TyxUnits &value);
    /// Unit-less.
    static void getDefault(TyxUnits &value) { value.clear(); }
};

/// An integer is taken as a unit code with the exponent 1; a code outside
/// the table gives no units.
template <TyxMatrixInteger From>
struct TyxCast<From, TyxUnits> {
    static bool cast(const From &from, TyxUnits &to)
    {
        int code = -1;
        if constexpr (std::is_signed_v<From>) {
            const auto wide = static_cast<int64_t>(from);
            code = wide >= 0 && wide < TyxUnits::NumUnits ? static_cast<int>(wide) : -1;
        } else {
            const auto wide = static_cast<uint64_t>(from);
            code = wide < TyxUnits::NumUnits ? static_cast<int>(wide) : -1;
        }
        to = TyxUnits(static_cast<TyxUnits::Unit>(code), 1.0);
        return true;
    }
};

/// True when there are units.
template <>
struct TyxCast<TyxUnits, bool> {
    static bool cast(const TyxUnits &from, bool &to)
    {
        to = !from.isUnitLess();
        return true;
    }
};

} // namespace internal

} // namespace tyx
