// String lists: search, insertion, sorting and the text form.
#include <gtest/gtest.h>

#include <tyx/TyxStrList.h>

#include <sstream>

namespace {

using namespace tyx;

TEST(TyxStrListTest, FindReturnsLastMatch)
{
    const TyxStrList list{L"a", L"B", L"a"};
    EXPECT_EQ(list.find(L"a", false), 2u);
    EXPECT_EQ(list.find(L"b", false), TyxStrList::INVALID_INDEX());
    EXPECT_EQ(list.find(L"b", true), 1u);
    EXPECT_TRUE(list.contains(L"A", true));
    EXPECT_FALSE(list.contains(L"A", false));
}

TEST(TyxStrListTest, InsertGrowsAndAppendsOutOfRangeAndRemoveTakesEveryMatch)
{
    TyxStrList list;
    list.insert(5, L"b");
    EXPECT_EQ(list.capacity(), 10u);
    list.insert(0, L"a");
    list.insert(2, L"c");
    EXPECT_EQ(list, (TyxStrList{L"a", L"b", L"c"}));
    // Remove takes every exact match.
    list.insert(0, L"b");
    list.insert(0, L"B");
    list.remove(L"b");
    EXPECT_EQ(list, (TyxStrList{L"B", L"a", L"c"}));
}

TEST(TyxStrListTest, SortByUnitOrLoweredText)
{
    TyxStrList list{L"b", L"C", L"a"};
    list.sort(false, false);
    EXPECT_EQ(list, (TyxStrList{L"C", L"a", L"b"}));
    list.sort(false, true);
    EXPECT_EQ(list, (TyxStrList{L"a", L"b", L"C"}));
    list.sort(true, true);
    EXPECT_EQ(list, (TyxStrList{L"C", L"b", L"a"}));
}

TEST(TyxStrListTest, JoinAndTextForm)
{
    const TyxStrList list{L"a", L"b"};
    EXPECT_EQ(list.toString(L" + "), L"a + b");
    EXPECT_EQ(static_cast<TyxString>(list), L"(a,b)");
    EXPECT_EQ(TyxStrList(L"(a,b)", L",", false), list);
    EXPECT_EQ(TyxStrList(L"a,,b", L",", true).size(), 3u);
    EXPECT_EQ(TyxStrList().toString(L","), L"");
    EXPECT_EQ(static_cast<TyxString>(TyxStrList()), L"");
}

TEST(TyxStrListTest, StreamRoundTrips)
{
    const TyxStrList list{L"été", L"", L"x y"};
    std::wostringstream wideOut;
    wideOut << list;
    EXPECT_EQ(wideOut.str(), L"(été,,x y)");
    std::wistringstream wideIn(wideOut.str() + L"\n");
    TyxStrList back;
    wideIn >> back;
    EXPECT_EQ(back, list);

    std::ostringstream narrowOut;
    narrowOut << list;
    EXPECT_EQ(narrowOut.str(), "(\xC3\xA9t\xC3\xA9,,x y)");

    std::wistringstream emptyLine(L"\n");
    emptyLine >> back;
    EXPECT_TRUE(back.isEmpty());
}

} // namespace
