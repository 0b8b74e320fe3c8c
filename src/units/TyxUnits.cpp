// Physical units: unit tables, text syntax and conversion factors.
#include <tyx/TyxUnits.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <istream>
#include <ostream>
#include <string_view>
#include <unordered_map>

#include <tyx/TyxVariant.h>

#include "core/TyxBuildOnce.h"
#include "core/TyxPost.h"
#include "core/TyxTextScan.h"
#include "units/TyxShortestText.h"

namespace tyx {

namespace {

struct BaseUnit {
    const wchar_t *name;
    TyxUnits::Category category;
    double factor;
    // Stored so that a conversion within a category is one multiplication.
    double inverse;
};

constexpr BaseUnit baseUnit(const wchar_t *name, TyxUnits::Category category, double factor)
{
    return {name, category, factor, 1.0 / factor};
}

// Factors to the SI unit of each category, in the order of TyxUnits::Unit.
constexpr BaseUnit kBaseUnits[TyxUnits::NumUnits] = {
    baseUnit(L"unitless", TyxUnits::UnitLessCategory, 1.0),
    baseUnit(L"m", TyxUnits::LengthCategory, 1.0),
    baseUnit(L"cm", TyxUnits::LengthCategory, 0.01),
    baseUnit(L"mm", TyxUnits::LengthCategory, 0.001),
    baseUnit(L"um", TyxUnits::LengthCategory, 1e-6),
    baseUnit(L"nm", TyxUnits::LengthCategory, 1e-9),
    baseUnit(L"km", TyxUnits::LengthCategory, 1000.0),
    baseUnit(L"in", TyxUnits::LengthCategory, 0.0254),
    baseUnit(L"ft", TyxUnits::LengthCategory, 0.3048),
    baseUnit(L"yd", TyxUnits::LengthCategory, 0.9144),
    baseUnit(L"mi", TyxUnits::LengthCategory, 1609.344),
    baseUnit(L"nmi", TyxUnits::LengthCategory, 1852.0),
    baseUnit(L"kg", TyxUnits::MassCategory, 1.0),
    baseUnit(L"g", TyxUnits::MassCategory, 0.001),
    baseUnit(L"mg", TyxUnits::MassCategory, 1e-6),
    baseUnit(L"ug", TyxUnits::MassCategory, 1e-9),
    baseUnit(L"amu", TyxUnits::MassCategory, 1.66054e-27),
    baseUnit(L"s", TyxUnits::TimeCategory, 1.0),
    baseUnit(L"ms", TyxUnits::TimeCategory, 0.001),
    baseUnit(L"us", TyxUnits::TimeCategory, 1e-6),
    baseUnit(L"ns", TyxUnits::TimeCategory, 1e-9),
    baseUnit(L"min", TyxUnits::TimeCategory, 60.0),
    baseUnit(L"hr", TyxUnits::TimeCategory, 3600.0),
    baseUnit(L"rad", TyxUnits::AngleCategory, 1.0),
    baseUnit(L"mrad", TyxUnits::AngleCategory, 0.001),
    baseUnit(L"urad", TyxUnits::AngleCategory, 1e-6),
    baseUnit(L"nrad", TyxUnits::AngleCategory, 1e-9),
    baseUnit(L"deg", TyxUnits::AngleCategory, 0.017453292519943295),
    baseUnit(L"arcmin", TyxUnits::AngleCategory, 0.0002908882086657216),
    baseUnit(L"arcsec", TyxUnits::AngleCategory, 4.84813681109536e-06),
    baseUnit(L"K", TyxUnits::TemperatureCategory, 1.0),
    baseUnit(L"A", TyxUnits::CurrentCategory, 1.0),
    baseUnit(L"cnt", TyxUnits::CountCategory, 1.0),
    baseUnit(L"cyc", TyxUnits::CyclesCategory, 1.0),
    baseUnit(L"el", TyxUnits::ElectronsCategory, 1.0),
    baseUnit(L"ph", TyxUnits::PhotonsCategory, 1.0),
    baseUnit(L"mol", TyxUnits::AmountCategory, 1.0),
};

struct DerivedUnit {
    const wchar_t *name;
    const wchar_t *definition;
    double scale;
};

constexpr const wchar_t *kEnergy = L"kg m^2 / s^2";
constexpr const wchar_t *kPower = L"kg m^2 / s^3";
constexpr const wchar_t *kCapacitance = L"s^4 A^2 m^-2 kg^-1";
constexpr const wchar_t *kFrequency = L"s^-1";
constexpr const wchar_t *kForce = L"kg m / s^2";
constexpr const wchar_t *kPressure = L"kg / m s^2";

constexpr DerivedUnit kDerivedUnits[] = {
    {L"sr", L"rad^2", 1.0},
    {L"J", kEnergy, 1.0},
    {L"mJ", kEnergy, 0.001},
    {L"uJ", kEnergy, 1e-6},
    {L"nJ", kEnergy, 1e-9},
    {L"pJ", kEnergy, 1e-12},
    {L"erg", kEnergy, 1e-7},
    {L"W", kPower, 1.0},
    {L"mW", kPower, 0.001},
    {L"uW", kPower, 1e-6},
    {L"nW", kPower, 1e-9},
    {L"pW", kPower, 1e-12},
    {L"F", kCapacitance, 1.0},
    {L"mF", kCapacitance, 0.001},
    {L"uF", kCapacitance, 1e-6},
    {L"nF", kCapacitance, 1e-9},
    {L"pF", kCapacitance, 1e-12},
    {L"Hz", kFrequency, 1.0},
    {L"KHz", kFrequency, 1000.0},
    {L"MHz", kFrequency, 1e6},
    {L"GHz", kFrequency, 1e9},
    {L"wavenum", kFrequency, 29979245800.0},
    {L"N", kForce, 1.0},
    {L"dyne", kForce, 1e-5},
    {L"lb", kForce, 4.44822161525},
    {L"oz", kForce, 0.278013850953},
    {L"Pa", kPressure, 1.0},
    {L"stdAtm", kPressure, 101325.0},
    {L"torr", kPressure, 133.3224},
    {L"inHq", kPressure, 3386.3883},
    {L"bar", kPressure, 100000.0},
    {L"mbar", kPressure, 100.0},
    {L"C", L"A s", 1.0},
};

// What a name stands for: a base unit, or a derived unit with its expansion.
struct NamedUnits {
    TyxUnits units;
    double scale = 1.0;
};

struct UnitTables {
    std::unordered_map<std::wstring, NamedUnits> derived;
    std::unordered_map<std::wstring, TyxUnits::Unit> base;
    TyxEnum categories[TyxUnits::NumCategories];
};

// Exponents that come out within rounding of a whole number become that
// number, so that m^(1/3) cubed is m again and not m^0.9999999999999999.
double tidyExponent(double e)
{
    const double whole = std::round(e);
    return std::fabs(e - whole) < 1e-12 ? whole : e;
}

// '*' is accepted as a separator and reads like a blank, since the unit part
// of a number token may hold it ("2 m*s"); it does not end a denominator.
bool endsToken(wchar_t c)
{
    return internal::isBlankUnit(c) || c == L'*' || c == L'/' || c == L'(' || c == L')';
}

// Parser of the unit syntax. Works without recursion, so that deeply nested
// or very long text cannot exhaust the stack: the parentheses are matched in
// a first pass, and a stack of signs stands for the nesting.
class UnitParser {
public:
    UnitParser(const UnitTables &tables, bool withDerived) : m_tables(tables), m_withDerived(withDerived) {}

