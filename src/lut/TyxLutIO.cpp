// Reader and writer of the LUT text file.
#include <tyx/TyxLutIO.h>

#include <cmath>
#include <cstdlib>
#include <istream>
#include <limits>
#include <memory>
#include <new>
#include <ostream>
#include <sstream>
#include <vector>

#include <tyx/TyxBreakPointLut.h>
#include <tyx/TyxTokenizer.h>

#include "core/TyxPost.h"
#include "image/TyxSampleTypes.h"

namespace tyx {

namespace {

constexpr uint64_t kMaxBytes = 4294967295ull;
const wchar_t *const kTooLarge =
    L"The total number of bytes required for the LUT exceeds the valid maximum of 4294967295.";

/// What the header says.
struct LutHeader {
    int32_t channels = 0;
    TyxString type;
    TyxDataType dataType;
    bool hasDataType = false;
    int32_t minZeroOffset = 0;
    std::vector<int32_t> lengths;
    std::vector<int32_t> zeroOffsets;
};

/// A double as a table entry: the plain cast of the file format, through 32
/// bits up to I32 and through 64 bits for U32, wrapping into the narrower
/// type. A value outside the intermediate's range or NaN becomes its most
/// negative value, as the processor's conversion gives, instead of
/// undefined behaviour.
template <class T>
inline T plainCast(double d)
{
    if constexpr (std::is_floating_point_v<T>) {
        return static_cast<T>(d);
    } else if constexpr (std::is_same_v<T, uint32_t>) {
        const int64_t v = (d > -9.2233720368547758e18 && d < 9.2233720368547758e18)
                              ? static_cast<int64_t>(d)
                              : std::numeric_limits<int64_t>::min();
        return static_cast<T>(v);
    } else {
        const int32_t v = (d > -2147483649.0 && d < 2147483648.0) ? static_cast<int32_t>(d)
                                                                  : std::numeric_limits<int32_t>::min();
        return static_cast<T>(v);
    }
}

/// One reading pass over a stream.
class LutReader {
public:
    LutReader(std::wistream &stream, int *lineNumber)
        : m_tokenizer(stream, L"{}=$", L"#", L"", L"", L" \t\r\n"), m_lineNumber(lineNumber)
    {
    }
    ~LutReader()
    {
        if (m_lineNumber)
            *m_lineNumber = m_tokenizer.lineNumber();
    }

    TyxLutDesc *read();

private:
    bool next() { return m_tokenizer.nextToken(m_token); }
    bool nextIsEnd() { return next() && m_token == L"$"; }
    /// Posts \p text as the failure; the result of reading is then null.
    TyxLutDesc *fail(const TyxString &text)
    {
        if (m_lineNumber)
            *m_lineNumber = m_tokenizer.lineNumber();
        TYX_POST_ERROR(text);
        return nullptr;
    }
    /// The same for the steps that answer whether they succeeded.
    bool failed(const TyxString &text) { return fail(text) != nullptr; }
    bool readHeader(LutHeader &header);
    TyxLutDesc *readDense(const LutHeader &header);
    TyxLutDesc *readBreakPoints(const LutHeader &header);

