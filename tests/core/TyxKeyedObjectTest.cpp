#include <tyx/TyxKeyedObject.h>

#include <gtest/gtest.h>

namespace {

using tyx::TyxKey;
using tyx::TyxKeyedObject;

TEST(TyxKeyedObjectTest, EqualNamesCompareEqualWhateverTheKeys)
{
    const TyxKeyedObject a(TyxKey(1), L"name");
    const TyxKeyedObject b(TyxKey(2), L"name");
    EXPECT_EQ(a, b);
    EXPECT_NE(a, TyxKeyedObject(TyxKey(1), L"Name"));
}

TEST(TyxKeyedObjectTest, NamesAreKeptAndEmptyNamesTakeTheKey)
{
    EXPECT_EQ(TyxKeyedObject(TyxKey(1), L" padded ").name(), L" padded ");
    EXPECT_EQ(TyxKeyedObject(L" counted ").name(), L" counted ");
    EXPECT_NE(TyxKeyedObject(TyxKey(1), L" a"), TyxKeyedObject(TyxKey(1), L"a"));
    EXPECT_EQ(TyxKeyedObject(TyxKey(17), L"").name(), L"17");
    EXPECT_EQ(TyxKeyedObject(TyxKey(), L"").name(), L"4294967295");
    const TyxKeyedObject counted(L"");
    EXPECT_EQ(counted.name(), static_cast<tyx::TyxString>(counted.key()));
}

TEST(TyxKeyedObjectTest, CounterGivesSuccessiveValidKeys)
{
    const TyxKeyedObject first(L"first");
    const TyxKeyedObject second(L"second");
    EXPECT_TRUE(first.key().isValid());
    EXPECT_EQ(second.key().value(), first.key().value() + 1);
}

} // namespace
