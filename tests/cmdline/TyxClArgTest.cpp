#include <gtest/gtest.h>

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
using tyx::test::thrownText;

namespace {

TEST(TyxClArgTest, BadFlagOrNameThrowsAtConstruction)
{
    EXPECT_EQ(thrownText([] { TyxClSwitchArg a(prop(L'-', L"x")); }),
              L"Argument flag cannot be either '-' or '--' or a space: -");
    EXPECT_EQ(thrownText([] { TyxClSwitchArg a(prop(L' ', L"x")); }),
              L"Argument flag cannot be either '-' or '--' or a space:  ");
    EXPECT_EQ(thrownText([] { TyxClValueArg a(prop(L'a', L"-x")); }),
              L"Argument name cannot begin with either '-' or '--' or space: -x");
}

struct IdCase {
    TyxClArgPtr arg;
    const wchar_t *shortId;
    const wchar_t *longId;
};

// The plain switch, value and list forms show in the example's usage text;
// those with a delimiter in the delimiter test of the parser.
TEST(TyxClArgTest, IdTexts)
{
    TyxClParser parser(L"ids"); // blank delimiter
    const IdCase cases[] = {
        {new TyxClSwitchArg(prop(0, L"fast")), L"--fast", L"--fast"},
        {new TyxClMultiSwitchArg(prop(L'f', L"fast")), L"-f ... ", L"-f,  --fast (accepted multiple times)"},
        {new TyxClUnlabeledArg(prop(0, L"file", L"path")), L"<path>", L"<path>"},
        {new TyxClMultiUnlabeledArg(prop(0, L"file", L"path")), L"<path> ...",
         L"<path> (accepted multiple times)"},
    };
    for (const IdCase &c : cases) {
        EXPECT_EQ(c.arg->shortID(), c.shortId);
        EXPECT_EQ(c.arg->longID(), c.longId);
    }
}

TEST(TyxClArgTest, ProcessingSwitchesAndRequiredLists)
{
    TyxClParser parser(L"process");
    // A switch takes the opposite of its default, once.
    TyxClSwitchArg on(prop(L'a', L"a"), true);
    std::vector<TyxString> args{L"--a"};
    int index = 0;
    EXPECT_TRUE(on.processArg(&index, args));
    EXPECT_FALSE(on.switchValue());
    EXPECT_EQ(thrownText([&] { on.processArg(&index, args); }), L"Argument already set: -a,  --a");

    // A required list stops being required after its first value.
    TyxClMultiValueArg list(prop(L'b', L"band", L"i", TyxMetaType::Int, TyxMetaFlag::Required));
    args = {L"-b", L"1"};
    index = 0;
    EXPECT_TRUE(list.processArg(&index, args));
    EXPECT_FALSE(list.isRequired());
    list.reset();
    EXPECT_TRUE(list.isRequired());
    EXPECT_TRUE(list.values().empty());
}

} // namespace
