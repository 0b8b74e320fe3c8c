#include <tyx/TyxBreakPointLut.h>
#include <tyx/TyxLutIO.h>

#include "TyxLutTestData.h"
#include "TyxRecordingHandler.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <sstream>
#include <utility>
#include <vector>

namespace {

using namespace tyx;
using N = TyxNumericType;
using namespace test;

std::unique_ptr<TyxLutDesc> readText(const TyxString &text, int *line = nullptr)
{
    std::wistringstream stream(text);
    return std::unique_ptr<TyxLutDesc>(TyxLutIO::readCommon(stream, line));
}

TyxString writeText(const TyxLutDesc &lut)
{
    std::wostringstream stream;
    EXPECT_TRUE(TyxLutIO::writeCommon(lut, stream));
    return stream.str();
}

/// The table a break point lut builds from \p points, for input and output
/// of type \p type.
TyxLutDesc tableOf(const TyxDataType &type, const std::vector<TyxBreakPoint> &points)
{
    const TyxLutDescPtr lut = pointLut(type, points).lut(type);
    return lut ? *lut : TyxLutDesc();
}

TEST(TyxLutIOTest, DenseTablesAsRead)
{
    const TyxDataType u8(N::U8);
    const std::pair<const wchar_t *, TyxLutDesc> cases[] = {
        {L"{ type = l channels = 0 } 1 2 3", TyxLutDesc()},
        // The type and its depth come from the values of the last band.
        {L"{ type = l channels = 1 length = 3 } 1 2 3 $",
         TyxLutDesc(bufferOf<uint8_t>({1, 2, 3}), TyxDataType(N::U8, 2), 3, 0, 1, false)},
        // Zero offsets pad the rows.
        {L"{ type = l channels = 2 length = 2 2 zeroOffset = 0 2 } 1 2 $ 3 4 $",
         TyxLutDesc(bufferOf<uint8_t>({1, 2, 2, 2, 3, 3, 3, 4}), TyxDataType(N::U8, 2), 4, 0, 2, false)},
        {L"{ type = l channels = 2 length = 1 1 zeroOffset = -1 +1 } 7 $ 9 $",
         TyxLutDesc(bufferOf<uint8_t>({7, 7, 7, 9, 9, 9}), TyxDataType(N::U8, 4), 3, -1, 2, false)},
        // Keywords ignore case and comments stand anywhere.
        {L"# a comment\n{ # here\n type = l # and here\n tables = 1\n length = 2 dataType = "
         L"i16 }\n-3 # between values\n 4 $ trailing tokens are not read",
         TyxLutDesc(bufferOf<int16_t>({-3, 4}), TyxDataType(N::I16), 2, 0, 1, false)},
        // Plain casts through 32 bits without rounding; a value beyond 32 bits
        // becomes the most negative one, whose low byte is 0.
        {L"{ type = l channels = 1 length = 4 dataType = u8 } 1.9 -1 300 2.5e10 $",
         TyxLutDesc(bufferOf<uint8_t>({1, 255, 44, 0}), u8, 4, 0, 1, false)},
        {L"{ type = l channels = 1 length = 2 dataType = U32 } 4294967295.7 -1 $",
         TyxLutDesc(bufferOf<uint32_t>({4294967295u, 4294967295u}), TyxDataType(N::U32), 2, 0, 1, false)},
        // Double tables keep their argument order: the entries per band are the
        // smallest zero offset, the first index the number of channels.
        {L"{ type = l channels = 2 length = 1 1 zeroOffset = 3 4 dataType = Double } 0.5 $ 1.5 $",
         TyxLutDesc(bufferOf<double>({0.5, 0.5, 1.5, 1.5}), TyxDataType(N::Double), 3, 2, 1, false)},
        // Break points build the table of their own lut, the type found from
        // their values.
        {L"{ type = b  tables = 1  length = 3 }\n0 0\n128 64\n255 255\n$",
         tableOf(u8, {{0, 0.0, 0}, {128, 64.0, 0}, {255, 255.0, 0}})},
        // Float tables take their input as float too.
        {L"{ type = b tables = 1 length = 2 dataType = float } 0 0.0 255 1.0 $",
         tableOf(TyxDataType(N::Float), {{0, 0.0, 0}, {255, 1.0, 0}})},
    };
    for (const auto &[text, expected] : cases) {
        const auto lut = readText(text);
        ASSERT_TRUE(lut) << text;
        EXPECT_EQ(*lut, expected) << text;
    }
}

TEST(TyxLutIOTest, WritesTheDenseFormInFullPrecisionOrRefuses)
{
    const TyxLutDesc lut(bufferOf<uint8_t>({0, 1, 2, 250}), TyxDataType(N::U8), 2, -1, 2, false);
    EXPECT_EQ(writeText(lut), L"{\n    type= l\n    channels= 2\n    length= 2 2\n    zeroOffset= -1 -1\n"
                              L"    dataType = U8\n}\n0\n1\n$\n2\n250\n$\n");
    EXPECT_EQ(writeText(TyxLutDesc()), L"{\n    type= l\n    channels= 0\n}\n");
    // Double entries in full precision (float ones: the round trip below);
    // the stream's own precision is restored.
    std::wostringstream stream;
    stream.precision(3);
    const TyxLutDesc doubles(bufferOf<double>({0.1}), TyxDataType(N::Double), 1, 0, 1, false);
    ASSERT_TRUE(TyxLutIO::writeCommon(doubles, stream));
    EXPECT_NE(stream.str().find(L"\n0.10000000000000001\n$\n"), TyxString::npos);
    EXPECT_EQ(stream.precision(), 3);

    HandlerScope scope;
    stream.str(L"");
    const TyxLutDesc wide(bufferOf<int64_t>({1}), TyxDataType(N::I64), 1, 0, 1, false);
    EXPECT_FALSE(TyxLutIO::writeCommon(wide, stream));
    // The header is out before the type is looked at.
    EXPECT_EQ(stream.str(), L"{\n    type= l\n    channels= 1\n    length= 1\n    zeroOffset= 0\n"
                            L"    dataType = I64\n}\n");
    const TyxLutDesc tooShort(bufferOf<uint8_t>({1, 2}), TyxDataType(N::U8), 2, 0, 2, false);
    EXPECT_FALSE(TyxLutIO::writeCommon(tooShort, stream));
    EXPECT_EQ(scope.texts(),
              (std::vector<TyxString>{L"Invalid data type.",
                                      L"The LUT buffer holds fewer entries than the descriptor names."}));
    // A shared band serves every band it names.
    const TyxLutDesc shared(bufferOf<uint8_t>({1, 2}), TyxDataType(N::U8), 2, 0, 2, true);
    EXPECT_EQ(writeText(shared).substr(writeText(shared).find(L"}\n")), L"}\n1\n2\n$\n1\n2\n$\n");
}

// Break points to a dense table, to a file and back, for each table type
// that the file keeps exactly.
TEST(TyxLutIOTest, RoundTripsThroughTheFile)
{
    const N::Code codes[] = {N::I8, N::U16, N::U32, N::Float};
    for (N::Code code : codes) {
        const TyxDataType output(code);
        TyxBreakPointLut bpl(output);
        for (uint32_t band = 0; band < 3; ++band) {
            bpl.add(TyxBreakPoint(0, output.isSigned() ? -100.0 : 0.0, band));
            bpl.add(TyxBreakPoint(70 + 10 * int(band), 33.3, band));
            bpl.add(TyxBreakPoint(255, 127.0, band));
        }
        const TyxLutDescPtr &built = bpl.lut(TyxDataType(N::U8));
        ASSERT_TRUE(built) << code;
        // The reader marks every table as per band.
        const TyxLutDesc expected(built->buffer(), built->dataType(), built->numEntriesPerBand(),
                                  built->minIndex(), built->numBands(), false);
        const auto read = readText(writeText(*built));
        ASSERT_TRUE(read) << code;
        EXPECT_EQ(*read, expected) << code;
    }
}

TEST(TyxLutIOTest, MalformedFilesPostTheirMessageAtTheirLine)
{
    const struct {
        const wchar_t *text;
        const wchar_t *message;
        int line;
    } cases[] = {
        {L"", L"Unable to find the begin-of-header token '{'.", 1},
        {L"{\n type l }", L"Failed parsing for '='. Previous token: 'type'.", 2},
        {L"{\n type =", L"Missing value for keyword 'type'.", 2},
        {L"{ tables = 1\n tables = 1 }", L"Multiple 'tables' keyword definitions", 2},
        {L"{ tables = 0 }", L"Invalid value, 0, for keyword 'tables'", 1},
        {L"{ channels = -2 }", L"Invalid value, -2, for keyword 'channels'", 1},
        {L"{ type = l\n colour = red }", L"Unknown header section token 'colour'.", 2},
        {L"{ type = l }", L"Missing required 'channel' keyword", 1},
        {L"{ channels = 2 tables = 3 }", L"Number of tables, 3, does not equal number of channels, 2", 1},
        {L"{ channels = 1 length = 1 } 1 $", L"Missing required 'type' keyword", 1},
        {L"{ type = l channels = 1 }", L"Missing required 'length' keyword", 1},
        {L"{ type = l channels = 1 length = 2 2 }", L"Expected 1 length value(s); got 2 length value(s)", 1},
        {L"{ type = l channels = 0 length = 2 }", L"Expected 0 length value(s); got 1 length value(s)", 1},
        {L"{ type = b tables = 1 length = 2 zeroOffset = 0 }",
         L"ZeroOffset keyword is only valid when type is 'l'", 1},
        {L"{ type = l tables = 2 length = 1 1 zeroOffset = 0 }",
         L"Expected 2 zero offset value(s); got 1 value(s)", 1},
        {L"{ type = x tables = 1 length = 1 }",
         L"Invalid type value, x Valid types are 'l' for LUT and 'b' for breakpoint", 1},
        {L"{ type = l channels = 1 length = 2 }\n", L"Missing lut out value", 2},
        {L"{ type = l channels = 2 length = 2 2 }\n1 2 $\n3\n", L"Missing lut value", 4},
        {L"{ type = l channels = 1 length = 2 }\n1\n2\n3 $",
         L"Failed to find expected end of data section symbol, $", 4},
        {L"{ type = l channels = 1 length = 1 dataType = I64 } 1 $", L"Invalid data type.", 1},
        {L"{ type = l channels = 2 length = 300000000 1 } 1 $",
         L"The total number of bytes required for the LUT exceeds the valid maximum of 4294967295.", 1},
        {L"{ type = l channels = 1 length = 4000000000 } 1 $",
         L"Invalid value, -294967296, for keyword 'length'", 1},
        {L"{ type = l channels = 1 length = 500000000 } 1 $", L"Missing lut value", 1},
        {L"{ type = l channels = 2 length = 1 1 zeroOffset = -2147483648 2147483647 } 1 $ 2 $",
         L"The total number of bytes required for the LUT exceeds the valid maximum of 4294967295.", 1},
        {L"{ type = b tables = 1 length = 2 }\n0 0\n$", L"Missing 'in' breakpoint value", 3},
        {L"{ type = b tables = 1 length = 2 }\n0 0\n5", L"Missing 'out' breakpoint value", 3},
        {L"{ type = b tables = 1 length = 1 } 0 0 1 1 $",
         L"Failed to find expected end of data section symbol, $", 1},
        {L"{ type = b tables = 1 length = 2 } 0 0 255 9 $\n extra",
         L"Found unexpected token, extra, at end of data section", 2},
        {L"{ type = b tables = 1 length = 2 } 0 0 2000000000 300 $",
         L"The total number of bytes required for the LUT exceeds the valid maximum of 4294967295.", 1},
        {L"{ type = b tables = 1 length = 1 } 0 0 $", L"Band 0 does not have at least two break points.", 1},
    };
    for (const auto &c : cases) {
        HandlerScope scope;
        int line = -1;
        EXPECT_FALSE(readText(c.text, &line)) << c.text;
        EXPECT_EQ(scope.onlyText(), c.message) << c.text;
        EXPECT_EQ(line, c.line) << c.text;
        for (const TyxTextMsg &m : scope.handler->messages)
            EXPECT_EQ(m.type(), TyxTextMsg::Error);
    }
}

TEST(TyxLutIOTest, FailedReadThrowsWithTheDefaultHandlerAndLeavesTheStream)
{
    std::wistringstream stream(L"{ type = l channels = 1 length = 2 } 1 $");
    EXPECT_THROW(TyxLutIO::readCommon(stream), TyxTextMsg);

    // A failed read leaves the stream at the failing token.
    HandlerScope scope;
    stream.clear();
    stream.str(L"{ type = l channels = 1 length = 1 } 1 2 $ rest");
    EXPECT_EQ(TyxLutIO::readCommon(stream), nullptr);
    std::wstring rest;
    std::getline(stream, rest);
    EXPECT_EQ(rest, L" $ rest");
}

} // namespace
