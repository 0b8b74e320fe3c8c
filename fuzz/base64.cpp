// Fuzz target: Base64 decoding of arbitrary text, and encoding back.
#include <string>
#include <vector>

#include <tyx/TyxBase64.h>

#include "TyxFuzzSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    using namespace tyx;
    fuzz::beQuiet();
    const std::string_view text = fuzz::bytes(data, size);
    std::vector<uint8_t> bytes;
    if (TyxBase64::decode(text, bytes).empty()) {
        // Decoded bytes encode to text that decodes to the same bytes.
        std::string again;
        std::vector<uint8_t> back;
        if (!TyxBase64::encode(bytes, again, 76).empty() || !TyxBase64::decode(again, back).empty() ||
            back != bytes)
            __builtin_trap();
    }
    (void)TyxBase64::decode(fromUTF8(text), bytes);
    // Any bytes encode, and their text decodes back to them.
    std::string encoded;
    std::vector<uint8_t> decoded;
    const std::vector<uint8_t> input(data, data + size);
    if (!TyxBase64::encode(input, encoded).empty() || !TyxBase64::decode(encoded, decoded).empty() ||
        decoded != input)
        __builtin_trap();
    return 0;
}
