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

TEST(TyxMetaPropertyTest, StreamFormRoundTrips)
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

    const TyxVariant held(property);
    EXPECT_EQ(held.value<TyxString>(), os.str());
    EXPECT_EQ(held.value<TyxMetaProperty>(), property);
    // Equality takes in every field.
    read.setDescription(L"other");
    EXPECT_NE(read, property);
    read = property;
    read.setData(TyxVariant(8));
    EXPECT_NE(read, property);

    // An empty label becomes the trimmed name.
    const TyxMetaProperty unlabelled(L"  width ", TyxMetaType::Int);
    EXPECT_EQ(unlabelled.name(), L"width");
    EXPECT_EQ(unlabelled.label(), L"width");
}

TEST(TyxMetaPropertyTest, DamagedStreamFormFails)
{
    std::wistringstream is(L"(size,Size,Int");
    TyxMetaProperty read;
    is >> read;
    EXPECT_TRUE(is.fail());
    EXPECT_EQ(read.name(), L"size");
}

TEST(TyxMetaPropertiesTest, AppendKeepsFirstOfOneName)
{
    TyxMetaProperties props(L"Thing", TyxMetaPropertiesPtr());
    const TyxMetaPropertyPtr first = makeProperty(L"a");
    EXPECT_EQ(props.append(first), 0);
    EXPECT_EQ(props.append(makeProperty(L"a")), 1);
    EXPECT_EQ(props.append(makeProperty(L"A")), 0);
    EXPECT_EQ(props.property(L"a").get(), first.get());
    EXPECT_EQ(props.size(), 2u);
    EXPECT_FALSE(props.property(L"b"));
}

TEST(TyxMetaPropertiesTest, InheritanceOrderAndCounts)
{
    TyxMetaPropertiesPtr parent(new TyxMetaProperties(L"Base", TyxMetaPropertiesPtr()));
    parent->append(makeProperty(L"p", TyxMetaFlag::ReadOnly));
    TyxMetaProperties child(L"Derived", parent);
    child.append(makeProperty(L"c1", TyxMetaFlag::ReadOnly));
    child.append(makeProperty(L"c2"));

    EXPECT_EQ(child.propertyNames(true), (TyxStrList{L"p", L"c1", L"c2"}));
    EXPECT_EQ(child.propertyNames(false), (TyxStrList{L"c1", L"c2"}));
    EXPECT_EQ(child.propertyNames(true, true), (TyxStrList{L"c1", L"c2"}));
    EXPECT_EQ(child.size(true), 3u);
    EXPECT_EQ(child.numProperties(true), 2u);
    EXPECT_TRUE(child.contains(L"p"));
    EXPECT_FALSE(child.contains(L"p", false));
    EXPECT_EQ(child.indexOf(L"P", true), 0u);
    EXPECT_EQ(child.indexOf(L"P", false), TyxMetaProperties::INVALID_INDEX());

    TyxStrList walked;
    for (auto it = child.begin(); it != child.end(); ++it)
        walked.push_back((*it)->name());
    EXPECT_EQ(walked, (TyxStrList{L"p", L"c1", L"c2"}));
}

TEST(TyxMetaPropertiesTest, SizeCountsOneParentLevel)
{
    TyxMetaPropertiesPtr grand(new TyxMetaProperties(L"G", TyxMetaPropertiesPtr()));
    grand->append(makeProperty(L"g"));
    TyxMetaPropertiesPtr parent(new TyxMetaProperties(L"P", grand));
    parent->append(makeProperty(L"p"));
    TyxMetaProperties child(L"C", parent);
    child.append(makeProperty(L"c"));
    EXPECT_EQ(child.size(true), 2u);
    EXPECT_EQ(child.propertyNames(true), (TyxStrList{L"g", L"p", L"c"}));
}

TEST(TyxMetaPropertiesTest, EqualityIsByPropertyIdentity)
{
    TyxMetaProperties a(L"T", TyxMetaPropertiesPtr());
    a.append(makeProperty(L"x"));
    const TyxMetaProperties copy = a;
    EXPECT_EQ(a, copy);
    TyxMetaProperties b(L"T", TyxMetaPropertiesPtr());
    b.append(makeProperty(L"x"));
    EXPECT_NE(a, b);
}

