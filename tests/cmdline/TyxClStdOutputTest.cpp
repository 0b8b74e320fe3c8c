#include <gtest/gtest.h>

#include <sstream>

#include <tyx/TyxClParser.h>
#include <tyx/TyxClUnlabeledArg.h>
#include <tyx/TyxClValueArg.h>

#include "TyxClTestOutput.h"

using namespace tyx;
using tyx::test::prop;

namespace {

// Required and optional values, a required unlabeled argument and long
// descriptions; the example's usage text shows the switch, the list and the
// exclusive pair, the argument tests the IDs of the other kinds.
struct EveryKind {
    explicit EveryKind(bool helpAndVersion = true)
        : parser(L"Copies the bands of one image into another, converting the samples on the way.", L"4.1.0",
                 L' ', helpAndVersion)
    {
        parser.setOutput(TyxClOutputIFPtr(output.get()));
        parser.add(new TyxClValueArg(
            prop(L'i', L"input", L"path", TyxMetaType::String, TyxMetaFlag::Required, L"Image to read")));
        parser.add(new TyxClValueArg(prop(L'o', L"output", L"path", TyxMetaType::String, 0,
                                          L"Image to write; without it the result replaces the input, which "
                                          L"is only allowed for images on a writable disk, tape or stick")));
        parser.add(new TyxClUnlabeledArg(
            prop(0, L"format", L"format", TyxMetaType::String, TyxMetaFlag::Required, L"Output format")));
    }
    TyxString run(std::vector<TyxString> args)
    {
        args.insert(args.begin(), L"copy");
        parser.parse(args);
        return output->text();
    }
    TyxClParser parser;
    TyxSmartPtr<test::RecordingOutput> output{new test::RecordingOutput()};
};

const wchar_t *const shortLine = L"   copy  [-h] [-v] -i <path> [-o <path>] <format>\n";

TEST(TyxClStdOutputTest, UsageText)
{
    EveryKind e;
    const TyxString expected = TyxString(L"\nUSAGE: \n\n") + shortLine +
                               L"\n\nWhere: \n\n"
                               L"   -h,  --help\n"
                               L"     Displays usage information and exits\n"
                               L"\n"
                               L"   -v,  --version\n"
                               L"     Displays version information and exits\n"
                               L"\n"
                               L"   -i <path>,  --input <path>\n"
                               L"     (required)  Image to read\n"
                               L"\n"
                               L"   -o <path>,  --output <path>\n"
                               L"     Image to write; without it the result replaces the input, which is\n"
                               L"     only allowed for images on a writable disk, tape or stick\n"
                               L"\n"
                               L"   <format>\n"
                               L"     (required)  Output format\n"
                               L"\n"
                               L"   Copies the bands of one image into another, converting the samples on\n"
                               L"   the way.\n"
                               L"\n";
    EXPECT_EQ(e.run({L"--help"}), expected);
}

TEST(TyxClStdOutputTest, FailureTextsWithAndWithoutHelp)
{
    EveryKind e;
    EXPECT_EQ(e.run({}), TyxString(L"PARSE ERROR: Required arguments missing: input, format\n"
                                   L"Brief USAGE: \n") +
                             shortLine +
                             L"\nFor complete USAGE and HELP type: \n"
                             L"   copy --help\n");
    // Without help the whole usage follows.
    EveryKind bare(false);
    const TyxString text = bare.run({L"tif", L"-i"});
    EXPECT_EQ(text.substr(0, text.find(L"Where")),
              L"PARSE ERROR: Missing a value for this argument: -i <path>,  --input <path>\n"
              L"\nUSAGE: \n\n"
              L"   copy  -i <path> [-o <path>] <format>\n\n\n");
}

struct WrapCase {
    const wchar_t *text;
    int width;
    int indent;
    int offset;
    const wchar_t *expected;
};

TEST(TyxClStdOutputTest, SpacePrintBreaksAtBlankCommaOrBar)
{
    const WrapCase cases[] = {
        {L"exactly ten", 13, 2, 0, L"  exactly ten\n"},
        {L"aaa bbb ccc", 9, 2, 0, L"  aaa bbb\n  ccc\n"},
        {L"aaa,bbb,ccc", 9, 2, 2, L"  aaa,\n    bbb,\n    ccc\n"},
        {L"{-a|-b|-c}", 8, 1, 0, L" {-a|-b|\n -c}\n"},
        {L"abcdefghij", 5, 1, 0, L" abcd\n efgh\n ij\n"},
        {L"one\ntwo three four", 12, 2, 0, L"  one\n  two three\n  four\n"},
        {L"aa    bb", 5, 1, 0, L" aa\n bb\n"},
        {L"anything", 0, 2, 0, L"  anything\n"},
        {L"abc", 2, 5, 0, L"     a\n     b\n     c\n"},
    };
    for (const WrapCase &c : cases) {
        std::wostringstream os;
        TyxClStdOutput::spacePrint(os, c.text, c.width, c.indent, c.offset);
        EXPECT_EQ(os.str(), c.expected) << c.text;
    }
}

} // namespace
