// Fuzz target: XML text read into variants and into object documents, and
// the objects those documents make.
#include <sstream>

#include <tyx/TyxSimpleStream.h>
#include <tyx/TyxVariant.h>

#include "TyxFuzzSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    using namespace tyx;
    fuzz::beQuiet();
    const std::string_view narrow = fuzz::bytes(data, size);
    TyxVariant value;
    if (fromXml(narrow, value).empty()) {
        // What was read writes back and reads again to the same type.
        std::ostringstream out;
        toXml(out, value);
        TyxVariant again;
        if (!fromXml(out.str(), again).empty() || again.type() != value.type())
            __builtin_trap();
    }
    std::wistringstream wide(fromUTF8(narrow));
    (void)fromXml(wide, value);

    TyxObjectProxy document;
    if (TyxSimpleStream::parse(narrow, TyxSimpleStream::Xml, document).empty()) {
        TyxObject *object = nullptr;
        if (document.createObject(object).empty())
            delete object;
    }
    return 0;
}
