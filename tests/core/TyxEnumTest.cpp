#include <tyx/TyxEnum.h>
#include <tyx/TyxVariant.h>

#include <gtest/gtest.h>

namespace {

using namespace tyx;

TyxEnum colours()
{
    static const TyxEnum::Item items[] = {
        {2, L"Green"},
        {1, L"Red", TyxVariant(0.5)},
        {3, L"Blue"},
    };
    return TyxEnum(items, 3);
}

TEST(TyxEnumTest, InsertDropsTakenValuesAndNamesAndLookUpsIgnoreCase)
{
    TyxEnum e = colours();
    e.insert({1, L"Crimson"});
    e.insert({9, L"RED"});
    e.insert({4, L"Cyan"});
    EXPECT_EQ(e.size(), 4u);
    EXPECT_EQ(e.toString(1), L"Red");
    EXPECT_FALSE(e.isValid(9));
    EXPECT_EQ(e.allKeys(), (std::vector<TyxString>{L"Green", L"Red", L"Blue", L"Cyan"}));
    EXPECT_EQ(e.fromString(L"red"), 1);
    EXPECT_EQ(e.fromString(L"Purple"), TyxEnum::INVALID_ENUM());
    EXPECT_EQ(e.toString(7), L"");
    EXPECT_TRUE(e.isValid(L"green"));
    EXPECT_FALSE(e.isValid(L"Gree"));
    EXPECT_FALSE(TyxEnum().isValid(0));
}

TEST(TyxEnumTest, ItemDataAndComparisonByValuesOnly)
{
    TyxEnum e = colours();
    EXPECT_EQ(e.data(1).value<double>(), 0.5);
    EXPECT_FALSE(e.data(2).isValid());
    EXPECT_FALSE(e.data(42).isValid());
    e.setData(2, TyxVariant(L"leaf"));
    e.setData(42, TyxVariant(1));
    EXPECT_EQ(e.data(2).value<TyxString>(), L"leaf");
    EXPECT_FALSE(e.isValid(42));

    // A copy owns its own data.
    TyxEnum copy = e;
    copy.setData(2, TyxVariant(L"grass"));
    EXPECT_EQ(e.data(2).value<TyxString>(), L"leaf");
    EXPECT_EQ(copy.data(2).value<TyxString>(), L"grass");

    // Same values under other names; one value more; one value other.
    const auto numbered = [](std::initializer_list<int> values) {
        TyxEnum e;
        for (int value : values)
            e.insert({value, L"N" + std::to_wstring(value)});
        return e;
    };
    EXPECT_TRUE(colours() == numbered({1, 2, 3}));
    EXPECT_TRUE(colours() != numbered({1, 2, 3, 4}));
    EXPECT_TRUE(colours() != numbered({1, 2, 5}));
}

} // namespace
