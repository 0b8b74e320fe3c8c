// Fuzz target: command lines against a parser with every kind of argument.
#include <sstream>

#include <tyx/TyxClMultiSwitchArg.h>
#include <tyx/TyxClMultiUnlabeledArg.h>
#include <tyx/TyxClMultiValueArg.h>
#include <tyx/TyxClParser.h>
#include <tyx/TyxClStdOutput.h>
#include <tyx/TyxClSwitchArg.h>
#include <tyx/TyxClValueArg.h>
#include <tyx/TyxNumValidator.h>

#include "TyxFuzzSupport.h"

namespace {

using namespace tyx;

// Writes help and errors to a string and never ends the process.
class StayingOutput : public TyxClStdOutput {
public:
    StayingOutput() : TyxClStdOutput(m_sink) {}
    void exitProgram(int) const override {}

private:
    std::wostringstream m_sink;
};

TyxMetaProperty prop(wchar_t flag, const TyxString &name, const TyxMetaType &type = TyxMetaType::String,
                     uint32_t flags = 0)
{
    return TyxMetaProperty(flag, name, L"v", type, TyxMetaFlag(flags), L"About " + name);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::beQuiet();
    // The arguments are the input cut at each 0 byte.
    const std::vector<std::string> parts = fuzz::split(fuzz::bytes(data, size), '\0');
    std::vector<const char *> argv{"prog"};
    for (const std::string &part : parts)
        argv.push_back(part.c_str());

    TyxClParser parser(L"fuzzed program", L"1.0", L' ');
    parser.setOutput(TyxClOutputIFPtr(new StayingOutput()));
    parser.add(new TyxClValueArg(prop(L'i', L"input", TyxMetaType::String, TyxMetaFlag::Required)));
    TyxMetaProperty number = prop(L'n', L"number", TyxMetaType::Int);
    const TyxNumValidator<int32_t> range(0x05, 1, 10);
    number.setValidator(&range);
    parser.add(new TyxClValueArg(number, TyxVariant(int32_t(5))));
    parser.add(new TyxClValueArg(prop(L'd', L"scale", TyxMetaType::Double)));
    parser.add(new TyxClMultiValueArg(prop(L'm', L"many", TyxMetaType::Int)));
    parser.add(new TyxClMultiSwitchArg(prop(L'w', L"verbose")));
    parser.xorAdd(new TyxClSwitchArg(prop(L'x', L"xes")), new TyxClSwitchArg(prop(L'y', L"yes")));
    parser.add(new TyxClMultiUnlabeledArg(prop(0, L"files")));
    try {
        (void)parser.parse(static_cast<int>(argv.size()), argv.data());
        parser.reset();
        (void)parser.parse(static_cast<int>(argv.size()), argv.data());
    } catch (const TyxTextMsg &) {
        // Errors are returned while exception handling is on; a thrown one is
        // still the library's channel.
    }
    return 0;
}
