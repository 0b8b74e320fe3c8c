// Tests of object documents and the object streams.
#include <tyx/TyxObjectProxy.h>

#include <gtest/gtest.h>

#include <memory>
#include <sstream>

#include <tyx/TyxBuffer.h>
#include <tyx/TyxDataType.h>
#include <tyx/TyxMetaObjectImpl.h>
#include <tyx/TyxMetaProperty.h>
#include <tyx/TyxNumValidator.h>
#include <tyx/TyxObjectFactory.h>
#include <tyx/TyxSimpleStream.h>

namespace {

using namespace tyx;

// A class with validated, nested and binary properties.
class Probe : public TyxObject {
public:
    TyxString className() const override { return L"Probe"; }
    TyxMetaObjectConstPtr metaObject() const override;

    int count = 0;
    TyxString label;
    TyxValidatorConstPtr limit;
    TyxMetaProperty shape;
    TyxBufferPtr blob;
    TyxDataType kind;
};

class ProbeMeta : public TyxMetaObjectImpl<ProbeMeta, Probe> {
public:
    using TyxMetaObjectImpl::TyxMetaObjectImpl;

    // Adds \p property read and written straight from the data member \p Member.
    template <auto Member>
    void addMember(const TyxMetaProperty &property, const TyxValidator *validator = nullptr)
    {
        addProperty(
            property, [](ProbeMeta &m, const TyxVariant &v) { return take(v, m.object()->*Member) ? 0 : 1; },
            [](ProbeMeta &m, TyxVariant &v) { return (v = TyxVariant(m.object()->*Member)), 0; }, validator);
    }

