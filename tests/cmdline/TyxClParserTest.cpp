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

// A parser whose errors reach the test as the returned message.
struct Fixture {
    explicit Fixture(wchar_t delimiter = L' ') : parser(L"test program", L"1.2", delimiter)
    {
        parser.setOutput(TyxClOutputIFPtr(output.get()));
    }
    TyxString run(std::vector<TyxString> args)
    {
        args.insert(args.begin(), L"prog");
        return parser.parse(args).text();
    }
    TyxClParser parser;
    TyxSmartPtr<test::RecordingOutput> output{new test::RecordingOutput()};
};

struct ErrorCase {
    std::vector<TyxString> args;
    const wchar_t *message;
};

// The example's command runs show the other messages; here each error is
// followed by a reset and a good line on the same parser.
TEST(TyxClParserTest, ErrorMessagesAndResetAfterThem)
{
    const ErrorCase cases[] = {
        {{}, L"Required argument missing: input"},
        {{L"-i", L"a", L"-i", L"b"}, L"Argument already set: -i <path>,  --input <path>"},
        {{L"-i", L"a", L"-xy"}, L"Mutually exclusive argument already set: -y,  --yes"},
    };
    for (const ErrorCase &c : cases) {
        Fixture f;
        TyxClValueArg *input =
            new TyxClValueArg(prop(L'i', L"input", L"path", TyxMetaType::String, TyxMetaFlag::Required));
        f.parser.add(input);
        f.parser.xorAdd(new TyxClSwitchArg(prop(L'x', L"xes")), new TyxClSwitchArg(prop(L'y', L"yes")));
        const TyxString message = f.run(c.args);
        EXPECT_EQ(message, c.message);
        EXPECT_NE(f.output->text().find(L"PARSE ERROR: " + TyxString(c.message) + L"\n"), TyxString::npos);
        EXPECT_EQ(f.output->exits(), 0);
        f.parser.reset();
        EXPECT_EQ(f.run({L"-i", L"in", L"-y"}), L"");
        EXPECT_EQ(input->variant().value<TyxString>(), L"in");
    }
}

TEST(TyxClParserTest, AddRejectsClashesAndLateUnlabeledAndParseThrowsWithoutHandling)
{
    Fixture f;
    EXPECT_EQ(thrownText([&] { f.parser.add(new TyxClSwitchArg(prop(L'k', L"help"))); }),
              L"Argument with same flag/name already exists: -k,  --help");
    EXPECT_EQ(thrownText([&] { f.parser.add(new TyxClSwitchArg(prop(L'h', L"hidden"))); }),
              L"Argument with same flag/name already exists: -h,  --hidden");
    f.parser.add(new TyxClUnlabeledArg(prop(0, L"first", L"one")));
    EXPECT_EQ(thrownText([&] { f.parser.add(new TyxClUnlabeledArg(prop(0, L"second", L"two"))); }),
              L"No more unlabeled arguments are allowed following an optional unlabeled arg: <two>");
    // Without exception handling parse errors are thrown, not written.
    f.parser.setExceptionHandling(false);
    EXPECT_THROW(f.run({L"a", L"b"}), TyxTextMsg);
    EXPECT_EQ(f.output->text(), L"");
}

TEST(TyxClParserTest, CombinedSwitchesSetEveryLetter)
{
    Fixture f;
    // A required switch given in a group counts as given.
    TyxClSwitchArg *a =
        new TyxClSwitchArg(prop(L'a', L"aa", TyxString(), TyxMetaType::Bool, TyxMetaFlag::Required));
    TyxClSwitchArg *b = new TyxClSwitchArg(prop(L'b', L"bb"));
    TyxClMultiSwitchArg *c = new TyxClMultiSwitchArg(prop(L'c', L"cc"));
    f.parser.add(a);
    f.parser.add(b);
    f.parser.add(c);
    EXPECT_EQ(f.run({L"-cab", L"-c"}), L"");
    EXPECT_TRUE(a->switchValue());
    EXPECT_TRUE(b->switchValue());
    EXPECT_EQ(c->switchValue(), 2u);
    f.parser.reset();
    EXPECT_EQ(f.run({L"-az"}), L"Couldn't find match for argument: -\az");
}

