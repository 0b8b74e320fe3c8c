#include <tyx/TyxKeyedObject.h>

#include <gtest/gtest.h>

namespace {

using tyx::TyxKey;
using tyx::TyxKeyedObject;

TEST(TyxKeyedObjectTest, EqualNamesCompareEqualWhateverTheKeys)
{
    EXPECT_EQ(TyxKeyedObject(TyxKey(1), L"name"), TyxKeyedObject(TyxKey(2), L"name"));
    EXPECT_NE(TyxKeyedObject(TyxKey(1), L"name"), TyxKeyedObject(TyxKey(1), L"Name"));
    // Names are kept as given, blanks included.
    EXPECT_NE(TyxKeyedObject(TyxKey(1), L" a"), TyxKeyedObject(TyxKey(1), L"a"));
    EXPECT_EQ(TyxKeyedObject(L" counted ").name(), L" counted ");
}

TEST(TyxKeyedObjectTest, EmptyNamesTakeTheKeyAndTheCounterCountsOn)
{
    EXPECT_EQ(TyxKeyedObject(TyxKey(17), L"").name(), L"17");
    EXPECT_EQ(TyxKeyedObject(TyxKey(), L"").name(), L"4294967295");
    const TyxKeyedObject first(L"");
    const TyxKeyedObject second(L"second");
    EXPECT_TRUE(first.key().isValid());
    EXPECT_EQ(first.name(), static_cast<tyx::TyxString>(first.key()));
    EXPECT_EQ(second.key().value(), first.key().value() + 1);
}

} // namespace
