// Named mathematical and physical constants.
#include <tyx/TyxMathConst.h>

#include <istream>
#include <ostream>

#include <tyx/TyxVariant.h>

#include "core/TyxBuildOnce.h"

namespace tyx {

namespace {

struct ConstantRow {
    const wchar_t *key;
    double value;
    // Null for a plain number.
    const wchar_t *units;
};

// In the order of TyxMathConst::Code.
constexpr ConstantRow kConstants[] = {
    {L"_alpha", 0.0072973525698, nullptr},
    {L"_au", 149597870700.0, L"m"},
    {L"_c", 299792458.0, L"m / s"},
    {L"_DtoR", 0.0174532925199433, nullptr},
    {L"_e", 1.602176565e-19, L"C"},
    {L"_eps0", 8.854187817e-12, L"F / m"},
    {L"_euler", 2.718281828459045, nullptr},
    {L"_F", 96485.3365, L"C / mol"},
    {L"_G", 6.67384e-11, L"m^3 / kg s^2"},
    {L"_gn", 9.80665, L"m / s^2"},
    {L"_h", 6.62606957e-34, L"J s"},
    {L"_hbar", 1.054571726e-34, L"J s"},
    {L"_i", 0.0, nullptr},
    {L"_k", 1.3806488e-23, L"J / K"},
    {L"_ly", 9460730472580800.0, L"m"},
    {L"_M_earth", 5.97218639e24, L"kg"},
    {L"_M_sun", 1.98841586057e30, L"kg"},
    {L"_me", 9.10938291e-31, L"kg"},
    {L"_mn", 1.674927351e-27, L"kg"},
    {L"_mp", 1.672621777e-27, L"kg"},
    {L"_mu0", 1.2566370614e-6, L"N / A^2"},
    {L"_n0", 2.6867805e25, L"m^-3"},
    {L"_Na", 6.02214129e23, L"mol^-1"},
    {L"_p0", 101325.0, L"Pa"},
    {L"_parsec", 30856775814671910.0, L"m"},
    {L"_phi", 1.618033988749895, nullptr},
    {L"_pi", 3.141592653589793, nullptr},
    {L"_R", 8.3144621, L"J / mol K"},
    {L"_R_earth", 6378136.6, L"m"},
    {L"_re", 2.8179403267e-15, L"m"},
    {L"_RtoD", 57.29577951308232, nullptr},
    {L"_rydberg", 10973731.568539, L"m^-1"},
    {L"_sigma", 5.670373e-8, L"W / m^2 K^4"},
    {L"_T0", 273.15, L"K"},
    {L"_u", 1.660538921e-27, L"kg"},
    {L"_Vm", 0.022413968, L"m^3 / mol"},
};

static_assert(std::size(kConstants) == TyxMathConst::Invalid);

TyxVariant constantValue(int code)
{
    // The imaginary unit is the principal root of -1.
    if (code == TyxMathConst::ImaginaryUnit)
        return TyxVariant(TyxScalar(-1.0).sqrt());
    const ConstantRow &row = kConstants[code];
    if (!row.units)
        return TyxVariant(row.value);
    // A derived unit's scale applies to the number, though every unit text
    // of the table has a scale of 1.
    TyxUnits units;
    const double scale = units.fromString(row.units);
    return TyxVariant(TyxScalar(row.value * scale, units));
}

} // namespace

const TyxEnum &TyxMathConst::enumerator()
{
    return internal::buildOnce([] {
        TyxEnum constants;
        for (int code = 0; code < Invalid; ++code)
            constants.insert(TyxEnum::Item(code, kConstants[code].key, constantValue(code)));
        return constants;
    });
}

TyxMathConst::TyxMathConst(Code code) : m_code(code >= 0 && code < Invalid ? code : Invalid) {}

const TyxString &TyxMathConst::toString() const
{
    static const TyxString none;
    const auto &items = enumerator().items();
    const auto item = items.find(m_code);
    return item != items.end() ? item->second.name : none;
}

TyxScalar TyxMathConst::value() const { return enumerator().data(m_code).value<TyxScalar>(); }

TyxStrList TyxMathConst::allKeys() { return TyxStrList(enumerator().allKeys()); }

TyxMathConst TyxMathConst::fromString(const TyxString &key)
{
    const int code = enumerator().fromString(key);
    return TyxMathConst(code >= 0 && code < Invalid ? static_cast<Code>(code) : Invalid);
}

bool TyxMathConst::isValid(const TyxString &key) { return enumerator().isValid(key); }

std::wostream &operator<<(std::wostream &os, const TyxMathConst &constant)
{
    return os << static_cast<const std::wstring &>(constant.toString());
}

std::ostream &operator<<(std::ostream &os, const TyxMathConst &constant) { return os << constant.toString(); }

std::wistream &operator>>(std::wistream &is, TyxMathConst &constant)
{
    std::wstring word;
    if (is >> word)
        constant = TyxMathConst::fromString(word);
    return is;
}

std::istream &operator>>(std::istream &is, TyxMathConst &constant)
{
    std::string word;
    if (is >> word)
        constant = TyxMathConst::fromString(fromUTF8(word));
    return is;
}

} // namespace tyx
