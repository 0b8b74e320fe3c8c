// Tests of the Base64 coder.
#include <tyx/TyxBase64.h>

#include <gtest/gtest.h>

#include <random>

namespace {

using tyx::TyxBase64;

std::vector<uint8_t> bytesOf(std::string_view text) { return std::vector<uint8_t>(text.begin(), text.end()); }

TEST(TyxBase64Test, RfcVectorsBothWays)
{
    const struct {
        const char *plain;
        const char *encoded;
    } cases[] = {{"", ""},
                 {"f", "Zg=="},
                 {"fo", "Zm8="},
                 {"foo", "Zm9v"},
                 {"foob", "Zm9vYg=="},
                 {"fooba", "Zm9vYmE="},
                 {"foobar", "Zm9vYmFy"}};
    for (const auto &c : cases) {
        std::string text = "old";
        EXPECT_TRUE(TyxBase64::encode(bytesOf(c.plain), text).empty());
        EXPECT_EQ(text, c.encoded);
        std::vector<uint8_t> bytes{9};
        EXPECT_TRUE(TyxBase64::decode(std::string_view(c.encoded), bytes).empty());
        EXPECT_EQ(bytes, bytesOf(c.plain)) << c.encoded;
        EXPECT_TRUE(TyxBase64::decode(tyx::TyxString(tyx::fromUTF8(c.encoded)), bytes).empty());
        EXPECT_EQ(bytes, bytesOf(c.plain)) << c.encoded;
    }
}

TEST(TyxBase64Test, RandomRoundTripsOfEveryLengthAndLineBreaksAnywhere)
{
    std::mt19937 random(7);
    for (size_t length = 0; length <= 300; ++length) {
        std::vector<uint8_t> bytes(length);
        for (auto &b : bytes)
            b = static_cast<uint8_t>(random());
        std::string text;
        ASSERT_TRUE(TyxBase64::encode(bytes, text).empty());
        EXPECT_EQ(text.size(), TyxBase64::encodedSize(length));
        std::vector<uint8_t> back;
        ASSERT_TRUE(TyxBase64::decode(text, back).empty()) << length;
        EXPECT_EQ(back, bytes) << length;
        // Broken into lines of 76, as mail does, it decodes the same.
        ASSERT_TRUE(TyxBase64::encode(bytes, text, 76).empty());
        back.clear();
        ASSERT_TRUE(TyxBase64::decode(text, back).empty()) << length;
        EXPECT_EQ(back, bytes) << length;
    }
    // Line breaks are skipped anywhere, also before the padding.
    std::vector<uint8_t> bytes;
    EXPECT_TRUE(TyxBase64::decode(std::string_view("\r\nZm\n9vYm\r\nFy\n"), bytes).empty());
    EXPECT_EQ(bytes, bytesOf("foobar"));
    EXPECT_TRUE(TyxBase64::decode(std::string_view("Zm8\n=\n"), bytes).empty());
    EXPECT_EQ(bytes, bytesOf("fo"));
    std::string text;
    TyxBase64::encode(bytesOf("foobar"), text, 3);
    EXPECT_EQ(text, "Zm9\nvYm\nFy");
}

TEST(TyxBase64Test, BadTextIsRefusedWithItsPlaceAndLeavesTheOutput)
{
    const struct {
        std::string_view text;
        const wchar_t *message;
    } cases[] = {
        {"Zm9v YmFy", L"Invalid Base64 character ' ' at offset 4."},
        {"Zm9\tv", L"Invalid Base64 character U+9 at offset 3."},
        {"Zm9vY", L"Truncated Base64 group: the text ends after 1 of 4 characters."},
        {"Zg=", L"Truncated Base64 group: the text ends after 3 of 4 characters."},
        {"Z===", L"Misplaced Base64 padding at offset 1."},
        {"=Zg=", L"Misplaced Base64 padding at offset 0."},
        {"Zg=a", L"Misplaced Base64 padding at offset 2."},
        {"Zg==Zm9v", L"Base64 text continues after the padding at offset 4."},
    };
    for (const auto &c : cases) {
        std::vector<uint8_t> bytes{1, 2};
        const tyx::TyxTextMsg msg = TyxBase64::decode(c.text, bytes);
        EXPECT_EQ(msg.text(), c.message) << c.text;
        EXPECT_EQ(msg.type(), tyx::TyxTextMsg::Error);
        EXPECT_EQ(bytes, (std::vector<uint8_t>{1, 2}));
    }
    std::vector<uint8_t> bytes;
    EXPECT_EQ(TyxBase64::decode(std::wstring_view(L"Zm\u00e9v"), bytes).text(),
              L"Invalid Base64 character U+E9 at offset 2.");
    std::string text = "kept";
    EXPECT_EQ(TyxBase64::encode(nullptr, 3, text).text(), L"No data to encode: a null pointer with 3 bytes.");
    EXPECT_EQ(text, "kept");
}

} // namespace
