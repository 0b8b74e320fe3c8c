// Fuzz target: expressions parsed, evaluated with every variable set, collapsed and evaluated again.
#include <complex>
#include <span>

#include <tyx/TyxEqnParser.h>
#include <tyx/TyxEqnTile.h>
#include <tyx/TyxScalar.h>
#include <tyx/TyxUnits.h>

#include "TyxFuzzSupport.h"

namespace {

using namespace tyx;

// Values of every type the language knows, given in turn to the variables.
TyxVariant valueFor(size_t index)
{
    static double samples[] = {0.5, -2.0, 3.0, 1e300, 0.0};
    static std::complex<double> complexes[] = {{1.0, -1.0}, {0.0, 2.0}, {-3.0, 0.5}};
    switch (index % 7) {
    case 0: return TyxVariant(2.5);
    case 1: return TyxVariant(TyxScalar(3.0, TyxUnits(L"m")));
    case 2: return TyxVariant(TyxString(L"ab"));
    case 3: return TyxVariant(TyxEqnTile::wrap(std::span<double>(samples)));
    case 4: return TyxVariant(std::complex<double>(0.5, -1.5));
    case 5: return TyxVariant(TyxEqnTile::wrap(std::span<std::complex<double>>(complexes)));
    default: return TyxVariant(-1.0);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::beQuiet();
    TyxEqnParser parser;
    // Tighter than the defaults so that each input stays quick under the
    // sanitizers; the checks are the same.
    TyxEqnParser::Limits limits;
    limits.maxStringLength = 1 << 16;
    limits.maxLoopIterations = 20000;
    limits.maxElements = 20000;
    parser.setLimits(limits);
    if (parser.parse(fuzz::text(data, size)) != 0)
        return 0;
    size_t index = size;
    for (const TyxString &name : parser.variables())
        parser.setValue(name, valueFor(index++));
    TyxTextMsg msg;
    parser.evaluate(&msg);
    try {
        parser.collapse();
    } catch (const TyxTextMsg &) {
        return 0; // a function failed on constant arguments
    }
    parser.evaluate(&msg);
    // A copy decides its types afresh and evaluates the same way.
    TyxEqnParser copy(parser);
    copy.evaluate(&msg);
    return 0;
}
