// Tests of the number and enumeration validators and their factory.
#include <tyx/TyxEnumValidator.h>
#include <tyx/TyxMetaProperties.h>
#include <tyx/TyxNumValidator.h>
#include <tyx/TyxNumValidatorFactory.h>
#include <tyx/TyxTextMsg.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>

namespace {

using namespace tyx;

TEST(TyxNumValidatorTest, BoundsAndMessages)
{
    struct Case {
        uint8_t flags;
        double lower;
        double upper;
        double value;
        const wchar_t *message; // empty when the value is accepted
    };
    const Case cases[] = {
        {0x0A, 0, 10, 0, L"The value of '0.0' is not within (0, 10)."},
        {0x0A, 0, 10, 10, L"The value of '10.0' is not within (0, 10)."},
        {0x02, 0, 0, -1, L"The value of '-1.0' is not within (0, inf)."},
        {0x04, 0, 10, 11, L"The value of '11.0' is not within (-inf, 10]."},
        {0x0F, 5, 0, 1e9, L""},
        {0x07, 5, 10, 11, L"The value of '11.0' is not within [5, 10]."},
        {0x00, 5, 10, 11, L""},
        {0x01, 2.5, 0, 2.25, L"The value of '2.25' is not within [2.5, inf)."},
    };
    for (const Case &c : cases) {
        const TyxNumValidator<double> validator(c.flags, c.lower, c.upper);
        const bool accepted = *c.message == 0;
        TyxTextMsg msg;
        EXPECT_EQ(validator.isValid(TyxVariant(c.value), &msg), accepted) << int(c.flags) << " " << c.value;
        EXPECT_EQ(msg.text(), c.message);
        if (!accepted) {
            EXPECT_EQ(msg.type(), TyxTextMsg::Error);
        }
        EXPECT_EQ(validator.isValid(TyxVariant(c.value), nullptr), accepted);
    }

    // Integer bounds are written as integers; not a number is refused.
    const TyxNumValidator<unsigned char> eightBit(0x05, 1, 9);
    TyxTextMsg msg;
    EXPECT_FALSE(eightBit.isValid(TyxVariant(12), &msg));
    EXPECT_EQ(msg.text(), L"The value of '12' is not within [1, 9].");
    EXPECT_TRUE(eightBit.isValid(TyxVariant(L"9"), nullptr));
    const TyxNumValidator<double> inclusive(0x05, 0, 10);
    EXPECT_FALSE(inclusive.isValid(TyxVariant(std::numeric_limits<double>::quiet_NaN()), nullptr));
    const TyxNumValidator<float> exclusive(0x0A, 0, 10);
    EXPECT_FALSE(exclusive.isValid(TyxVariant(std::nanf("")), nullptr));
}

template <class T>
class TyxNumValidatorTypedTest : public ::testing::Test {
};
using SampleTypes = ::testing::Types<signed char, unsigned char, short, unsigned short, int, unsigned int,
                                     int64_t, uint64_t, float, double>;
TYPED_TEST_SUITE(TyxNumValidatorTypedTest, SampleTypes);

TYPED_TEST(TyxNumValidatorTypedTest, InclusiveEndsFactoryAndMetaObject)
{
    using T = TypeParam;
    const TyxNumValidator<T> validator(0x05, T(2), T(8));
    EXPECT_TRUE(validator.isValid(TyxVariant(2), nullptr));
    EXPECT_TRUE(validator.isValid(TyxVariant(8), nullptr));
    EXPECT_FALSE(validator.isValid(TyxVariant(9), nullptr));

    TyxVariantMap args;
    args[L"template_type"] = TyxVariant(TyxNumValidator<T>::templateType());
    const TyxNumValidatorFactory factory;
    const std::unique_ptr<TyxObject> made(factory.create(args));
    auto *typed = dynamic_cast<TyxNumValidator<T> *>(made.get());
    ASSERT_NE(typed, nullptr);

    // Bounds arrive through the meta object; the type stays.
    TyxMetaObjectPtr meta = typed->metaObject();
    EXPECT_EQ(meta->setProperty(L"flags", TyxVariant(5)), 0);
    EXPECT_EQ(meta->setProperty(L"lower_bound", TyxVariant(2)), 0);
    EXPECT_EQ(meta->setProperty(L"upper_bound", TyxVariant(8)), 0);
    EXPECT_TRUE(typed->isEqual(&validator));
    EXPECT_FALSE(typed->isEqual(nullptr));
    EXPECT_EQ(
        meta->setProperty(L"template_type", TyxVariant(TyxNumValidator<T>::templateType() == 9 ? 8 : 9)), 1);
    TyxVariant type;
    EXPECT_EQ(meta->getProperty(L"template_type", type), 0);
    EXPECT_EQ(type.value<int>(), TyxNumValidator<T>::templateType());
}

TEST(TyxNumValidatorTest, TypeNamesBadPropertiesAndBadFactoryArguments)
{
    EXPECT_EQ(TyxNumValidator<signed char>::typeName(), L"signed char");
    EXPECT_EQ(TyxNumValidator<int64_t>::typeName(), L"TyxI64");
    EXPECT_EQ(TyxNumValidator<long long>::typeName(), L"TyxI64");

    TyxNumValidator<int> validator;
    EXPECT_EQ(validator.metaObject()->setProperty(L"lower_bound", TyxVariant(L"abc")), 1);
    EXPECT_EQ(validator.metaObject()->setProperty(L"flags", TyxVariant(300)), 1);
    EXPECT_EQ(validator.flags(), 0);
    EXPECT_FALSE(internal::numValidatorMetaObj(&validator, 0));

    const TyxNumValidatorFactory factory;
    TyxVariantMap args;
    args[L"template_type"] = TyxVariant(10);
    EXPECT_EQ(factory.create(args), nullptr);
    args[L"Template_Type"] = TyxVariant(L"8");
    const std::unique_ptr<TyxObject> made(factory.create(args));
    EXPECT_NE(dynamic_cast<TyxNumValidator<float> *>(made.get()), nullptr);
}

TEST(TyxEnumValidatorTest, KeysInAnyCaseTuplesEqualityAndOwnCloneInAProperty)
{
    const TyxEnum::Item colours[] = {{0, L"Red"}, {1, L"Green"}, {2, L"Blue"}};
    const TyxEnumValidator validator(TyxEnum(colours, 3));
    EXPECT_TRUE(validator.isValid(TyxVariant(L"green"), nullptr));
    EXPECT_TRUE(validator.isValid(TyxVariant(L"(red,3)"), nullptr));
    EXPECT_FALSE(validator.isValid(TyxVariant(L"(3,red)"), nullptr));
    TyxTextMsg msg;
    EXPECT_FALSE(validator.isValid(TyxVariant(L"mauve"), &msg));
    EXPECT_EQ(msg.text(), L"The value of 'mauve' is not a member of {Red,Green,Blue}.");

    const std::unique_ptr<TyxValidator> copy(validator.clone());
    EXPECT_TRUE(copy->isEqual(&validator));
    const TyxNumValidator<int> other;
    EXPECT_FALSE(validator.isEqual(&other));
    TyxEnumValidator changed(validator);
    changed.setEnumerator(TyxEnum(colours, 1));
    EXPECT_NE(changed, validator);

    TyxMetaProperty property(L"colour");
    property.setValidator(&validator);
    ASSERT_TRUE(property.validator());
    EXPECT_NE(property.validator().get(), &validator);
    EXPECT_EQ(property.validator()->refCount(), 1);
    TyxMetaProperty same(L"colour");
    same.setValidator(&validator);
    EXPECT_EQ(property, same);
}

} // namespace