    /// Parses \p text into \p units and \p scale; on failure returns false
    /// with the reason in error().
    bool parse(std::wstring_view text, TyxUnits &units, double &scale)
    {
        if (!parenthesesMatch(text)) {
            m_error = L"Unmatched open or close parentheses: " + std::wstring(text);
            return false;
        }
        m_entries.fill(TyxUnits::UnitExp());
        m_scale = 1.0;
        struct Group {
            double baseSign;
            double sign;
        };
        std::vector<Group> groups;
        // A '/' puts what follows, up to the end of its group, in the
        // denominator; a second '/' in the same group keeps it there.
        double baseSign = 1.0;
        double sign = 1.0;
        size_t i = 0;
        while (i < text.size()) {
            const wchar_t c = text[i];
            if (internal::isBlankUnit(c) || c == L'*') {
                ++i;
            } else if (c == L'/') {
                sign = -baseSign;
                ++i;
            } else if (c == L'(') {
                groups.push_back({baseSign, sign});
                baseSign = sign;
                ++i;
            } else if (c == L')') {
                baseSign = groups.back().baseSign;
                sign = groups.back().sign;
                groups.pop_back();
                ++i;
            } else {
                size_t end = i;
                while (end < text.size() && !endsToken(text[end]))
                    ++end;
                if (!parseToken(text.substr(i, end - i), sign))
                    return false;
                i = end;
            }
        }
        // The categories are distinct, so the products only gather them.
        TyxUnits parsed;
        for (const TyxUnits::UnitExp &entry : m_entries) {
            if (entry.exponent != 0.0)
                TyxUnits::multFactor(parsed, TyxUnits(entry), &parsed);
        }
        units = parsed;
        scale = m_scale;
        return true;
    }

