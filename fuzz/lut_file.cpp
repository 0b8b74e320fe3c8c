// Fuzz target: look-up table files.
#include <memory>
#include <sstream>

#include <tyx/TyxLutDesc.h>
#include <tyx/TyxLutIO.h>

#include "TyxFuzzSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    using namespace tyx;
    fuzz::beQuiet();
    std::wistringstream in(fuzz::text(data, size));
    int line = 0;
    const std::unique_ptr<TyxLutDesc> lut(TyxLutIO::readCommon(in, &line));
    // What was read writes out again, for tables small enough that the text
    // is quick to write (a file may describe tables of up to 4 GiB).
    if (lut && uint64_t{lut->numEntriesPerBand()} * lut->numBands() <= 65536) {
        std::wostringstream out;
        TyxLutIO::writeCommon(*lut, out);
    }
    return 0;
}
