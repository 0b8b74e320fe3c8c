// tyx-calc's command line, declared and read through the library's parser.
#include "Calc.h"

#include <cctype>
#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <iostream>

#include <tyx/TyxClMultiValueArg.h>
#include <tyx/TyxClParser.h>
#include <tyx/TyxClStdOutput.h>
#include <tyx/TyxClSwitchArg.h>
#include <tyx/TyxClValueArg.h>
#include <tyx/TyxString.h>

using namespace tyx;

namespace tyxcalc {

namespace {

const wchar_t *const kDescription =
    L"Evaluates an expression of the tyx language over bands of rasters and writes the result as a new "
    L"raster with the size and georeferencing of the first input. A pixel where any input holds its "
    L"nodata value is nodata in the output. Integer outputs are rounded half away from zero and clipped "
    L"to the type's range; division by zero gives infinities in floating outputs. "
    L"Memory: the raster is walked in tiles of the first input's block size (small blocks are joined to "
    L"about 262144 pixels), and a few tiles are held at once: about 262144 x 8 bytes for each input, each "
    L"operator of the expression and the output, plus GDAL's block cache of two rows of blocks of each "
    L"input and of the output and 2 MB, whatever the raster's height.";

// Help and usage go to standard output, parse errors to standard error.
class CalcClOutput : public TyxClOutputIF {
public:
    CalcClOutput() : m_out(std::wcout), m_err(std::wcerr) {}
    void usage(const TyxClParserIF &parser) const override { m_out.usage(parser); }
    void version(const TyxClParserIF &parser) const override { m_out.version(parser); }
    void failure(const TyxClParserIF &parser, const TyxTextMsg &msg) const override
    {
        m_err.failure(parser, msg);
    }

private:
    TyxClStdOutput m_out;
    TyxClStdOutput m_err;
};

TyxMetaProperty property(wchar_t flag, const wchar_t *name, const wchar_t *label, bool required,
                         const wchar_t *description)
{
    return TyxMetaProperty(flag, name, label, TyxMetaType::String,
                           required ? TyxMetaFlag(TyxMetaFlag::Required) : TyxMetaFlag(), description);
}

std::string text(const TyxVariant &value) { return toUTF8(value.value<TyxString>()); }

bool isIdentifier(const std::string &name)
{
    if (name.empty() || !(std::isalpha(static_cast<unsigned char>(name[0])) || name[0] == '_'))
        return false;
    for (const char c : name) {
        if (!(std::isalnum(static_cast<unsigned char>(c)) || c == '_'))
            return false;
    }
    return true;
}

InputArg parseInput(const std::string &value)
{
    const size_t eq = value.find('=');
    if (eq == std::string::npos || eq + 1 == value.size() || !isIdentifier(value.substr(0, eq)))
        throw CalcError("input '" + value + "' is not of the form name=file[:band]");
    InputArg given;
    given.name = value.substr(0, eq);
    given.path = value.substr(eq + 1);
    // A trailing ":digits" names the band; other colons belong to the path.
    const size_t colon = given.path.rfind(':');
    if (colon != std::string::npos && colon + 1 < given.path.size() &&
        given.path.find_first_not_of("0123456789", colon + 1) == std::string::npos) {
        errno = 0;
        const long band = std::strtol(given.path.c_str() + colon + 1, nullptr, 10);
        if (errno != 0 || band < 1 || band > 65535)
            throw CalcError("input '" + value + "' names band " + given.path.substr(colon + 1) +
                            "; bands count from 1");
        given.band = static_cast<int>(band);
        given.path.resize(colon);
    }
    if (given.path.empty())
        throw CalcError("input '" + value + "' is not of the form name=file[:band]");
    return given;
}

double parseNumber(const std::string &text, const std::string &what)
{
    char *end = nullptr;
    errno = 0;
    const double value = std::strtod(text.c_str(), &end);
    if (text.empty() || *end != '\0' || errno == ERANGE)
        throw CalcError(what + " '" + text + "' is not a number");
    return value;
}

NodataArg parseNodata(const std::string &value)
{
    NodataArg given;
    const size_t eq = value.find('=');
    if (eq == std::string::npos) {
        given.value = parseNumber(value, "nodata value");
        return given;
    }
    given.name = value.substr(0, eq);
    given.value = parseNumber(value.substr(eq + 1), "nodata value");
    return given;
}

} // namespace

bool parseArguments(int argc, char **argv, Options &options)
{
    TyxClParser parser(kDescription, fromUTF8(TYX_CALC_VERSION));
    parser.setOutput(TyxClOutputIFPtr(new CalcClOutput));

    auto *input = new TyxClMultiValueArg(
        property(L'i', L"input", L"name=file[:band]", true,
                 L"An input band under the variable name of the expression; the band counts from 1 and "
                 L"is 1 when left out"));
    auto *expression = new TyxClValueArg(
        property(L'e', L"expression", L"expression", true, L"The expression, such as \"(a - b) / (a + b)\""));
    auto *type = new TyxClValueArg(
        property(L't', L"type", L"type", false,
                 L"The output's GDAL data type: Byte, Int16, UInt16, Int32, UInt32, Float32, Float64, "
                 L"CFloat32 or CFloat64; Float64 when left out"),
        TyxVariant(TyxString(L"Float64")));
    auto *output = new TyxClValueArg(property(L'o', L"output", L"file", true, L"The raster to write"));
    auto *nodata = new TyxClMultiValueArg(
        property(0, L"nodata", L"[name=]value", false,
                 L"The nodata value of the input name (overriding the file's), or without a name that of "
                 L"the output; the output takes the first input's when not given"));
    auto *creation = new TyxClMultiValueArg(
        property(0, L"co", L"KEY=VALUE", false, L"A creation option for the output's driver"));
    auto *format = new TyxClValueArg(
        property(0, L"format", L"driver", false, L"The output's GDAL driver; GTiff when left out"),
        TyxVariant(TyxString(L"GTiff")));
    auto *overwrite = new TyxClSwitchArg(TyxMetaProperty(0, L"overwrite", TyxString(), TyxMetaType::Bool,
                                                         TyxMetaFlag(), L"Replace an existing output"));
    auto *quiet = new TyxClSwitchArg(TyxMetaProperty(L'q', L"quiet", TyxString(), TyxMetaType::Bool,
                                                     TyxMetaFlag(), L"Print no progress and no summary"));
    parser.add(TyxClArgPtr(input));
    parser.add(TyxClArgPtr(expression));
    parser.add(TyxClArgPtr(type));
    parser.add(TyxClArgPtr(output));
    parser.add(TyxClArgPtr(nodata));
    parser.add(TyxClArgPtr(creation));
    parser.add(TyxClArgPtr(format));
    parser.add(TyxClArgPtr(overwrite));
    parser.add(TyxClArgPtr(quiet));

    // The usage shows the program's name without its folder.
    std::vector<TyxString> args;
    for (int i = 0; i < argc; ++i)
        args.push_back(fromUTF8(argv[i]));
    if (!args.empty()) {
        const size_t slash = args[0].rfind(L'/');
        if (slash != TyxString::npos)
            args[0].erase(0, slash + 1);
    }
    std::vector<const wchar_t *> wideArgv;
    for (const TyxString &arg : args)
        wideArgv.push_back(arg.c_str());
    if (!parser.parse(static_cast<int>(wideArgv.size()), wideArgv.data()).isEmpty())
        return false;

    for (const TyxVariant &value : input->values())
        options.inputs.push_back(parseInput(text(value)));
    options.expression = text(expression->variant());
    options.outputType = text(type->variant());
    options.output = text(output->variant());
    for (const TyxVariant &value : nodata->values())
        options.nodata.push_back(parseNodata(text(value)));
    for (const TyxVariant &value : creation->values()) {
        const std::string option = text(value);
        if (option.find('=') == std::string::npos || option.front() == '=')
            throw CalcError("creation option '" + option + "' is not of the form KEY=VALUE");
        options.creationOptions.push_back(option);
    }
    options.format = text(format->variant());
    options.overwrite = overwrite->switchValue();
    options.quiet = quiet->switchValue();

    for (size_t i = 0; i < options.inputs.size(); ++i) {
        for (size_t j = 0; j < i; ++j) {
            if (options.inputs[i].name == options.inputs[j].name)
                throw CalcError("input name '" + options.inputs[i].name + "' is given twice");
        }
    }
    for (const NodataArg &given : options.nodata) {
        if (given.name.empty())
            continue;
        bool known = false;
        for (const InputArg &in : options.inputs)
            known = known || in.name == given.name;
        if (!known)
            throw CalcError("--nodata names '" + given.name + "', which is not an input");
    }
    return true;
}

} // namespace tyxcalc
