// Fuzz target: metadata paths, written, read, listed and removed.
#include <tyx/TyxMetaData.h>

#include "TyxFuzzSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    using namespace tyx;
    fuzz::beQuiet();
    // One path per line; the first character of a line picks the operation.
    TyxMetaData meta;
    meta.quiet(true);
    int n = 0;
    for (const std::string &line : fuzz::split(fuzz::bytes(data, size), '\n')) {
        if (line.empty())
            continue;
        const TyxString path = fromUTF8(std::string_view(line).substr(1));
        switch (line[0] % 6) {
        case 0: meta.setValue(path, TyxVariant(double(++n))); break;
        case 1: meta.pushBack(path, TyxVariant(TyxString(L"v"))); break;
        case 2: (void)meta.value(path); break;
        case 3: (void)meta.get(path); break;
        case 4: meta.remove(path); break;
        default:
            (void)meta.exists(path);
            meta.setValue(path, TyxVariant(int32_t(n)));
            break;
        }
    }
    // A copy of whatever tree came out.
    const TyxMetaData copy(meta);
    (void)copy.value(L"a/b");
    return 0;
}
