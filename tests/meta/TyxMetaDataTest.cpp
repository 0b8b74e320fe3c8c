// Tests of metadata trees: paths, repeating groups, lazy reading.
#include <tyx/TyxCoreLibMgr.h>
#include <tyx/TyxMetaData.h>
#include <tyx/TyxTextHandler.h>
#include <tyx/TyxTextMsg.h>
#include <tyx/internal/TyxMetaDataSegmentedPath.h>

#include <gtest/gtest.h>

#include "TyxRecordingHandler.h"

namespace {

using namespace tyx;
using tyx::internal::TyxMetaDataSegmentedPath;

TEST(TyxMetaDataSegmentedPathTest, SegmentsIndexesAndTrailingSlash)
{
    const TyxMetaDataSegmentedPath path(L" /a// b [12] /x[3]");
    ASSERT_EQ(path.size(), 3u);
    EXPECT_EQ(path[0].name, L"a");
    EXPECT_EQ(path[1].fullName, L"b [12]");
    EXPECT_EQ(path[1].index, 12u);
    EXPECT_FALSE(path.namesSubset());
    EXPECT_TRUE(TyxMetaDataSegmentedPath(L" / ").isRoot());
    EXPECT_TRUE(TyxMetaDataSegmentedPath(L"//").empty());
    EXPECT_EQ(TyxMetaDataSegmentedPath(L"x[]")[0].name, L"x[]");
    EXPECT_EQ(TyxMetaDataSegmentedPath(L"x[a]")[0].index, TyxMetaDataSegmentedPath::NO_INDEX);
}

TEST(TyxMetaDataTest, IndexedWritesPushBackSubsetPathsAndCaseKeepingTheFirstSpelling)
{
    TyxMetaData md;
    EXPECT_EQ(md.setValue(L"a/b[3]", TyxVariant(1)), 0);
    const TyxMetaDataField &field = md.field(L"a/b");
    ASSERT_EQ(field.size(), 4u);
    EXPECT_FALSE(field[0].isValid());
    EXPECT_EQ(md.value(L"A/B[3]").value<int>(), 1);
    EXPECT_FALSE(md.value(L"a/b[9]").isValid());
    EXPECT_EQ(md.setValue(L"A/B", TyxVariant(2)), 0);
    EXPECT_EQ(md.root().subsetNames(), (TyxStrList{L"a"}));
    EXPECT_EQ(md.root().subset(L"a").fieldNames(), (TyxStrList{L"b"}));
    EXPECT_EQ(md.value(L"a/b").value<int>(), 2);

    EXPECT_EQ(md.pushBack(L"c/d", TyxVariant(10)), 0);
    EXPECT_EQ(md.value(L"c/d[0]").value<int>(), 10);
    EXPECT_TRUE(md.push_back(L"c/d", TyxVariant(12)));
    EXPECT_EQ(md.size(L"c/d"), 2u);

    EXPECT_FALSE(md.value(L"a/b/").isValid());
    const TyxVariant group = md.get(L"a/");
    EXPECT_EQ(group.value<TyxMetaData>().value(L"b").value<int>(), 2);
    EXPECT_EQ(group.value<TyxMetaData>().name(), L"a");
    EXPECT_FALSE(md.get(L"a/zz").isValid());
    EXPECT_TRUE(md.isPath(L"a/"));
    EXPECT_FALSE(md.isField(L"a/"));
}

TEST(TyxMetaDataTest, BadInputChangesNothing)
{
    TyxMetaData md;
    EXPECT_EQ(md.setValue(L"a/b", TyxVariant()), 1);
    EXPECT_EQ(md.setValue(L"", TyxVariant(1)), 1);
    EXPECT_EQ(md.setValue(L"a/", TyxVariant(1)), 1);
    EXPECT_TRUE(md.empty());
    md.setValue(L"f", TyxVariant(1));
    // A field cannot be stepped through as if it were a set.
    EXPECT_EQ(md.setValue(L"f/g", TyxVariant(2)), 1);
    EXPECT_FALSE(md.value(L"f/g").isValid());
    EXPECT_FALSE(md.value(L"nothing/here").isValid());
    EXPECT_EQ(&md.value(L"nothing"), &TyxMetaData::EMPTY_VARIANT());
    EXPECT_FALSE(md.remove(L"x/f"));
    // An index far past the values would fill memory with the gap.
    EXPECT_EQ(md.setValue(L"a/b[444444444444]", TyxVariant(1)), 1);
    EXPECT_EQ(md.pushBack(L"f[1048578]", TyxVariant(1)), 1);
    EXPECT_FALSE(md.exists(L"a/b"));
    EXPECT_EQ(md.size(L"f"), 1u);
    // Deep paths take the general route and the same bound.
    EXPECT_EQ(md.setValue(L"1/2/3/4/5/6/7/8/9/10/11/12/13/14/15/16/17/x[1048577]", TyxVariant(1)), 1);
    EXPECT_EQ(md.setValue(L"1/2/3/4/5/6/7/8/9/10/11/12/13/14/15/16/17/x[1048576]", TyxVariant(1)), 0);
    EXPECT_EQ(md.size(L"1/2/3/4/5/6/7/8/9/10/11/12/13/14/15/16/17/x"), 1048577u);
}

TEST(TyxMetaDataTest, RepeatingGroupsWithIndexNames)
{
    TyxMetaData md;
    for (int i = 0; i < 102; ++i) {
        TyxMetaData one{TyxMetaDataSet(L"band")};
        one.setValue(L"index", TyxVariant(i));
        EXPECT_EQ(md.pushBack(L"bands/band", TyxVariant(one.root())), 0);
    }
    EXPECT_EQ(md.value(L"bands/band[100]/index").value<int>(), 100);
    TyxStrList repeating;
    for (auto it = md.begin(L"bands/").paths().repeating(); it != md.end(); ++it)
        repeating.push_back(*it);
    ASSERT_EQ(repeating.size(), 102u);
    EXPECT_EQ(repeating[0], L"bands/band[0]/");
    EXPECT_EQ(repeating[101], L"bands/band[101]/");
}

TEST(TyxMetaDataTest, RemoveRenameAndIteration)
{
    TyxMetaData md;
    md.setValue(L"g/x", TyxVariant(1));
    md.setValue(L"g/y", TyxVariant(2));
    md.setValue(L"g/s/z", TyxVariant(3));
    md.setValue(L"top", TyxVariant(4));
    TyxStrList shallow;
    for (auto it = md.begin(L"g").norecurse(); it != md.end(); ++it)
        shallow.push_back(*it);
    EXPECT_EQ(shallow, (TyxStrList{L"g/x", L"g/y"}));

    TyxMetaDataSet &g = md.root().rsubset(L"G");
    EXPECT_EQ(g.renameField(L"x", L"y"), 1);
    EXPECT_EQ(g.renameField(L"x", L"w"), 0);
    EXPECT_EQ(g.fieldNames(), (TyxStrList{L"w", L"y"}));
    EXPECT_EQ(md.value(L"g/w").value<int>(), 1);
    EXPECT_EQ(g.renameSubset(L"s", L"t"), 0);
    EXPECT_TRUE(md.remove(L"g/w"));
    EXPECT_FALSE(md.isField(L"g/w"));
    EXPECT_TRUE(md.remove(L"g/t"));
    EXPECT_FALSE(md.isPath(L"g/t/"));
    EXPECT_EQ(md.toVariantMap().size(), 2u);
    md.fromVariantMap(md.toVariantMap());
    EXPECT_TRUE(md.empty());
}

TEST(TyxMetaDataTest, ValueValidators)
{
    EXPECT_TRUE(TyxMetaData::isValidCharVariant(L"c", TyxVariant(L'x')));
    EXPECT_FALSE(TyxMetaData::isValidCharVariant(L"c", TyxVariant(L"xy")));
    EXPECT_TRUE(TyxMetaData::isValidIntegerVariant(L"i", TyxVariant(10), 0, 10));
    EXPECT_FALSE(TyxMetaData::isValidIntegerVariant(L"i", TyxVariant(L"seven"), 0, 10));
    EXPECT_FALSE(TyxMetaData::isValidIntegerVariant(L"i", TyxVariant(11), 0, 10));
    EXPECT_FALSE(TyxMetaData::isValidDoubleVariant(L"d", TyxVariant(3.5), 0, 3));
    EXPECT_TRUE(TyxMetaData::isValidDoubleVariantList(
        L"l", TyxVariant(TyxVariantList{TyxVariant(1.0), TyxVariant(2)})));
    EXPECT_FALSE(TyxMetaData::isValidDoubleVariantList(L"l", TyxVariant(TyxVariantList{TyxVariant(L"x")})));
}

// Fills a set with one field and one subset, counting its calls; its reads
// answer status.
class CountingReader : public TyxMetaDataReader {
public:
    explicit CountingReader(int answer = 0) : status(answer) {}
    int fieldReads = 0;
    int subsetReads = 0;
    bool ready = true;
    int status = 0;
    int readFields(TyxMetaDataSet &set) override
    {
        ++fieldReads;
        set.appendFieldValue(L"width", TyxVariant(640));
        return status;
    }
    int readSubsets(TyxMetaDataSet &set) override
    {
        ++subsetReads;
        set.rsubset(L"crs").appendFieldValue(L"name", TyxVariant(L"WGS 84"));
        return status;
    }
    bool canRead() const override { return ready; }
};

TEST(TyxMetaDataSetTest, ReaderFillsOnceOnDemandNotReadyIsAskedLaterAndFailureIsPostedUnlessQuiet)
{
    auto *reader = new CountingReader;
    TyxMetaData md;
    md.root().setReader(TyxMetaDataReaderPtr(reader));
    EXPECT_EQ(md.value(L"width").value<int>(), 640);
    EXPECT_EQ(md.value(L"crs/name").value<TyxString>(), L"WGS 84");
    md.root().fieldNames();
    md.root().readAll();
    EXPECT_EQ(reader->fieldReads, 1);
    EXPECT_EQ(reader->subsetReads, 1);

    auto *late = new CountingReader;
    TyxMetaDataSet set(L"s");
    set.setReader(TyxMetaDataReaderPtr(late));
    late->ready = false;
    EXPECT_FALSE(set.containsField(L"width"));
    late->ready = true;
    EXPECT_TRUE(set.containsField(L"width"));
    EXPECT_EQ(late->fieldReads, 1);

    tyx::test::HandlerScope scope;
    const auto &messages = scope.messages();
    auto *failing = new CountingReader(1);
    TyxMetaData scene;
    scene.root().setName(L"scene");
    scene.root().setReader(TyxMetaDataReaderPtr(failing));
    EXPECT_FALSE(scene.value(L"depth").isValid());
    // A field is looked for, then a group of that name: both kinds are read.
    ASSERT_EQ(messages.size(), 2u);
    EXPECT_EQ(messages[0].text(), L"The fields of the metadata set 'scene' could not be read.");
    EXPECT_EQ(messages[1].text(), L"The subsets of the metadata set 'scene' could not be read.");
    EXPECT_FALSE(scene.value(L"depth").isValid());
    EXPECT_EQ(messages.size(), 2u); // asked once only
    EXPECT_EQ(failing->fieldReads, 1);

    TyxMetaData quietOne;
    quietOne.quiet(true);
    failing = new CountingReader(1);
    quietOne.root().setReader(TyxMetaDataReaderPtr(failing));
    EXPECT_FALSE(quietOne.value(L"a/b").isValid());
    EXPECT_EQ(messages.size(), 2u);
}

TEST(TyxMetaDataSetTest, CopiesShareContents)
{
    TyxMetaDataSet a(L"a");
    const TyxMetaDataSet b = a;
    a.appendFieldValue(L"x", TyxVariant(1));
    EXPECT_TRUE(b.containsField(L"X"));
    EXPECT_EQ(a, b);
    EXPECT_EQ(a.removeField(L"nothing"), 1);
    EXPECT_EQ(a.removeField(L"X"), 0);
    EXPECT_TRUE(b.empty());
}

} // namespace
