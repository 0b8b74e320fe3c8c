// Fuzz target: text converted to every type the variant knows, and read back through a stream.
#include <sstream>

#include <tyx/TyxVariant.h>

#include "TyxFuzzSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    using namespace tyx;
    fuzz::beQuiet();
    const TyxVariant text(fuzz::text(data, size));
    for (int code = 0; code < TyxMetaType::Invalid; ++code) {
        const TyxMetaType type(static_cast<TyxMetaType::Code>(code));
        const TyxVariant prototype = TyxVariant::prototype(type);
        if (!prototype.isValid())
            continue;
        // A value of its own, so the registered prototype is never written.
        TyxVariant target(type, prototype.impl().constData());
        if (text.value(type, const_cast<void *>(target.impl().constData()))) {
            // What converted also converts back to text.
            (void)target.value<TyxString>();
            (void)(target == text);
        }
        std::wistringstream in(text.value<TyxString>());
        TyxVariant streamed(type, prototype.impl().constData());
        in >> streamed;
    }
    return 0;
}