// A small class that describes itself.
class Gauge : public TyxObject {
public:
    double level = 1.5;
    TyxString unit = L"m";
    TyxMetaObjectConstPtr metaObject() const override;
    using TyxObject::metaObject;
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
        addProperty(
            TyxMetaProperty(L"unit"),
            [](GaugeMetaObj &m, const TyxVariant &v) { return take(v, m.object()->unit) ? 0 : 1; },
            [](GaugeMetaObj &m, TyxVariant &v) { return (v = m.object()->unit), 0; });
    }
};

TyxMetaObjectConstPtr Gauge::metaObject() const
{
    return TyxMetaObjectConstPtr(new GaugeMetaObj(const_cast<Gauge *>(this)));
}

TEST(TyxMetaObjectTest, SetsAndReadsPropertiesByNameAndRefusesBadOnes)
{
    Gauge gauge;
    TyxMetaObjectPtr meta = gauge.metaObject();
    EXPECT_EQ(meta->properties()->propertyNames(), (TyxStrList{L"level", L"unit"}));
    EXPECT_EQ(meta->setProperty(L"level", TyxVariant(L"2.25")), 0);
    EXPECT_DOUBLE_EQ(gauge.level, 2.25);
    EXPECT_EQ(meta->setProperty(L"Level", TyxVariant(3.0)), 1);
    EXPECT_EQ(meta->setProperty(L"level", TyxVariant(L"three")), 1);
    EXPECT_DOUBLE_EQ(gauge.level, 2.25);

    TyxVariant value(42);
    EXPECT_EQ(meta->getProperty(L"nothing", value), 1);
    EXPECT_EQ(value.value<int>(), 42);
    EXPECT_EQ(meta->getProperty(L"unit", value), 0);
    EXPECT_EQ(value.value<TyxString>(), L"m");
}

// A gauge with an alarm level: its meta object inherits the gauge's.
class AlarmGauge : public Gauge {
public:
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

TEST(TyxMetaObjectTest, InheritedPropertiesGoToTheSuperClass)
{
    AlarmGauge gauge;
    TyxMetaObjectPtr meta(new AlarmGaugeMetaObj(&gauge));
    EXPECT_EQ(meta->properties()->propertyNames(), (TyxStrList{L"level", L"unit", L"alarm"}));
    EXPECT_EQ(meta->setProperty(L"level", TyxVariant(4.0)), 0);
    EXPECT_EQ(meta->setProperty(L"alarm", TyxVariant(7)), 0);
    EXPECT_DOUBLE_EQ(gauge.level, 4.0);
    EXPECT_DOUBLE_EQ(gauge.alarm, 7.0);
    TyxVariant unit;
    EXPECT_EQ(meta->getProperty(L"unit", unit), 0);
    EXPECT_EQ(unit.value<TyxString>(), L"m");
}

TEST(TyxMetaObjectTest, PropertyDescribesItself)
{
    TyxMetaProperty property(L"size", TyxMetaType::Int);
    TyxMetaObjectPtr meta = property.metaObject();
    EXPECT_EQ(meta->properties()->propertyNames(),
              (TyxStrList{L"name", L"label", L"type", L"flags", L"description", L"command_flag", L"data",
                          L"validator"}));
    EXPECT_EQ(meta->properties()->property(L"command_flag")->label(), L"Command Flag");
    EXPECT_EQ(meta->setProperty(L"type", TyxVariant(L"Double")), 0);
    EXPECT_EQ(property.type(), TyxMetaType::Double);
    EXPECT_EQ(meta->setProperty(L"flags", TyxVariant(L"(Required | Hidden)")), 0);
    EXPECT_EQ(property.flags().value(), 0x0048u);
    TyxVariant flags;
    EXPECT_EQ(meta->getProperty(L"flags", flags), 0);
    EXPECT_EQ(flags.value<TyxString>(), L"(Required | Hidden)");
    EXPECT_EQ(meta->setProperty(L"type", TyxVariant(L"NoSuchType")), 0);
    EXPECT_EQ(property.type(), TyxMetaType::Invalid);
}

} // namespace