    const TyxString &error() const { return m_error; }

private:
    static bool parenthesesMatch(std::wstring_view text)
    {
        size_t depth = 0;
        for (wchar_t c : text) {
            if (c == L'(') {
                ++depth;
            } else if (c == L')') {
                if (depth == 0)
                    return false;
                --depth;
            }
        }
        return depth == 0;
    }

    bool parseToken(std::wstring_view token, double sign)
    {
        std::wstring_view name = token;
        double exponent = 1.0;
        const size_t caret = token.find(L'^');
        if (caret != std::wstring_view::npos) {
            name = token.substr(0, caret);
            const std::wstring exponentText(token.substr(caret + 1));
            wchar_t *end = nullptr;
            exponent = std::wcstod(exponentText.c_str(), &end);
            if (exponentText.empty() || end != exponentText.c_str() + exponentText.size() ||
                !std::isfinite(exponent)) {
                m_error = L"Invalid exponent: " + std::wstring(token);
                return false;
            }
        }
        exponent *= sign;

        const std::wstring key(name);
        if (auto base = m_tables.base.find(key); base != m_tables.base.end()) {
            insert(TyxUnits(base->second, exponent));
            return true;
        }
        if (m_withDerived) {
            if (auto derived = m_tables.derived.find(key); derived != m_tables.derived.end()) {
                TyxUnits expansion = derived->second.units;
                expansion.pow(exponent);
                insert(expansion);
                m_scale *= std::pow(derived->second.scale, exponent);
                return true;
            }
        }
        m_error = L"Invalid/unknown units: " + std::wstring(token);
        return false;
    }

    // Each entry of \p factor replaces the entry of its category, unit and
    // exponent: "m cm" is cm and "J s" is kg m^2 s. The text names units; it
    // does not multiply them, which is what multFactor is for. A factor holds
    // no entry with the exponent 0 or of the unit-less category.
    void insert(const TyxUnits &factor)
    {
        for (unsigned int i = 0; i < factor.numCategories(); ++i) {
            const TyxUnits::UnitExp &entry = factor[static_cast<int>(i)];
            m_entries[static_cast<size_t>(TyxUnits::category(entry.unit))] = entry;
        }
    }

