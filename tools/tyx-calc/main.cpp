// tyx-calc: band math over rasters, tile by tile, with the tyx expression parser.
#include "Calc.h"

#include <clocale>
#include <cmath>
#include <cstdio>

#include <tyx/TyxEqnParser.h>
#include <tyx/TyxString.h>
#include <tyx/TyxTextMsg.h>

using namespace tyxcalc;

namespace {

std::string numberText(double value)
{
    char text[64];
    std::snprintf(text, sizeof text, "%.17g", value);
    return text;
}

// The output's nodata value: given, else the first input's that has one.
std::optional<double> outputNodata(const Options &options, const std::vector<InputBand> &inputs,
                                   const OutputType &type)
{
    std::optional<double> nodata;
    for (const NodataArg &given : options.nodata) {
        if (given.name.empty())
            nodata = given.value;
    }
    for (size_t k = 0; k < inputs.size() && !nodata; ++k)
        nodata = inputs[k].nodata;
    if (nodata && !type.isComplex && type.dataType.isInteger()) {
        const double v = *nodata;
        if (std::isnan(v) || v != std::trunc(v) || v < type.dataType.logicalMinValue() ||
            v > type.dataType.logicalMaxValue())
            throw CalcError("the output's nodata value " + numberText(v) + " cannot be stored in " +
                            options.outputType + "; give another with --nodata");
    }
    return nodata;
}

} // namespace

int main(int argc, char **argv)
{
    std::setlocale(LC_CTYPE, "C.UTF-8");
    Options options;
    std::unique_ptr<OutputRaster> output;
    std::unique_ptr<Progress> progress;
    try {
        if (!parseArguments(argc, argv, options))
            return 1;
        installSignalHandlers();
        tyx::TyxEqnParser parser;
        parseExpression(parser, options);
        const OutputType type = outputTypeFromName(options.outputType);
        initGdal();
        Geometry geometry;
        std::vector<InputBand> inputs = openInputs(options, geometry);
        const std::optional<double> nodata = outputNodata(options, inputs, type);
        chooseTileSize(geometry, kTargetTilePixels);
        output = std::make_unique<OutputRaster>(options, geometry, type, nodata);
        sizeBlockCache(inputs, *output, geometry);

        const uint64_t across = (uint64_t(geometry.width) + geometry.tileWidth - 1) / geometry.tileWidth;
        const uint64_t down = (uint64_t(geometry.height) + geometry.tileHeight - 1) / geometry.tileHeight;
        progress = std::make_unique<Progress>(
            across * down, uint64_t(geometry.width) * uint64_t(geometry.height), options.quiet);
        runTiles(parser, options, inputs, geometry, type, nodata, *output, *progress);
        if (interrupted())
            throw CalcError("interrupted; no output written");
        output->commit();
        progress->finish();
        return 0;
    } catch (const CalcError &error) {
        if (progress)
            progress->abandon();
        output.reset();
        std::fprintf(stderr, "tyx-calc: error: %s\n", error.what());
    } catch (const tyx::TyxTextMsg &msg) {
        if (progress)
            progress->abandon();
        output.reset();
        std::fprintf(stderr, "tyx-calc: error: %s\n", tyx::toUTF8(msg.text()).c_str());
    } catch (const std::exception &error) {
        if (progress)
            progress->abandon();
        output.reset();
        std::fprintf(stderr, "tyx-calc: error: %s\n", error.what());
    }
    return 1;
}