    TyxTokenizer m_tokenizer;
    TyxString m_token;
    int *m_lineNumber;
};

bool startsWithDigit(const TyxString &token)
{
    return !token.empty() && token[0] >= L'0' && token[0] <= L'9';
}

bool startsWithSignOrDigit(const TyxString &token)
{
    return startsWithDigit(token) || (!token.empty() && (token[0] == L'+' || token[0] == L'-'));
}

bool LutReader::readHeader(LutHeader &h)
{
    if (!next() || m_token != L"{")
        return failed(L"Unable to find the begin-of-header token '{'.");

    int32_t tables = 0;
    bool tablesSeen = false, channelsSeen = false;
    bool haveToken = next();
    while (haveToken && m_token != L"}") {
        const TyxString keyword = m_token;
        if (!next() || m_token != L"=")
            return failed(L"Failed parsing for '='. Previous token: '" + keyword + L"'.");
        if (!next())
            return failed(L"Missing value for keyword '" + keyword + L"'.");

        if (isEqual(keyword, L"tables")) {
            if (tablesSeen)
                return failed(L"Multiple 'tables' keyword definitions");
            tables = atoi(m_token);
            if (tables < 1)
                return failed(L"Invalid value, " + std::to_wstring(tables) + L", for keyword 'tables'");
            tablesSeen = true;
        } else if (isEqual(keyword, L"type")) {
            if (!h.type.empty())
                return failed(L"Multiple 'type' keyword definitions");
            h.type = m_token;
        } else if (isEqual(keyword, L"channels")) {
            if (h.channels != 0)
                return failed(L"Multiple 'channels' keyword definitions");
            h.channels = atoi(m_token);
            if (h.channels < 0)
                return failed(L"Invalid value, " + std::to_wstring(h.channels) + L", for keyword 'channels'");
            channelsSeen = true;
        } else if (isEqual(keyword, L"length")) {
            if (!h.lengths.empty())
                return failed(L"Multiple 'length' keyword definitions");
            // The list grows with the tokens present, never by a count.
            h.lengths.push_back(atoi(m_token));
            while ((haveToken = next()) && startsWithDigit(m_token))
                h.lengths.push_back(atoi(m_token));
            continue;
        } else if (isEqual(keyword, L"zeroOffset")) {
            if (!h.zeroOffsets.empty())
                return failed(L"Multiple 'zeroOffset' keyword definitions");
            h.zeroOffsets.push_back(atoi(m_token));
            h.minZeroOffset = h.zeroOffsets.back();
            while ((haveToken = next()) && startsWithSignOrDigit(m_token)) {
                h.zeroOffsets.push_back(atoi(m_token));
                h.minZeroOffset = std::min(h.minZeroOffset, h.zeroOffsets.back());
            }
            continue;
        } else if (isEqual(keyword, L"dataType")) {
            h.hasDataType = true;
            h.dataType = TyxDataType(m_token);
        } else {
            return failed(L"Unknown header section token '" + keyword + L"'.");
        }
        haveToken = next();
    }

    if (!tablesSeen && !channelsSeen)
        return failed(L"Missing required 'channel' keyword");
    if (tables != 0 && h.channels != 0 && tables != h.channels)
        return failed(L"Number of tables, " + std::to_wstring(tables) +
                      L", does not equal number of channels, " + std::to_wstring(h.channels));
    const int32_t bands = h.channels != 0 ? h.channels : tables;
    h.channels = bands;
    if (h.type.empty())
        return failed(L"Missing required 'type' keyword");
    if (bands != 0 && h.lengths.empty())
        return failed(L"Missing required 'length' keyword");
    if (h.lengths.size() != size_t(bands))
        return failed(L"Expected " + std::to_wstring(bands) + L" length value(s); got " +
                      std::to_wstring(h.lengths.size()) + L" length value(s)");
    // atoi wraps a count beyond 32 bits to any value, a negative one
    // included: a negative length would make a table of no entries that
    // looks valid, so it is refused.
    for (int32_t length : h.lengths)
        if (length < 0)
            return failed(L"Invalid value, " + std::to_wstring(length) + L", for keyword 'length'");
    // bands now equals a count of tokens read, so this list is bounded too.
    if (h.zeroOffsets.empty()) {
        h.zeroOffsets.assign(size_t(bands), 0);
        h.minZeroOffset = 0;
    } else if (!isEqual(h.type, L"l")) {
        return failed(L"ZeroOffset keyword is only valid when type is 'l'");
    }
    if (h.zeroOffsets.size() != size_t(bands))
        return failed(L"Expected " + std::to_wstring(bands) + L" zero offset value(s); got " +
                      std::to_wstring(h.zeroOffsets.size()) + L" value(s)");
    return true;
}

TyxLutDesc *LutReader::read()
{
    LutHeader header;
    if (!readHeader(header))
        return nullptr;
    if (isEqual(header.type, L"l"))
        return readDense(header);
    if (isEqual(header.type, L"b"))
        return readBreakPoints(header);
    return fail(L"Invalid type value, " + header.type +
                L" Valid types are 'l' for LUT and 'b' for breakpoint");
}

TyxLutDesc *LutReader::readDense(const LutHeader &h)
{
    const size_t bands = size_t(h.channels);
    if (bands == 0)
        return new TyxLutDesc();

    // Extents in 64 bits: zero offsets far apart cannot wrap.
    std::vector<int64_t> pads(bands);
    int64_t rowLength = 0;
    for (size_t b = 0; b < bands; ++b) {
        pads[b] = std::llabs(int64_t(h.minZeroOffset) - int64_t(h.zeroOffsets[b]));
        rowLength = std::max(rowLength, pads[b] + int64_t(h.lengths[b]));
    }
    const uint64_t total = uint64_t(bands) * uint64_t(rowLength);
    if (total > kMaxBytes / 8)
        return fail(kTooLarge);

    // Each band's values are collected as their tokens arrive, so memory
    // follows what the file holds; the table itself is made once all
    // sections have been read, within the limit checked above.
    std::vector<std::vector<double>> values(bands);
    double lo = 0.0, hi = 0.0;
    for (size_t b = 0; b < bands; ++b) {
        if (!next() || m_token == L"$")
            return fail(L"Missing lut out value");
        values[b].push_back(atof(m_token));
        lo = hi = values[b].back();
        for (int32_t i = 1; i < h.lengths[b]; ++i) {
            if (!next() || m_token == L"$")
                return fail(L"Missing lut value");
            const double v = atof(m_token);
            values[b].push_back(v);
            lo = std::min(lo, v);
            hi = std::max(hi, v);
        }
        if (!nextIsEnd())
            return fail(L"Failed to find expected end of data section symbol, $");
    }

    const TyxDataType type = h.hasDataType ? h.dataType : TyxDataType::fromMinMax(lo, hi);
    const bool served =
        type == TyxNumericType::Double ||
        internal::visitSampleCode<internal::SampleSet::Narrow>(type.code(), false, [](auto) { return true; });
    if (!served)
        return fail(L"Invalid data type.");

    // Rows: the first value also fills the band's padding; after the values
    // the last one fills the rest of the row. Writes stay inside the row.
    auto fillRows = [&](auto *table) {
        using T = std::remove_pointer_t<decltype(table)>;
        const uint64_t row = uint64_t(rowLength);
        for (size_t b = 0; b < bands; ++b) {
            T *dst = table + b * row;
            const std::vector<double> &v = values[b];
            uint64_t pos = 0;
            const T first = plainCast<T>(v.front());
            for (; pos < row && pos <= uint64_t(pads[b]); ++pos)
                dst[pos] = first;
            for (size_t i = 1; i < v.size() && pos < row; ++i, ++pos)
                dst[pos] = plainCast<T>(v[i]);
            const T last = plainCast<T>(v.back());
            for (; pos < row; ++pos)
                dst[pos] = last;
        }
    };

    if (type == TyxNumericType::Double) {
        // The buffer takes over the array of doubles. The descriptor's
        // arguments keep the file format's own order for this type.
        double *array = static_cast<double *>(std::malloc(std::max<uint64_t>(total, 1) * sizeof(double)));
        if (!array)
            return fail(kTooLarge);
        fillRows(array);
        TyxBufferPtr buffer(new TyxBuffer(total * sizeof(double), array, true));
        buffer->setDataType(type);
        return new TyxLutDesc(buffer, type, unsigned(h.minZeroOffset), h.channels, 1, false);
    }
    TyxBufferPtr buffer(new TyxBuffer(total * type.size(), true));
    if (total != 0 && (!buffer->isValid() || !buffer->data()))
        return fail(kTooLarge);
    buffer->setDataType(type);
    internal::visitSampleCode<internal::SampleSet::Narrow>(type.code(), 0, [&](auto tag) {
        fillRows(static_cast<typename decltype(tag)::type *>(buffer->data()));
        return 0;
    });
    return new TyxLutDesc(buffer, type, unsigned(rowLength), h.minZeroOffset, unsigned(h.channels), false);
}

TyxLutDesc *LutReader::readBreakPoints(const LutHeader &h)
{
    TyxBreakPointLut points;
    // Running extremes as the file format keeps them: a value below the
    // minimum is the new minimum, any other value the new "maximum".
    double minIn = 1.7976931348623157e308, maxIn = 2.2250738585072014e-308;
    double minOut = 1.7976931348623157e308, maxOut = 2.2250738585072014e-308;
    auto track = [](double v, double &lo, double &hi) {
        if (v < lo)
            lo = v;
        else
            hi = v;
    };
    for (int32_t band = 0; band < h.channels; ++band) {
        for (int32_t i = 0; i < h.lengths[size_t(band)]; ++i) {
            if (!next() || m_token == L"$")
                return fail(L"Missing 'in' breakpoint value");
            int in = 0;
            std::wistringstream(m_token) >> in;
            if (!next() || m_token == L"$")
                return fail(L"Missing 'out' breakpoint value");
            const double out = atof(m_token);
            points.add(TyxBreakPoint(in, out, uint32_t(band)));
            track(double(in), minIn, maxIn);
            track(out, minOut, maxOut);
        }
        if (!nextIsEnd())
            return fail(L"Failed to find expected end of data section symbol, $");
    }
    if (next())
        return fail(L"Found unexpected token, " + m_token + L", at end of data section");

    TyxDataType inType = TyxDataType::fromMinMax(minIn, maxIn);
    TyxDataType outType = TyxDataType::fromMinMax(minOut, maxOut);
    if (h.hasDataType) {
        outType = h.dataType;
        if (outType.isFloat())
            inType = outType;
    }
    points.setOutputDataType(outType);

    // The dense table spans the input type's whole range: a few numbers in
    // the file could ask for gigabytes, so it is held to the same limit as
    // the dense form.
    if (inType.isValid() && points.outputDataType().isValid()) {
        const double entries = inType.isInteger() ? std::trunc(inType.logicalMaxValue()) -
                                                        std::trunc(inType.logicalMinValue()) + 1.0
                                                  : 65536.0;
        const double bytes = double(points.numBands()) * entries * double(points.outputDataType().size());
        if (bytes > double(kMaxBytes))
            return fail(kTooLarge);
    }
    const TyxLutDescPtr &lut = points.lut(inType);
    if (!lut) {
        if (m_lineNumber)
            *m_lineNumber = m_tokenizer.lineNumber();
        return nullptr;
    }
    return new TyxLutDesc(*lut);
}

template <class T>
bool writeEntries(const TyxLutDesc &lut, std::wostream &stream)
{
    const uint64_t entries = lut.numEntriesPerBand();
    const uint64_t bandBytes = entries * sizeof(T);
    const TyxBufferConstPtr buffer = lut.buffer();
    const uint64_t available = buffer && buffer->data() ? buffer->size() : 0;
    // Every band must be in the buffer; a shared single band serves all.
    const bool allBands = bandBytes == 0 || available / bandBytes >= lut.numBands();
    if (!allBands && !(lut.reuseLutDataForAllBands() && available >= bandBytes)) {
        TYX_POST_ERROR(L"The LUT buffer holds fewer entries than the descriptor names.");
        return false;
    }
    const T *data = static_cast<const T *>(buffer->data());
    for (uint64_t b = 0; b < lut.numBands(); ++b) {
        const T *band = data + (allBands ? b * entries : 0);
        const std::streamsize oldPrecision = stream.precision();
        if constexpr (std::is_same_v<T, float>)
            stream.precision(9);
        else if constexpr (std::is_same_v<T, double>)
            stream.precision(17);
        for (uint64_t i = 0; i < entries; ++i) {
            if constexpr (sizeof(T) == 1)
                stream << int(band[i]) << L'\n';
            else
                stream << band[i] << L'\n';
        }
        stream.precision(oldPrecision);
        stream << L"$\n";
    }
    return true;
}

} // namespace

TyxLutDesc *TyxLutIO::readCommon(std::wistream &stream, int *lineNumber)
{
    LutReader reader(stream, lineNumber);
    try {
        return reader.read();
    } catch (const std::bad_alloc &) {
        // Only tokens present in the text grow memory; running out of it is
        // posted rather than let through.
        TYX_POST_ERROR(L"Caught a bad memory allocation exception while reading the LUT.");
        return nullptr;
    }
}

bool TyxLutIO::writeCommon(const TyxLutDesc &lut, std::wostream &stream)
{
    const unsigned bands = lut.numBands();
    stream << L"{\n";
    stream << L"    type= l\n";
    stream << L"    channels= " << bands << L'\n';
    if (bands != 0) {
        stream << L"    length=";
        for (unsigned b = 0; b < bands; ++b)
            stream << L' ' << lut.numEntriesPerBand();
        stream << L"\n    zeroOffset=";
        for (unsigned b = 0; b < bands; ++b)
            stream << L' ' << lut.minIndex();
        stream << L"\n    dataType = " << lut.dataType().toString() << L'\n';
    }
    stream << L"}\n";
    if (bands == 0)
        return !stream.fail();
    const int written =
        internal::visitSampleCode<internal::SampleSet::Narrow>(lut.dataType().code(), -1, [&](auto tag) {
            return writeEntries<typename decltype(tag)::type>(lut, stream) ? 1 : 0;
        });
    if (written < 0) {
        TYX_POST_ERROR(L"Invalid data type.");
        return false;
    }
    return written == 1 && !stream.fail();
}

} // namespace tyx