    const UnitTables &m_tables;
    bool m_withDerived;
    // One entry per category; an exponent of 0 marks a category not named.
    std::array<TyxUnits::UnitExp, TyxUnits::NumCategories> m_entries{};
    double m_scale = 1.0;
    TyxString m_error;
};

UnitTables buildTables()
{
    UnitTables tables;
    for (int unit = 0; unit < TyxUnits::NumUnits; ++unit) {
        tables.base.emplace(kBaseUnits[unit].name, static_cast<TyxUnits::Unit>(unit));
        tables.categories[kBaseUnits[unit].category].insert(TyxEnum::Item(unit, kBaseUnits[unit].name));
    }
    // The definitions name base units only, so they parse against the base
    // table while the derived table is still being filled.
    UnitParser parser(tables, false);
    for (const DerivedUnit &derived : kDerivedUnits) {
        NamedUnits named;
        double definitionScale = 1.0;
        parser.parse(derived.definition, named.units, definitionScale);
        named.scale = derived.scale * definitionScale;
        tables.derived.emplace(derived.name, named);
    }
    return tables;
}

const UnitTables &unitTables() { return internal::buildOnce(buildTables); }

bool isKnownUnit(TyxUnits::Unit unit) { return unit >= 0 && unit < TyxUnits::NumUnits; }

// The factor from \p from to \p to, both of one category, for an exponent
// of \p e; the caller divides by it when \p e is negative.
double conversionFactor(TyxUnits::Unit from, TyxUnits::Unit to, double e)
{
    if (from == to)
        return 1.0;
    const double f = kBaseUnits[from].factor * kBaseUnits[to].inverse;
    const double magnitude = std::fabs(e);
    return magnitude == 1.0 ? f : std::pow(f, magnitude);
}

const TyxUnits::UnitExp *findCategory(const TyxUnits &units, TyxUnits::Category category)
{
    for (unsigned int i = 0; i < units.numCategories(); ++i) {
        if (TyxUnits::category(units[static_cast<int>(i)].unit) == category)
            return &units[static_cast<int>(i)];
    }
    return nullptr;
}

const TyxString kPrefix = L"Error parsing physical units: ";

const bool joinedVariant = internal::TyxVariantRegistrar::join<TyxUnits>();

} // namespace

TyxUnits::TyxUnits(Unit unit) : TyxUnits(unit, 1.0) {}

TyxUnits::TyxUnits(Unit unit, double exponent) { insert({unit, exponent}); }

TyxUnits::TyxUnits(const UnitExp &unitExp) { insert(unitExp); }

TyxUnits::TyxUnits(const TyxString &text) { fromString(text); }

const TyxUnits::List &TyxUnits::list() const
{
    static const List empty;
    return m_list ? *m_list : empty;
}

bool TyxUnits::operator==(const TyxUnits &other) const
{
    return m_list == other.m_list || list() == other.list();
}

const TyxUnits::UnitExp &TyxUnits::operator[](int index) const
{
    static const UnitExp none;
    const List &entries = list();
    if (index < 0 || static_cast<size_t>(index) >= entries.size())
        return none;
    return entries[static_cast<size_t>(index)];
}

unsigned int TyxUnits::numCategories() const { return static_cast<unsigned int>(list().size()); }

bool TyxUnits::hasCategory(Category category) const { return findCategory(*this, category) != nullptr; }

void TyxUnits::insert(const UnitExp &unitExp)
{
    const Category cat = category(unitExp.unit);
    if (unitExp.exponent == 0.0 || cat == UnitLessCategory)
        return;
    auto entries = std::make_shared<List>(list());
    auto same = std::find_if(entries->begin(), entries->end(),
                             [cat](const UnitExp &entry) { return category(entry.unit) == cat; });
    if (same != entries->end()) {
        *same = unitExp;
    } else {
        entries->push_back(unitExp);
        std::sort(entries->begin(), entries->end(),
                  [](const UnitExp &a, const UnitExp &b) { return category(a.unit) < category(b.unit); });
    }
    m_list = std::move(entries);
}

void TyxUnits::remove(Category cat)
{
    if (!hasCategory(cat))
        return;
    auto entries = std::make_shared<List>(list());
    std::erase_if(*entries, [cat](const UnitExp &entry) { return category(entry.unit) == cat; });
    m_list = entries->empty() ? nullptr : std::move(entries);
}

void TyxUnits::pow(double e)
{
    if (isUnitLess())
        return;
    if (e == 0.0) {
        clear();
        return;
    }
    auto entries = std::make_shared<List>(list());
    for (UnitExp &entry : *entries)
        entry.exponent = tidyExponent(entry.exponent * e);
    // Only an exponent that underflows to 0 can vanish here.
    std::erase_if(*entries, [](const UnitExp &entry) { return entry.exponent == 0.0; });
    m_list = entries->empty() ? nullptr : std::move(entries);
}

// The form without a message throws and the one with a message fills it; both
// add the prefix, since they are where a caller meets the failure.
double TyxUnits::fromString(const TyxString &text)
{
    TyxUnits parsed;
    double scale = 1.0;
    UnitParser parser(unitTables(), true);
    if (!parser.parse(text, parsed, scale))
        TYX_THROW_ERROR(kPrefix + parser.error());
    *this = parsed;
    return scale;
}

double TyxUnits::fromString(const TyxString &text, TyxTextMsg &msg)
{
    TyxUnits parsed;
    double scale = 1.0;
    UnitParser parser(unitTables(), true);
    if (!parser.parse(text, parsed, scale)) {
        msg.setText(kPrefix + parser.error(), __FILE__, __LINE__, TyxTextMsg::Error);
        return 0.0;
    }
    *this = parsed;
    return scale;
}

bool TyxUnits::isValid(const TyxString &text)
{
    TyxUnits parsed;
    double scale = 1.0;
    return UnitParser(unitTables(), true).parse(text, parsed, scale);
}

TyxUnits::Category TyxUnits::category(Unit unit)
{
    return isKnownUnit(unit) ? kBaseUnits[unit].category : UnitLessCategory;
}

const TyxEnum &TyxUnits::enumerator(Category cat)
{
    static const TyxEnum none;
    return cat >= 0 && cat < NumCategories ? unitTables().categories[cat] : none;
}

const TyxString &TyxUnits::unitName(Unit unit)
{
    static const std::vector<TyxString> names = [] {
        std::vector<TyxString> all;
        for (const BaseUnit &base : kBaseUnits)
            all.emplace_back(base.name);
        return all;
    }();
    static const TyxString none;
    return isKnownUnit(unit) ? names[static_cast<size_t>(unit)] : none;
}

double TyxUnits::unitFactor(Unit unit) { return isKnownUnit(unit) ? kBaseUnits[unit].factor : 0.0; }

double TyxUnits::addFactor(const TyxUnits &a, const TyxUnits &b)
{
    if (a.numCategories() != b.numCategories())
        return 0.0;
    double factor = 1.0;
    for (const UnitExp &entry : b.list()) {
        const UnitExp *target = findCategory(a, category(entry.unit));
        if (!target || target->exponent != entry.exponent)
            return 0.0;
        const double f = conversionFactor(entry.unit, target->unit, entry.exponent);
        factor = entry.exponent < 0.0 ? factor / f : factor * f;
    }
    return factor;
}

double TyxUnits::multFactor(const TyxUnits &a, const TyxUnits &b, TyxUnits *result)
{
    if (a.isUnitLess() || b.isUnitLess()) {
        *result = a.isUnitLess() ? b : a;
        return 1.0;
    }
    TyxUnits product = b;
    double factor = 1.0;
    for (const UnitExp &entry : a.list()) {
        const Category cat = category(entry.unit);
        const UnitExp *other = findCategory(b, cat);
        if (!other) {
            product.insert(entry);
            continue;
        }
        const double f = conversionFactor(other->unit, entry.unit, other->exponent);
        factor = other->exponent < 0.0 ? factor / f : factor * f;
        const double sum = tidyExponent(entry.exponent + other->exponent);
        if (sum != 0.0)
            product.insert({entry.unit, sum});
        else
            product.remove(cat);
    }
    *result = product;
    return factor;
}

double TyxUnits::divFactor(const TyxUnits &a, const TyxUnits &b, TyxUnits *result)
{
    TyxUnits inverse = b;
    inverse.pow(-1.0);
    return multFactor(a, inverse, result);
}

TyxString TyxUnits::toString() const
{
    if (isUnitLess())
        return L"unitless";
    TyxString numerator;
    TyxString denominator;
    bool anyPositive = false;
    for (const UnitExp &entry : list())
        anyPositive = anyPositive || entry.exponent > 0.0;
    for (const UnitExp &entry : list()) {
        // Without a positive factor there is no " / ": "m^-3".
        const bool below = anyPositive && entry.exponent < 0.0;
        const double shown = below ? -entry.exponent : entry.exponent;
        TyxString &part = below ? denominator : numerator;
        if (!part.empty())
            part += L' ';
        part += unitName(entry.unit);
        if (shown != 1.0)
            part += L'^' + internal::shortestText(shown);
    }
    return denominator.empty() ? numerator : numerator + L" / " + denominator;
}

std::wostream &operator<<(std::wostream &os, const TyxUnits &units) { return os << units.toString(); }

std::ostream &operator<<(std::ostream &os, const TyxUnits &units) { return os << units.toString(); }

namespace {

template <typename Stream>
Stream &readUnits(Stream &is, TyxUnits &units)
{
    TyxString line;
    if (!getline(is, line))
        return is;
    TyxTextMsg msg;
    TyxUnits parsed;
    parsed.fromString(line, msg);
    if (msg.empty())
        units = parsed;
    else
        is.setstate(std::ios_base::failbit);
    return is;
}

} // namespace

std::wistream &operator>>(std::wistream &is, TyxUnits &units) { return readUnits(is, units); }

std::istream &operator>>(std::istream &is, TyxUnits &units) { return readUnits(is, units); }

namespace internal {

bool TyxDefaultCasts<TyxUnits>::toString(const TyxUnits &value, TyxString &text)
{
    text = value.toString();
    return true;
}

// Success is that the text parsed. Reading through the stream operator would
// leave the end-of-file bit set after every complete read, so the stream's
// good state could not tell success from failure.
bool TyxDefaultCasts<TyxUnits>::fromString(const TyxString &text, TyxUnits &value)
{
    TyxTextMsg msg;
    TyxUnits parsed;
    parsed.fromString(text, msg);
    if (!msg.empty())
        return false;
    value = parsed;
    return true;
}

} // namespace internal

} // namespace tyx
