// String lists: search, insertion, sorting and the text form.
#include <gtest/gtest.h>

#include <tyx/TyxStrList.h>

#include <sstream>

namespace {

using namespace tyx;

TEST(TyxStrListTest, FindReturnsLastMatchInsertAppendsOutOfRangeRemoveTakesEveryMatch)
{
    const TyxStrList list{L"a", L"B", L"a"};
    EXPECT_EQ(list.find(L"a", false), 2u);
    EXPECT_EQ(list.find(L"b", false), TyxStrList::INVALID_INDEX());
    EXPECT_EQ(list.find(L"b", true), 1u);
    EXPECT_TRUE(list.contains(L"A", true));
    EXPECT_FALSE(list.contains(L"A", false));

    TyxStrList grown;
    grown.insert(5, L"b");
    EXPECT_EQ(grown.capacity(), 10u);
    grown.insert(0, L"a");
    grown.insert(2, L"c");
    EXPECT_EQ(grown, (TyxStrList{L"a", L"b", L"c"}));
    grown.insert(0, L"b");
    grown.insert(0, L"B");
    grown.remove(L"b");
    EXPECT_EQ(grown, (TyxStrList{L"B", L"a", L"c"}));
}

TEST(TyxStrListTest, SortByUnitOrLoweredTextJoinAndTextForm)
{
    TyxStrList list{L"b", L"C", L"a"};
    list.sort(false, false);
    EXPECT_EQ(list, (TyxStrList{L"C", L"a", L"b"}));
    list.sort(false, true);
    EXPECT_EQ(list, (TyxStrList{L"a", L"b", L"C"}));
    list.sort(true, true);
    EXPECT_EQ(list, (TyxStrList{L"C", L"b", L"a"}));

    EXPECT_EQ(list.toString(L" + "), L"C + b + a");
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
