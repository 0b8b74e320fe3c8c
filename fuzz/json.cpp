// Fuzz target: JSON text read into variants and nodes.
#include <sstream>

#include <tyx/TyxJsonNode.h>
#include <tyx/TyxVariant.h>

#include "TyxFuzzSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    using namespace tyx;
    fuzz::beQuiet();
    const std::string narrow(fuzz::bytes(data, size));
    {
        std::istringstream in(narrow);
        TyxVariant value;
        (void)fromJson(in, value);
    }
    {
        std::wistringstream in(fromUTF8(narrow));
        TyxVariant value;
        (void)fromJson(in, value);
    }
    (void)TyxJsonNode::isValid(fromUTF8(narrow));
    std::istringstream in(narrow);
    (void)TyxJsonNode::parse(in);
    return 0;
}
