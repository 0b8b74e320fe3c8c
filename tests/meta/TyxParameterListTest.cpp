// Tests of parameters and the resolution of cross references.
#include <tyx/TyxMetaProperties.h>
#include <tyx/TyxParameterList.h>

#include <gtest/gtest.h>

#include <sstream>

namespace {

using namespace tyx;

TyxParameterPtr value(const TyxString &name, int v)
{
    return TyxParameterPtr(new TyxParameter(name, TyxVariant(v), false));
}
TyxParameterPtr ref(const TyxString &name, const TyxString &target)
{
    return TyxParameterPtr(new TyxParameter(name, target));
}

TEST(TyxParameterTest, StreamFormAndMetaObject)
{
    TyxParameter p(L"n", TyxVariant(3), false);
    std::wostringstream os;
    os << p;
    EXPECT_EQ(os.str(), L"(n,Int,3,(n,n,Int,(Editable),," + TyxString(1, L'\0') + L",, ))");
    TyxMetaObjectPtr meta = p.metaObject();
    EXPECT_EQ(meta->properties()->propertyNames(), (TyxStrList{L"cross_ref", L"value", L"properties"}));
    EXPECT_EQ(meta->setProperty(L"cross_ref", TyxVariant(L"m")), 0);
    EXPECT_EQ(p.crossRef(), L"m");
    EXPECT_EQ(meta->setProperty(L"properties", TyxVariant(7)), 1);
    EXPECT_EQ(p.properties().name(), L"n");
}

TEST(TyxParameterListTest, InsertPositionsRenameAndMembership)
{
    TyxParameterList list(L"inner");
    EXPECT_EQ(list.insertParm(value(L"a", 1)), 0);
    EXPECT_EQ(list.insertParm(value(L"b", 2)), 0);
    EXPECT_EQ(list.insertParm(value(L"c", 3), 99), 0);
    EXPECT_EQ(list.insertParm(value(L"d", 4), -1), 0);
    EXPECT_EQ(list.insertParm(value(L"e", 5), 1), 0);
    EXPECT_EQ(list.parmNames(), (TyxStrList{L"a", L"e", L"b", L"c", L"d"}));
    EXPECT_EQ(list.insertParm(value(L"a", 9)), 1);
    EXPECT_EQ(list.parmValue(L"a").value<int>(), 1);
    // A rename keeps the position and refuses a taken or unknown name.
    EXPECT_EQ(list.renameParm(L"e", L"c"), 1);
    EXPECT_EQ(list.renameParm(L"x", L"y"), 1);
    EXPECT_EQ(list.renameParm(L"e", L"z"), 0);
    EXPECT_EQ(list.parmNames(), (TyxStrList{L"a", L"z", L"b", L"c", L"d"}));

    TyxParameterList other(L"other");
    const TyxParameterPtr b = list.parameter(L"b");
    EXPECT_EQ(b->parent(), &list);
    EXPECT_EQ(other.insertParm(b), 1);
    EXPECT_EQ(list.removeParm(L"b").get(), b.get());
    EXPECT_EQ(b->parent(), nullptr);
    EXPECT_EQ(other.insertParm(b), 0);
    EXPECT_FALSE(list.removeParm(L"b"));
}

TEST(TyxParameterListTest, ReferencesResolveTwoListsUpAndCyclesEndInAnInvalidVariant)
{
    // Enclosing lists are shared through pointers, so they live on the heap.
    TyxParameterList inner(L"inner");
    auto *middle = new TyxParameterList(L"middle");
    auto *outer = new TyxParameterList(L"outer");
    const std::vector<TyxParameterListConstPtr> scope{TyxParameterListConstPtr(middle),
                                                      TyxParameterListConstPtr(outer)};
    inner.insertParm(ref(L"x", L"y"));
    inner.insertParm(ref(L"gain", L"gain"));
    inner.insertParm(ref(L"a", L"b"));
    inner.insertParm(ref(L"b", L"a"));
    inner.insertParm(TyxParameterPtr(new TyxParameter(L"e", TyxVariant(3), true)));
    outer->insertParm(value(L"y", 5));
    outer->insertParm(value(L"gain", 7));
    outer->insertParm(value(L"w", 9));
    EXPECT_EQ(inner.parmValue(L"x", scope).value<int>(), 5);
    EXPECT_EQ(inner.parmValue(L"gain", scope).value<int>(), 7);
    EXPECT_EQ(inner.parmValue(L"w", scope).value<int>(), 9); // not here: looked up outwards
    EXPECT_FALSE(inner.parmValue(L"x").isValid());
    EXPECT_FALSE(inner.parmValue(L"missing", scope).isValid());
    EXPECT_FALSE(inner.parmValue(L"e").isValid());
    EXPECT_FALSE(inner.parmValue(L"a").isValid());
    // a -> b -> a closes the loop here; the search for "a" moves outwards.
    outer->insertParm(value(L"a", 4));
    EXPECT_EQ(inner.parmValue(L"a", scope).value<int>(), 4);
    EXPECT_FALSE(inner.parmValue(L"b", scope).isValid());
}

TEST(TyxParameterListTest, CopyIsDeep)
{
    TyxParameterList list(L"l");
    list.insertParm(value(L"a", 1));
    list.insertParm(value(L"b", 2));
    TyxParameterList copy(list);
    EXPECT_TRUE(copy == list);
    EXPECT_NE(copy.parameter(L"a").get(), list.parameter(L"a").get());
    EXPECT_EQ(copy.parameter(L"a")->parent(), &copy);
    copy.parameter(L"a")->setValue(TyxVariant(8));
    EXPECT_FALSE(copy == list);
    EXPECT_EQ(list.parmValue(L"a").value<int>(), 1);
}

} // namespace
