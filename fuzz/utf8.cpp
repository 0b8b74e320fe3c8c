// Fuzz target: UTF-8 decoding and encoding of arbitrary bytes.
#include <cstring>
#include <vector>

#include "TyxFuzzSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    using namespace tyx;
    fuzz::beQuiet();
    const std::string narrow(fuzz::bytes(data, size));
    const TyxString decoded = fromUTF8(narrow);
    const std::string encoded = toUTF8(decoded);
    // Text that decoded cleanly encodes back to the same bytes up to a 0.
    if (encoded.size() > narrow.size() * 4 + 4)
        __builtin_trap();
    const TyxString viaCtor(narrow);
    if (viaCtor != decoded)
        __builtin_trap();
    // The C-style converters, sizing first and then filling.
    const size_t needed = utftowcs(nullptr, narrow.c_str(), 0);
    std::vector<wchar_t> wide(needed + 1);
    utftowcs(wide.data(), narrow.c_str(), wide.size());
    const size_t back = wcstoutf(nullptr, decoded.c_str(), 0);
    std::vector<char> out(back + 1);
    wcstoutf(out.data(), decoded.c_str(), out.size());
    // A short buffer is never overrun.
    char small[3];
    wcstoutf(small, decoded.c_str(), sizeof small);
    return 0;
}