TEST(TyxClParserTest, DoubleDashStopsIgnorableArguments)
{
    Fixture f;
    TyxClSwitchArg *loose =
        new TyxClSwitchArg(prop(L'l', L"loose", TyxString(), TyxMetaType::Bool, TyxMetaFlag::Ignorable));
    TyxClMultiUnlabeledArg *rest = new TyxClMultiUnlabeledArg(prop(0, L"rest", L"word"));
    f.parser.add(loose);
    f.parser.add(rest);
    EXPECT_EQ(f.run({L"one", L"--", L"-l", L"two"}), L"");
    EXPECT_FALSE(loose->switchValue());
    const TyxVariantList words = rest->values();
    ASSERT_EQ(words.size(), 3u);
    EXPECT_EQ(words[1].value<TyxString>(), L"-l");
    f.parser.reset();
    EXPECT_EQ(f.run({L"-l", L"--ignore_rest", L"-l"}), L"");
    EXPECT_TRUE(loose->switchValue());
    ASSERT_EQ(rest->values().size(), 1u);
}

TEST(TyxClParserTest, ValuesWithDelimiterAndTheirDefaults)
{
    Fixture f(L'=');
    TyxClValueArg *size = new TyxClValueArg(prop(L's', L"size", L"n", TyxMetaType::Int), TyxVariant(3));
    TyxClMultiValueArg *tag = new TyxClMultiValueArg(prop(L't', L"tag", L"text"));
    f.parser.add(size);
    f.parser.add(tag);
    EXPECT_EQ(f.run({L"--size=12", L"-t=a=b", L"--tag=c d"}), L"");
    EXPECT_EQ(size->variant().value<int32_t>(), 12);
    ASSERT_EQ(tag->values().size(), 2u);
    EXPECT_EQ(tag->values()[0].value<TyxString>(), L"a=b");
    EXPECT_EQ(tag->values()[1].value<TyxString>(), L"c d");
    // A reset brings back the default.
    f.parser.reset();
    EXPECT_FALSE(size->isValueSet());
    EXPECT_EQ(size->variant().value<int32_t>(), 3);
    EXPECT_EQ(f.run({L"-s="}), L"Couldn't find delimiter for this argument: -s=<n>,  --size=<n>");
}

TEST(TyxClParserTest, ExclusiveGroupsRequiredOrOptional)
{
    Fixture f;
    TyxClValueArg *a =
        new TyxClValueArg(prop(L'a', L"alpha", TyxString(), TyxMetaType::String, TyxMetaFlag::Required));
    TyxClValueArg *b =
        new TyxClValueArg(prop(L'b', L"beta", TyxString(), TyxMetaType::String, TyxMetaFlag::Required));
    TyxClMultiValueArg *list = new TyxClMultiValueArg(prop(L'l', L"list"));
    f.parser.xorAdd(a, b);
    f.parser.xorAdd(list, new TyxClSwitchArg(prop(L'n', L"none")));
    // One member satisfies a required group; a list member may repeat.
    EXPECT_EQ(f.run({L"-b", L"x", L"-l", L"1", L"-l", L"2"}), L"");
    EXPECT_TRUE(a->isXorSet());
    EXPECT_FALSE(a->isValueSet());
    EXPECT_EQ(list->values().size(), 2u);
    f.parser.reset();
    EXPECT_EQ(
        f.run({L"-b", L"x", L"-n", L"-l", L"1"}),
        L"Mutually exclusive argument already set: -l <list>,  --list <list> (accepted multiple times)");
}

TEST(TyxClParserTest, HelpStopsTheParseThroughTheOutput)
{
    Fixture f;
    TyxClSwitchArg *after = new TyxClSwitchArg(prop(L'a', L"after"));
    f.parser.add(after);
    EXPECT_EQ(f.run({L"-h", L"-a"}), L"");
    EXPECT_EQ(f.output->exits(), 1); // with status 0: see the example's help run
    EXPECT_EQ(f.output->text().substr(0, 10), L"\nUSAGE: \n\n");
    EXPECT_FALSE(after->isValueSet());

    f.parser.reset();
    f.output->clear();
    f.parser.setExitOnHelp(false);
    EXPECT_EQ(f.run({L"--version"}), L"");
    EXPECT_EQ(f.output->exits(), 1);
    EXPECT_EQ(f.output->text(), L"\nprog  version: 1.2\n\n");
}

TEST(TyxClParserTest, UnlabeledTakesWhatNothingElseTook)
{
    Fixture f;
    TyxClUnlabeledArg *first =
        new TyxClUnlabeledArg(prop(0, L"first", TyxString(), TyxMetaType::Int, TyxMetaFlag::Required));
    f.parser.add(first);
    EXPECT_EQ(f.run({L"-z"}), L"Couldn't read argument value from string '-z': <first>");
    f.parser.reset();
    EXPECT_EQ(f.run({L"7", L"8"}), L"Couldn't find match for argument: 8");
    f.parser.reset();
    EXPECT_EQ(f.run({L"7"}), L"");
    EXPECT_EQ(first->variant().value<int32_t>(), 7);
}

} // namespace
