#include <gtest/gtest.h>

#include <sstream>

#include <tyx/TyxClMultiSwitchArg.h>
#include <tyx/TyxClMultiUnlabeledArg.h>
#include <tyx/TyxClMultiValueArg.h>
#include <tyx/TyxClParser.h>
#include <tyx/TyxClSwitchArg.h>
#include <tyx/TyxClUnlabeledArg.h>
#include <tyx/TyxClValueArg.h>

#include "TyxClTestOutput.h"

using namespace tyx;
using tyx::test::prop;

namespace {

// One argument of every kind, an exclusive pair and a long description.
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
        parser.add(
            new TyxClSwitchArg(prop(L'q', L"quiet", TyxString(), TyxMetaType::Bool, 0, L"Print nothing")));
        parser.add(new TyxClMultiSwitchArg(
            prop(L'd', L"debug", TyxString(), TyxMetaType::UInt, 0, L"More detail each time it is given")));
        parser.add(new TyxClMultiValueArg(
            prop(L'b', L"band", L"index", TyxMetaType::Int, 0, L"Band to copy, from 0")));
        parser.xorAdd(new TyxClSwitchArg(prop(L'r', L"rgb", TyxString(), TyxMetaType::Bool,
                                              TyxMetaFlag::Required, L"Write three bands")),
                      new TyxClSwitchArg(prop(L'g', L"grey", TyxString(), TyxMetaType::Bool,
                                              TyxMetaFlag::Required, L"Write one band")));
        parser.add(new TyxClUnlabeledArg(
            prop(0, L"format", L"format", TyxMetaType::String, TyxMetaFlag::Required, L"Output format")));
        parser.add(new TyxClMultiUnlabeledArg(
            prop(0, L"extra", L"option", TyxMetaType::String, 0, L"Options passed to the writer")));
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

const wchar_t *const shortLine =
    L"   copy  {-r|-g} [-h] [-v] -i <path> [-o <path>] [-q] [-d ... ] [-b <index>\n"
    L"      ... ] <format> [<option> ...]\n";

TEST(TyxClStdOutputTest, UsageText)
{
    EveryKind e;
    const TyxString expected = TyxString(L"\nUSAGE: \n\n") + shortLine +
                               L"\n\nWhere: \n\n"
                               L"   -r,  --rgb\n"
                               L"     (OR required)  Write three bands\n"
                               L"         -- OR --\n"
                               L"   -g,  --grey\n"
                               L"     (OR required)  Write one band\n"
                               L"\n"
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
                               L"   -q,  --quiet\n"
                               L"     Print nothing\n"
                               L"\n"
                               L"   -d,  --debug (accepted multiple times)\n"
                               L"     More detail each time it is given\n"
                               L"\n"
                               L"   -b <index>,  --band <index> (accepted multiple times)\n"
                               L"     Band to copy, from 0\n"
                               L"\n"
                               L"   <format>\n"
                               L"     (required)  Output format\n"
                               L"\n"
                               L"   <option> (accepted multiple times)\n"
                               L"     Options passed to the writer\n"
                               L"\n"
                               L"   Copies the bands of one image into another, converting the samples on\n"
                               L"   the way.\n"
                               L"\n";
    const TyxString got = e.run({L"--help"});
    EXPECT_EQ(got, expected);
}

TEST(TyxClStdOutputTest, FailureTextWithHelp)
{
    EveryKind e;
    const TyxString expected = TyxString(L"PARSE ERROR: Required arguments missing: input, format\n"
                                         L"Brief USAGE: \n") +
                               shortLine +
                               L"\nFor complete USAGE and HELP type: \n"
                               L"   copy --help\n";
    const TyxString got = e.run({L"-g"});
    EXPECT_EQ(got, expected);
}

TEST(TyxClStdOutputTest, FailureWithoutHelpWritesWholeUsage)
{
    EveryKind e(false);
    const TyxString text = e.run({L"-r", L"tif", L"-i"});
    EXPECT_EQ(text.substr(0, text.find(L"Where")),
              L"PARSE ERROR: Missing a value for this argument: -i <path>,  --input <path>\n"
              L"\nUSAGE: \n\n"
              L"   copy  {-r|-g} -i <path> [-o <path>] [-q] [-d ... ] [-b <index> ... ]\n"
              L"      <format> [<option> ...]\n\n\n");
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
