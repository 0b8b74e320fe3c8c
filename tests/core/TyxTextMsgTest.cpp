// Messages, their text form, posting and the library manager.
#include <gtest/gtest.h>

#include <tyx/TyxCoreLibMgr.h>
#include <tyx/TyxTextHandler.h>
#include <tyx/TyxTextMsg.h>

#include "TyxRecordingHandler.h"
#include "TyxStreamText.h"

namespace {

using namespace tyx;
using namespace tyx::test;

// A unit that is not a Unicode scalar value sends only its own piece of the
// narrow form into the byte-per-unit fallback; the rest stays UTF-8.
TEST(TyxTextMsgTest, UserTypeDecidesTheSeverityAndLabelAndEachPieceIsEncodedByItself)
{
    const struct {
        const wchar_t *text;
        const wchar_t *file;
        int code;
        TyxTextMsg::Code type;
        const char *form;
    } cases[] = {
        {L"\u00E9", L"F", 0, TyxTextMsg::Error, "error: \xC3\xA9 - (F : 2)"},
        {L"\u00E9", L"F", 1, TyxTextMsg::Warning, "warning: \xC3\xA9 - (F : 2)"},
        {L"\u00E9", L"F", 2, TyxTextMsg::Info, "info: \xC3\xA9 - (F : 2)"},
        {L"\u00E9", L"F", 3, TyxTextMsg::Debug, "debug: \xC3\xA9 - (F : 2)"},
        {L"\u00E9", L"F", 4, TyxTextMsg::User, "user: \xC3\xA9 - (F : 2)"},
        {L"\u00E9", L"F", -1, TyxTextMsg::User, "user: \xC3\xA9 - (F : 2)"},
        {L"bad \xD8E9", L"\u00E9.cpp", 0, TyxTextMsg::Error, "error: bad \xE9 - (\xC3\xA9.cpp : 2)"},
        {L"\u00E9", L"\xDCE9.cpp", 0, TyxTextMsg::Error, "error: \xC3\xA9 - (\xE9.cpp : 2)"},
        {L"\x110041", L"F", 0, TyxTextMsg::Error, "error: A - (F : 2)"},
    };
    for (const auto &c : cases) {
        const TyxTextMsg message(c.text, c.file, 2, c.code);
        EXPECT_EQ(message.type(), c.type) << c.code;
        EXPECT_EQ(streamed<char>(message), c.form);
    }
    EXPECT_EQ(streamed(TyxTextMsg(L"Bad value", L"src/Parser", 48, TyxTextMsg::Error)),
              L"error: Bad value - (Parser : 48)");
    // The source file is cut to its bare name at either slash.
    EXPECT_EQ(TyxTextMsg(L"t", L"/a\\b/c\\File", 1, 0).srcFname(), L"File");
    EXPECT_EQ(TyxTextMsg(L"t", L"", 1, 0).srcFname(), L"");
    EXPECT_TRUE(streamed(TyxTextMsg(L"", L"F", 2, TyxTextMsg::Error)).empty());
}

TEST(TyxTextMsgTest, EqualityWhatSetTextAppendAndClear)
{
    TyxTextMsg a(L"\u5730\u56F3", L"F", 3, TyxTextMsg::Warning);
    TyxTextMsg b(a);
    EXPECT_STREQ(a.what(), "\xE5\x9C\xB0\xE5\x9B\xB3");
    EXPECT_EQ(a, b);
    b.setVerbose(true);
    EXPECT_NE(a, b);

    TyxTextMsg message(L"a", L"F", 1, TyxTextMsg::Info);
    message.setVerbose(true);
    message.setText(L"b", TyxTextMsg::Error);
    EXPECT_FALSE(message.isVerbose());
    EXPECT_EQ(message.srcFname(), L"<filename unknown>");
    EXPECT_EQ(message.srcLine(), 0);
    message.appendText(L"c");
    EXPECT_EQ(message.text(), L"bc");
    EXPECT_EQ(message.type(), TyxTextMsg::Error);
    message.clear();
    EXPECT_EQ(message, TyxTextMsg());
}

TEST(TyxTextMsgTest, PostedErrorsAreThrownOnlyWithoutAHandlerAndAlwaysRecorded)
{
    const TyxTextMsg error(L"it failed", L"Here.cpp", 12, TyxTextMsg::Error);
    try {
        postMessage(error);
        FAIL() << "the default handler did not throw";
    } catch (const TyxTextMsg &thrown) {
        EXPECT_EQ(thrown, error);
    }
    EXPECT_EQ(lastError(), error);
    EXPECT_NO_THROW(postMessage(TyxTextMsg(L"just saying", TyxTextMsg::Warning)));
    EXPECT_EQ(lastError(), error);

    HandlerScope scope;
    const TyxTextMsg recorded(L"recorded", L"There.cpp", 5, TyxTextMsg::Error);
    EXPECT_NO_THROW(postMessage(recorded));
    postMessage(TyxTextMsg(L"note", TyxTextMsg::Info));
    ASSERT_EQ(scope.messages().size(), 2u);
    EXPECT_EQ(scope.messages()[0], recorded);
    EXPECT_EQ(lastError(), recorded);
}

TEST(TyxCoreLibMgrTest, InitializeInstallsOnlyOnce)
{
    TyxCoreLibMgr &manager = TyxCoreLibMgr::instance();
    EXPECT_FALSE(manager.isInitialized());
    TyxSmartPtr<RecordingHandler> first(new RecordingHandler);
    TyxSmartPtr<RecordingHandler> second(new RecordingHandler);
    EXPECT_EQ(manager.initialize(TyxTextHandlerPtr(first.get())), 0);
    EXPECT_EQ(manager.initialize(TyxTextHandlerPtr(second.get())), 0);
    EXPECT_TRUE(manager.isInitialized());
    EXPECT_EQ(manager.textHandler().get(), first.get());
    manager.deInitialize();
    EXPECT_FALSE(manager.isInitialized());
    EXPECT_NE(manager.textHandler().get(), first.get());
    EXPECT_THROW(postMessage(TyxTextMsg(L"x", TyxTextMsg::Error)), TyxTextMsg);
}

} // namespace
