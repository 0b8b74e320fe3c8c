// Tests of property descriptions, their collections and meta objects.
#include <tyx/TyxMetaObjectImpl.h>
#include <tyx/TyxMetaProperties.h>
#include <tyx/TyxMetaProperty.h>

#include <gtest/gtest.h>

#include <sstream>

namespace {

using namespace tyx;

TyxMetaPropertyPtr makeProperty(const TyxString &name, unsigned flags = 0)
{
    return TyxMetaPropertyPtr(new TyxMetaProperty(name, TyxMetaType::Int, TyxMetaFlag(flags)));
}

TEST(TyxMetaPropertyTest, StreamFormRoundTripsAndDamagedFormFails)
{
    TyxMetaProperty property(L"size", TyxMetaType::Int, TyxMetaFlag(0x0009u), L"Size", L"pixels", L's');
    property.setData(TyxVariant(7));
    std::wostringstream os;
    os << property;
    EXPECT_EQ(os.str(), L"(size,Size,Int,(ReadOnly | Required),pixels,s,Int,7)");

    std::wistringstream is(os.str());
    TyxMetaProperty read;
    is >> read;
    EXPECT_FALSE(is.fail());
    EXPECT_EQ(read, property);

    // Equality takes in the data too.
    read.setData(TyxVariant(8));
    EXPECT_NE(read, property);

    // An empty label becomes the trimmed name.
    const TyxMetaProperty unlabelled(L"  width ", TyxMetaType::Int);
    EXPECT_EQ(unlabelled.name(), L"width");
    EXPECT_EQ(unlabelled.label(), L"width");

    std::wistringstream damaged(L"(size,Size,Int");
    TyxMetaProperty partial;
    damaged >> partial;
    EXPECT_TRUE(damaged.fail());
    EXPECT_EQ(partial.name(), L"size");
}

TEST(TyxMetaPropertiesTest, AppendInheritanceOrderAndCounts)
{
    TyxMetaPropertiesPtr grand(new TyxMetaProperties(L"Grand", TyxMetaPropertiesPtr()));
    grand->append(makeProperty(L"g"));
    TyxMetaPropertiesPtr parent(new TyxMetaProperties(L"Base", grand));
    const TyxMetaPropertyPtr first = makeProperty(L"p", TyxMetaFlag::ReadOnly);
    EXPECT_EQ(parent->append(first), 0);
    EXPECT_EQ(parent->append(makeProperty(L"p")), 1);
    EXPECT_EQ(parent->property(L"p").get(), first.get());
    TyxMetaProperties child(L"Derived", parent);
    EXPECT_EQ(child.append(makeProperty(L"c1", TyxMetaFlag::ReadOnly)), 0);
    EXPECT_EQ(child.append(makeProperty(L"C1")), 0); // names differ in case only
    EXPECT_FALSE(child.property(L"b"));

    EXPECT_EQ(child.propertyNames(true), (TyxStrList{L"g", L"p", L"c1", L"C1"}));
    EXPECT_EQ(child.propertyNames(false), (TyxStrList{L"c1", L"C1"}));
    EXPECT_EQ(child.propertyNames(true, true), (TyxStrList{L"g", L"c1", L"C1"}));
    // The size takes in one parent level only.
    EXPECT_EQ(child.size(true), 3u);
    EXPECT_EQ(child.numProperties(true), 2u);
    EXPECT_TRUE(child.contains(L"p"));
    EXPECT_FALSE(child.contains(L"p", false));
    EXPECT_EQ(child.indexOf(L"P", true), 1u);
    EXPECT_EQ(child.indexOf(L"P", false), TyxMetaProperties::INVALID_INDEX());

    TyxStrList walked;
    for (auto it = child.begin(); it != child.end(); ++it)
        walked.push_back((*it)->name());
    EXPECT_EQ(walked, (TyxStrList{L"g", L"p", L"c1", L"C1"}));

    // Equality is by the identity of the properties.
    const TyxMetaProperties copy = *grand;
    EXPECT_EQ(copy, *grand);
    TyxMetaProperties same(L"Grand", TyxMetaPropertiesPtr());
    same.append(makeProperty(L"g"));
    EXPECT_NE(same, *grand);
}

// A small class and its description.
struct Gauge : public TyxObject {
    double level = 1.5;
};

class GaugeMetaObj : public TyxMetaObjectImpl<GaugeMetaObj, Gauge> {
public:
    using TyxMetaObjectImpl::TyxMetaObjectImpl;
    void initProperties() override
    {
        beginProperties(L"Gauge");
        addProperty(
            TyxMetaProperty(L"level", TyxMetaType::Double),
            [](GaugeMetaObj &m, const TyxVariant &v) { return take(v, m.object()->level) ? 0 : 1; },
            [](GaugeMetaObj &m, TyxVariant &v) { return (v = m.object()->level), 0; });
    }
};

// A gauge with an alarm level: its meta object inherits the gauge's.
struct AlarmGauge : public Gauge {
    double alarm = 9.0;
};

class AlarmGaugeMetaObj : public TyxMetaObjectImpl<AlarmGaugeMetaObj, AlarmGauge> {
public:
    using TyxMetaObjectImpl::TyxMetaObjectImpl;
    TyxMetaObjectPtr superClass() override { return TyxMetaObjectPtr(new GaugeMetaObj(object())); }
    void initProperties() override
    {
        beginProperties(L"AlarmGauge", GaugeMetaObj::classProperties());
        addProperty(
            TyxMetaProperty(L"alarm", TyxMetaType::Double, TyxMetaFlag::Required),
            [](AlarmGaugeMetaObj &m, const TyxVariant &v) { return take(v, m.object()->alarm) ? 0 : 1; },
            [](AlarmGaugeMetaObj &m, TyxVariant &v) { return (v = m.object()->alarm), 0; });
    }
};

TEST(TyxMetaObjectTest, InheritedPropertiesGoToTheSuperClassAndBadOnesAreRefused)
{
    AlarmGauge gauge;
    TyxMetaObjectPtr meta(new AlarmGaugeMetaObj(&gauge));
    EXPECT_EQ(meta->properties()->propertyNames(), (TyxStrList{L"level", L"alarm"}));
    EXPECT_EQ(meta->setProperty(L"level", TyxVariant(L"2.25")), 0);
    EXPECT_EQ(meta->setProperty(L"alarm", TyxVariant(7)), 0);
    EXPECT_DOUBLE_EQ(gauge.level, 2.25);
    EXPECT_DOUBLE_EQ(gauge.alarm, 7.0);
    EXPECT_EQ(meta->setProperty(L"Level", TyxVariant(3.0)), 1);
    EXPECT_EQ(meta->setProperty(L"level", TyxVariant(L"three")), 1);
    EXPECT_DOUBLE_EQ(gauge.level, 2.25);

    TyxVariant value(42);
    EXPECT_EQ(meta->getProperty(L"nothing", value), 1);
    EXPECT_EQ(value.value<int>(), 42);
    EXPECT_EQ(meta->getProperty(L"level", value), 0);
    EXPECT_DOUBLE_EQ(value.value<double>(), 2.25);
}

TEST(TyxMetaObjectTest, PropertyDescribesItselfAndTakesAnUnknownTypeAsInvalid)
{
    TyxMetaProperty property(L"size", TyxMetaType::Int);
    TyxMetaObjectPtr meta = property.metaObject();
    EXPECT_EQ(meta->setProperty(L"flags", TyxVariant(L"(Required | Hidden)")), 0);
    EXPECT_EQ(property.flags().value(), 0x0048u);
    TyxVariant flags;
    EXPECT_EQ(meta->getProperty(L"flags", flags), 0);
    EXPECT_EQ(flags.value<TyxString>(), L"(Required | Hidden)");
    EXPECT_EQ(meta->setProperty(L"type", TyxVariant(L"NoSuchType")), 0);
    EXPECT_EQ(property.type(), TyxMetaType::Invalid);
}

} // namespace