    void initProperties() override
    {
        beginProperties(L"Probe");
        const TyxNumValidator<int> range(0x05, 0, 10);
        addMember<&Probe::count>(TyxMetaProperty(L"count", TyxMetaType::Int, TyxMetaFlag(), L"Count"),
                                 &range);
        addMember<&Probe::label>(TyxMetaProperty(L"label", TyxMetaType::String, TyxMetaFlag(), L"Label"));
        addMember<&Probe::limit>(TyxMetaProperty(
            L"limit", internal::TyxVariantTraits<TyxValidatorConstPtr>::type(), TyxMetaFlag(), L"Limit"));
        addMember<&Probe::shape>(TyxMetaProperty(
            L"shape", internal::TyxVariantTraits<TyxMetaProperty>::type(), TyxMetaFlag(), L"Shape"));
        addMember<&Probe::blob>(TyxMetaProperty(L"blob", TyxMetaType::BufferPtr, TyxMetaFlag(), L"Blob"));
        addMember<&Probe::kind>(TyxMetaProperty(L"kind", TyxMetaType::DataType, TyxMetaFlag(), L"Kind"));
    }
};

TyxMetaObjectConstPtr Probe::metaObject() const
{
    return TyxMetaObjectConstPtr(new ProbeMeta(const_cast<Probe *>(this)));
}

const bool probeRegistered =
    TyxObjectFactory::registerFactory(TyxObjectFactoryPtr(new TyxObjectFactoryImpl<Probe>(L"Probe"))) == 0;

Probe filledProbe()
{
    Probe probe;
    probe.count = 7;
    probe.label = L"hello";
    probe.limit = TyxValidatorConstPtr(new TyxNumValidator<double>(0x06, 0.5, 2.5));
    probe.shape =
        TyxMetaProperty(L"width", TyxMetaType::UInt16, TyxMetaFlag(0x0008), L"Width", L"in pixels", L'w');
    probe.shape.setData(TyxVariant(uint16_t(640)));
    const TyxNumValidator<int> range(0x05, 1, 4096);
    probe.shape.setValidator(&range);
    static uint8_t bytes[] = {250, 251, 252, 253, 254};
    probe.blob = TyxBufferPtr(new TyxBuffer(sizeof bytes, bytes, false));
    probe.kind = TyxDataType(TyxNumericType::U16);
    return probe;
}

TyxObjectProxy documentOf(const TyxObject &object)
{
    TyxObjectProxy document;
    EXPECT_TRUE(TyxObjectProxy::fromObject(object, document).empty());
    return document;
}

TEST(TyxObjectProxyTest, NestedObjectsRoundTripThroughJsonAndXml)
{
    ASSERT_TRUE(probeRegistered);
    const Probe probe = filledProbe();
    const TyxObjectProxy original = documentOf(probe);
    ASSERT_EQ(original.size(), 6u);
    EXPECT_EQ(original.property(L"limit").value<TyxObjectProxy>().objectClassName(), L"TyxNumValidator");

    for (const auto format : {TyxSimpleStream::Xml, TyxSimpleStream::Json}) {
        const TyxSimpleStream stream(format);
        std::stringstream text;
        ASSERT_TRUE(stream.write(text, probe).empty());
        TyxObject *made = nullptr;
        const TyxTextMsg msg = stream.readObject(text, made);
        ASSERT_TRUE(msg.empty()) << msg.what() << "\n" << text.str();
        const std::unique_ptr<TyxObject> owner(made);
        auto *back = dynamic_cast<Probe *>(made);
        ASSERT_TRUE(back);
        // JSON keeps no types: the free-typed "data" comes back as an Int.
        if (format == TyxSimpleStream::Json) {
            EXPECT_EQ(back->shape.data().type(), TyxMetaType::Int);
            back->shape.setData(probe.shape.data());
        }
        EXPECT_TRUE(documentOf(*back) == original) << text.str();
    }
}

TEST(TyxObjectProxyTest, RefusedDocumentsSayWhereAndLeaveTheTargetUnchanged)
{
    const TyxObjectProxy good = documentOf(filledProbe());
    auto with = [&](const TyxString &name, const TyxVariant &value) {
        TyxObjectProxy document = good;
        document.setProperty(name, value);
        return document;
    };
    TyxObjectProxy otherClass = good;
    otherClass.setObjectClassName(L"Other");

    const struct {
        TyxObjectProxy document;
        const wchar_t *message;
    } cases[] = {
        {with(L"count", TyxVariant(11)),
         L"Property 'count' of class 'Probe' refused the value: The value of '11' is not within [0, 10]."},
        // The last property is refused by its setter: all set before it go back.
        {with(L"kind", TyxVariant(L"Q")), L"Property 'kind' of class 'Probe' did not accept the value 'Q'."},
        {with(L"colour", TyxVariant(1)), L"Unknown property 'colour' of class 'Probe'."},
        {with(L"limit", TyxVariant(TyxObjectProxy(L"Nobody"))),
         L"In property 'limit' of class 'Probe': No factory is registered for class 'Nobody'."},
        {with(L"limit", TyxVariant(TyxObjectProxy(L"TyxMetaProperty"))),
         L"Property 'limit' of class 'Probe' cannot hold an object of class 'TyxMetaProperty'."},
        {with(L"blob", TyxVariant(L"AQ=")),
         L"Property 'blob' of class 'Probe': Truncated Base64 group: the text ends after 3 of 4 characters."},
        {otherClass, L"A document of class 'Other' cannot be applied to an object of class 'Probe'."},
        {with(L"count", TyxVariant(TyxObjectProxy(L"Probe"))),
         L"Property 'count' of class 'Probe' does not hold objects."},
    };
    for (const auto &c : cases) {
        Probe target = filledProbe();
        target.count = 2;
        target.label = L"before";
        const TyxObjectProxy before = documentOf(target);
        EXPECT_EQ(c.document.applyTo(target).text(), c.message);
        EXPECT_TRUE(documentOf(target) == before) << c.message;
    }
}

TEST(TyxObjectProxyTest, BadStreamsSayWhat)
{
    const struct {
        TyxSimpleStream::Format format;
        const char *text;
        const wchar_t *message;
    } cases[] = {
        {TyxSimpleStream::Json, R"({"class":"Probe","properties":{"count":-1}})",
         L"Property 'count' of class 'Probe' refused the value: The value of '-1' is not within [0, 10]."},
        {TyxSimpleStream::Json, R"({"properties":{}})", L"A document needs the member \"class\"."},
        {TyxSimpleStream::Json, R"({"class":"Probe","extra":1})", L"Unknown member 'extra' in a document."},
        {TyxSimpleStream::Json, R"([1])",
         L"A document is a map with the members \"class\" and \"properties\", not a "
         L"TyxVariantList."},
        {TyxSimpleStream::Xml, R"(<object class="Probe"><variant type="Int">1</variant></object>)",
         L"A property of an <object> has no key at line 1."},
        {TyxSimpleStream::Xml, R"(<variant type="Int">1</variant>)",
         L"Expected an <object> element, found <variant> at line 1."},
    };
    for (const auto &c : cases) {
        std::istringstream is(c.text);
        Probe untouched;
        TyxObject *made = &untouched;
        EXPECT_EQ(TyxSimpleStream(c.format).readObject(is, made).text(), c.message) << c.text;
        EXPECT_EQ(made, &untouched);
    }
}

} // namespace
