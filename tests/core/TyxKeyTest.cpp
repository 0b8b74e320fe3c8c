#include <tyx/TyxKey.h>

#include <sstream>

#include <gtest/gtest.h>

namespace {

using tyx::TyxKey;

TEST(TyxKeyTest, CountingSkipsTheInvalidValue)
{
    TyxKey key(0xFFFFFFFEu);
    ++key;
    EXPECT_EQ(key, 0u);
    EXPECT_TRUE(key.isValid());
    const TyxKey before = key++;
    EXPECT_EQ(before, 0u);
    EXPECT_EQ(key, 1u);

    TyxKey invalid;
    EXPECT_FALSE(invalid.isValid());
    EXPECT_EQ(++invalid, TyxKey(0));
    key.invalidate();
    EXPECT_EQ(key, TyxKey());
    EXPECT_NE(key, 1u);
}

TEST(TyxKeyTest, TextForms)
{
    EXPECT_EQ(static_cast<tyx::TyxString>(TyxKey(42)), L"42");
    EXPECT_EQ(static_cast<tyx::TyxString>(TyxKey()), L"4294967295");
    std::wostringstream wide;
    wide << TyxKey(7);
    EXPECT_EQ(wide.str(), L"7");

    TyxKey read;
    std::istringstream in("123");
    in >> read;
    EXPECT_EQ(read, 123u);
    std::istringstream bad("x");
    bad >> read;
    EXPECT_FALSE(read.isValid());
}

} // namespace
