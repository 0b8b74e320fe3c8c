// tyx-calc's tile loop: reads each tile of the inputs, evaluates it, converts and writes it.
#include "Calc.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <csignal>
#include <cstdlib>
#include <limits>
#include <span>

#include <cpl_error.h>

#include <tyx/TyxEqnParser.h>
#include <tyx/TyxEqnTile.h>
#include <tyx/TyxImageROI.h>
#include <tyx/TyxString.h>
#include <tyx/TyxTextMsg.h>
#include <tyx/TyxTileGrid.h>

using namespace tyx;

namespace tyxcalc {

namespace {

volatile std::sig_atomic_t g_interrupted = 0;

extern "C" void onSignal(int) { g_interrupted = 1; }

using CDouble = std::complex<double>;

// Calls \p f with a null pointer of the C++ type of \p code, once per tile:
// the typed loops below then run without any dispatch inside.
template <class F>
void visitType(TyxNumericType::Code code, F &&f)
{
    switch (code) {
    case TyxNumericType::U8: f(static_cast<uint8_t *>(nullptr)); break;
    case TyxNumericType::I16: f(static_cast<int16_t *>(nullptr)); break;
    case TyxNumericType::U16: f(static_cast<uint16_t *>(nullptr)); break;
    case TyxNumericType::I32: f(static_cast<int32_t *>(nullptr)); break;
    case TyxNumericType::U32: f(static_cast<uint32_t *>(nullptr)); break;
    case TyxNumericType::Float: f(static_cast<float *>(nullptr)); break;
    case TyxNumericType::Double: f(static_cast<double *>(nullptr)); break;
    case TyxNumericType::ComplexFloat: f(static_cast<std::complex<float> *>(nullptr)); break;
    case TyxNumericType::ComplexDouble: f(static_cast<CDouble *>(nullptr)); break;
    default: throw CalcError("the expression gives samples of a type tyx-calc cannot write");
    }
}

template <class T>
constexpr bool isComplex = !std::is_arithmetic_v<T>;

template <class T>
double realPart(T v)
{
    if constexpr (isComplex<T>)
        return v.real();
    else
        return static_cast<double>(v);
}

// Marks the pixels that hold \p nodata. A NaN nodata value marks NaN
// samples; a value an integer band cannot hold marks nothing. Floating
// bands compare in their own precision, as GDAL does.
template <class T>
void markNodata(const T *samples, size_t count, double nodata, uint8_t *mask)
{
    if (std::isnan(nodata)) {
        if constexpr (!std::is_integral_v<T>) {
            for (size_t i = 0; i < count; ++i)
                mask[i] |= std::isnan(realPart(samples[i])) ? 1 : 0;
        }
        return;
    }
    if constexpr (std::is_integral_v<T>) {
        if (nodata < static_cast<double>(std::numeric_limits<T>::lowest()) ||
            nodata > static_cast<double>(std::numeric_limits<T>::max()) || nodata != std::trunc(nodata))
            return;
        const T key = static_cast<T>(nodata);
        for (size_t i = 0; i < count; ++i)
            mask[i] |= samples[i] == key ? 1 : 0;
    } else if constexpr (std::is_same_v<T, std::complex<float>>) {
        const float key = static_cast<float>(nodata);
        for (size_t i = 0; i < count; ++i)
            mask[i] |= samples[i].real() == key ? 1 : 0;
    } else if constexpr (std::is_same_v<T, CDouble>) {
        for (size_t i = 0; i < count; ++i)
            mask[i] |= samples[i].real() == nodata ? 1 : 0;
    } else {
        const T key = static_cast<T>(nodata);
        for (size_t i = 0; i < count; ++i)
            mask[i] |= samples[i] == key ? 1 : 0;
    }
}

template <class T>
void applyMask(T *samples, size_t count, const uint8_t *mask, T nodata)
{
    for (size_t i = 0; i < count; ++i)
        samples[i] = mask[i] ? nodata : samples[i];
}

template <class T>
void toComplex(const T *samples, size_t count, CDouble *out)
{
    for (size_t i = 0; i < count; ++i) {
        if constexpr (isComplex<T>)
            out[i] = CDouble(samples[i].real(), samples[i].imag());
        else
            out[i] = CDouble(static_cast<double>(samples[i]), 0.0);
    }
}

// A tile over \p count samples of \p buffer, which stays where it is for the
// whole loop.
TyxEqnTile wrapTile(const TyxDataType &type, void *buffer, size_t count)
{
    TyxEqnTile tile;
    visitType(type, [&](auto *typed) {
        using T = std::remove_pointer_t<decltype(typed)>;
        tile = TyxEqnTile::wrap(std::span<T>(static_cast<T *>(buffer), count));
    });
    return tile;
}

std::string where(const TyxImageROI &roi)
{
    return "pixels " + std::to_string(roi.origin().x()) + "," + std::to_string(roi.origin().y()) + " to " +
           std::to_string(roi.origin().x() + static_cast<int>(roi.size().width()) - 1) + "," +
           std::to_string(roi.origin().y() + static_cast<int>(roi.size().height()) - 1);
}

std::string msgText(const TyxTextMsg &msg) { return toUTF8(msg.text()); }

// Names that the text defines itself after the main expression
// ("a + b; b = 2 * a"); they need no input.
std::vector<std::string> definedNames(const std::string &text)
{
    std::vector<std::string> names;
    bool quoted = false;
    size_t start = std::string::npos;
    for (size_t i = 0; i <= text.size(); ++i) {
        const char c = i < text.size() ? text[i] : ';';
        if (c == '"')
            quoted = !quoted;
        if (quoted || c != ';')
            continue;
        if (start != std::string::npos) {
            const std::string part = text.substr(start, i - start);
            const size_t eq = part.find('=');
            if (eq != std::string::npos && (eq + 1 >= part.size() || part[eq + 1] != '=')) {
                const size_t b = part.find_first_not_of(" \t");
                const size_t e = part.find_last_not_of(" \t", eq - 1);
                if (b != std::string::npos && e != std::string::npos && b <= e)
                    names.push_back(part.substr(b, e - b + 1));
            }
        }
        start = i + 1;
    }
    return names;
}

} // namespace

bool interrupted() { return g_interrupted != 0; }

void installSignalHandlers()
{
    struct sigaction action = {};
    action.sa_handler = onSignal;
    sigemptyset(&action.sa_mask);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        sigaction(signal, &action, nullptr);
}

void parseExpression(TyxEqnParser &parser, const Options &options)
{
    TyxTextMsg msg;
    if (parser.parse(fromUTF8(options.expression), &msg) != 0)
        throw CalcError("expression \"" + options.expression + "\": " + msgText(msg));
    const std::vector<std::string> defined = definedNames(options.expression);
    std::string inputNames;
    for (const InputArg &in : options.inputs)
        inputNames += (inputNames.empty() ? "" : ", ") + in.name;
    for (const TyxString &wideName : parser.variables()) {
        const std::string name = toUTF8(wideName);
        const bool isInput = std::any_of(options.inputs.begin(), options.inputs.end(),
                                         [&](const InputArg &in) { return in.name == name; });
        // Constants such as _PI have their value from the parse.
        if (isInput || parser.value(wideName).isValid() ||
            std::find(defined.begin(), defined.end(), name) != defined.end())
            continue;
        throw CalcError("unknown variable '" + name + "' in the expression; the inputs are " + inputNames);
    }
}

void chooseTileSize(Geometry &geometry, int64_t targetPixels)
{
    int64_t w = std::clamp(geometry.tileWidth, 1, geometry.width);
    int64_t h = std::clamp(geometry.tileHeight, 1, geometry.height);
    if (w * h < targetPixels) {
        // Small blocks: whole blocks across, then whole block rows down.
        w = std::min<int64_t>(geometry.width, w * std::max<int64_t>(1, targetPixels / (w * h)));
        if (w == geometry.width)
            h = std::min<int64_t>(geometry.height, h * std::max<int64_t>(1, targetPixels / (w * h)));
    } else if (w * h > 4 * targetPixels) {
        // One huge block (a whole-image strip): rows of it.
        w = std::min(w, targetPixels);
        h = std::max<int64_t>(1, targetPixels / w);
    }
    geometry.tileWidth = static_cast<int>(w);
    geometry.tileHeight = static_cast<int>(h);
}

void runTiles(TyxEqnParser &parser, const Options &options, std::vector<InputBand> &inputs,
              const Geometry &geometry, const OutputType &type, std::optional<double> outputNodata,
              OutputRaster &output, Progress &progress)
{
    const TyxTileGrid grid(
        TyxImageSize(static_cast<unsigned>(geometry.width), static_cast<unsigned>(geometry.height), 1),
        TyxImageSize(static_cast<unsigned>(geometry.tileWidth), static_cast<unsigned>(geometry.tileHeight),
                     1));
    const size_t cellPixels =
        static_cast<size_t>(geometry.tileWidth) * static_cast<size_t>(geometry.tileHeight);

    // One buffer per input, reused by every tile; the parser's variables
    // point into them.
    std::vector<std::vector<double>> buffers(inputs.size());
    for (size_t k = 0; k < inputs.size(); ++k)
        buffers[k].resize((cellPixels * static_cast<size_t>(inputs[k].dataType.size()) + 7) / 8);
    const bool masking = outputNodata && std::any_of(inputs.begin(), inputs.end(), [](const InputBand &in) {
                             return in.nodata.has_value();
                         });
    std::vector<uint8_t> mask(masking ? cellPixels : 0);
    std::vector<CDouble> complexOut(type.isComplex ? cellPixels : 0);

    // Integer outputs are rounded and clipped to their range; floating ones
    // are converted without a limit, so that infinities stay infinities.
    const double lo = type.isComplex || type.dataType.isFloat() ? -std::numeric_limits<double>::infinity()
                                                                : type.dataType.logicalMinValue();
    const double hi = type.isComplex || type.dataType.isFloat() ? std::numeric_limits<double>::infinity()
                                                                : type.dataType.logicalMaxValue();
    const char *interruptAfter = std::getenv("TYX_CALC_INTERRUPT_AFTER_TILES");
    const long stopAt = interruptAfter ? std::atol(interruptAfter) : -1;
    long tilesDone = 0;

    // The parser's variables point into the buffers: they let go of them
    // however the loop ends.
    struct Release {
        TyxEqnParser &parser;
        const std::vector<InputBand> &inputs;
        ~Release()
        {
            for (const InputBand &in : inputs)
                parser.setValue(fromUTF8(in.arg.name), TyxVariant());
        }
    } release{parser, inputs};

    for (const TyxImageROI roi : grid) {
        const int x = roi.origin().x();
        const int y = roi.origin().y();
        const int w = static_cast<int>(roi.size().width());
        const int h = static_cast<int>(roi.size().height());
        const size_t count = static_cast<size_t>(w) * static_cast<size_t>(h);
        if (masking)
            std::fill_n(mask.begin(), count, uint8_t(0));

        for (size_t k = 0; k < inputs.size(); ++k) {
            InputBand &in = inputs[k];
            void *data = buffers[k].data();
            CPLErrorReset();
            if (GDALRasterIO(in.band, GF_Read, x, y, w, h, data, w, h, in.gdalType, 0, 0) != CE_None)
                throw CalcError("cannot read " + where(roi) + " of '" + in.arg.path +
                                "': " + gdalMessage("read failed"));
            parser.setValue(fromUTF8(in.arg.name), TyxVariant(wrapTile(in.dataType, data, count)));
            if (masking && in.nodata) {
                visitType(in.dataType, [&](auto *typed) {
                    using T = std::remove_pointer_t<decltype(typed)>;
                    markNodata(static_cast<const T *>(data), count, *in.nodata, mask.data());
                });
            }
        }

        TyxTextMsg msg;
        const TyxVariant &value = parser.evaluate(&msg);
        if (!msg.isEmpty() || !value.isValid())
            throw CalcError("the expression cannot be evaluated: " +
                            (msg.isEmpty() ? std::string("no result") : msgText(msg)));
        if (value.type() != TyxMetaType::EqnTile)
            throw CalcError("the expression gives " +
                            std::string(value.type() == TyxMetaType::String ? "a text" : "a single value") +
                            ", not a tile of pixels");
        const TyxEqnTile result = value.value<TyxEqnTile>();
        if (result.size() != count)
            throw CalcError("the expression gives " + std::to_string(result.size()) +
                            " values for a tile of " + std::to_string(count) +
                            " pixels; an operation does not serve these sample types");

        void *outData = nullptr;
        GDALDataType outGdal = type.gdalType;
        TyxEqnTile converted;
        if (type.isComplex) {
            visitType(result.dataType(), [&](auto *typed) {
                using T = std::remove_pointer_t<decltype(typed)>;
                toComplex(result.samples<T>().data(), count, complexOut.data());
            });
            if (masking)
                applyMask(complexOut.data(), count, mask.data(), CDouble(*outputNodata, 0.0));
            outData = complexOut.data();
            outGdal = GDT_CFloat64;
        } else {
            if (result.dataType().isComplex())
                throw CalcError("the expression gives complex values; write them as CFloat32 or CFloat64");
            converted = result.roundclip(type.dataType, lo, hi);
            if (converted.size() != count)
                throw CalcError("the expression's samples cannot be converted to " +
                                std::string(GDALGetDataTypeName(type.gdalType)));
            visitType(type.dataType, [&](auto *typed) {
                using T = std::remove_pointer_t<decltype(typed)>;
                if constexpr (!isComplex<T>) {
                    const std::span<T> samples = converted.samples<T>();
                    if (masking)
                        applyMask(samples.data(), count, mask.data(), static_cast<T>(*outputNodata));
                    outData = samples.data();
                }
            });
        }
        CPLErrorReset();
        if (GDALRasterIO(output.band(), GF_Write, x, y, w, h, outData, w, h, outGdal, 0, 0) != CE_None)
            throw CalcError("cannot write " + where(roi) + " of '" + options.output +
                            "': " + gdalMessage("write failed"));
        progress.tileDone();
        if (++tilesDone == stopAt)
            std::raise(SIGINT);
        if (interrupted())
            throw CalcError("interrupted; no output written");
    }
}

} // namespace tyxcalc
