// Fuzz target: unit and scalar text, and arithmetic on what parsed.
#include <sstream>

#include <tyx/TyxScalar.h>
#include <tyx/TyxUnits.h>
#include <tyx/TyxVariant.h>

#include "TyxFuzzSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    using namespace tyx;
    fuzz::beQuiet();
    const TyxString input = fuzz::text(data, size);
    TyxUnits units;
    TyxTextMsg msg;
    units.fromString(input, msg);
    (void)TyxUnits::isValid(input);
    (void)units.toString();
    TyxScalar scalar;
    if (TyxScalar::fromString(input, scalar)) {
        TyxString back;
        back = TyxVariant(scalar).value<TyxString>();
        try {
            TyxScalar sum = scalar + scalar;
            (void)(sum * scalar);
            (void)scalar.convertUnits(units);
        } catch (const TyxTextMsg &) {
            // Units that do not fit fail with a message: expected.
        }
    }
    std::wistringstream in(input);
    in >> scalar;
    return 0;
}
