// Keys and keyed objects: counting, names and text forms.
#include <tyx/TyxKey.h>
#include <tyx/TyxKeyedObject.h>

#include <sstream>

#include <gtest/gtest.h>

namespace {

using namespace tyx;

TEST(TyxKeyTest, CountingTextFormsAndKeyedObjectNames)
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

    EXPECT_EQ(static_cast<TyxString>(TyxKey(42)), L"42");
    EXPECT_EQ(static_cast<TyxString>(TyxKey()), L"4294967295");
    TyxKey read;
    std::istringstream in("123");
    in >> read;
    EXPECT_EQ(read, 123u);
    std::istringstream bad("x");
    bad >> read;
    EXPECT_FALSE(read.isValid());

    // Keyed objects: equal names compare equal whatever the keys; empty names take the key.
    EXPECT_EQ(TyxKeyedObject(TyxKey(1), L"name"), TyxKeyedObject(TyxKey(2), L"name"));
    EXPECT_NE(TyxKeyedObject(TyxKey(1), L"name"), TyxKeyedObject(TyxKey(1), L"Name"));
    // Names are kept as given, blanks included.
    EXPECT_NE(TyxKeyedObject(TyxKey(1), L" a"), TyxKeyedObject(TyxKey(1), L"a"));

    EXPECT_EQ(TyxKeyedObject(TyxKey(17), L"").name(), L"17");
    EXPECT_EQ(TyxKeyedObject(TyxKey(), L"").name(), L"4294967295");
    // The counter counts on for each object made without a key.
    const TyxKeyedObject first(L"");
    const TyxKeyedObject second(L"second");
    EXPECT_TRUE(first.key().isValid());
    EXPECT_EQ(first.name(), static_cast<TyxString>(first.key()));
    EXPECT_EQ(second.key().value(), first.key().value() + 1);
}

} // namespace
