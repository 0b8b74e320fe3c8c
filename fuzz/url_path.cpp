// Fuzz target: URL and URI text, path segments and path normal form.
#include <tyx/TyxFileInfo.h>
#include <tyx/TyxURL.h>

#include "TyxFuzzSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    using namespace tyx;
    fuzz::beQuiet();
    const TyxString input = fuzz::text(data, size);
    const TyxURL url(input);
    const TyxString parts[] = {url.scheme(), url.username(), url.password(), url.host(),
                               url.port(),   url.path(),     url.query(),    url.fragment()};
    for (const TyxString &part : parts) {
        if (part.size() > input.size())
            __builtin_trap();
    }
    (void)url.filename();
    (void)url.parsedPath();
    const TyxURI uri(input);
    (void)(uri == url.text());
    // Normal form only: no question asked of the file system.
    TyxFileInfo info(input);
    (void)info.path();
    (void)info.baseName();
    (void)info.suffix();
    // The normal form is a fixed point.
    const TyxFileInfo again(info.filePath());
    if (again.filePath() != info.filePath())
        __builtin_trap();
    return 0;
}
