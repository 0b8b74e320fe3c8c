// Tests of the object factory registry.
#include <tyx/TyxObjectFactory.h>

#include <gtest/gtest.h>

#include <memory>

#include <tyx/TyxMetaProperty.h>
#include <tyx/TyxTextMsg.h>

namespace {

using namespace tyx;

class Widget : public TyxObject {
public:
    TyxString className() const override { return L"Widget"; }
};

TEST(TyxObjectFactoryTest, RegistersLooksUpAndRefusesDuplicates)
{
    const TyxObjectFactoryPtr first(new TyxObjectFactoryImpl<Widget>(L"Widget"));
    const TyxObjectFactoryPtr second(new TyxObjectFactoryImpl<Widget>(L"Widget"));
    ASSERT_EQ(TyxObjectFactory::registerFactory(first), 0);
    EXPECT_EQ(TyxObjectFactory::registerFactory(second), 1);
    EXPECT_EQ(TyxObjectFactory::factory(L"Widget").get(), first.get());
    EXPECT_FALSE(TyxObjectFactory::isRegistered(L"widget"));
    EXPECT_EQ(TyxObjectFactory::registerFactory(TyxObjectFactoryPtr()), 1);
    EXPECT_EQ(TyxObjectFactory::registerFactory(TyxObjectFactoryPtr(new TyxObjectFactoryImpl<Widget>(L""))),
              1);

    std::unique_ptr<TyxObject> made(TyxObjectFactory::createObject(L"Widget", TyxVariantMap()));
    ASSERT_TRUE(made);
    EXPECT_EQ(made->className(), L"Widget");

    EXPECT_EQ(TyxObjectFactory::unregisterFactory(L"Widget"), 0);
    EXPECT_EQ(TyxObjectFactory::unregisterFactory(L"Widget"), 1);
}

TEST(TyxObjectFactoryTest, LibraryFactoriesAreThereFromTheStartAndFailuresSayWhy)
{
    const TyxStrList names = TyxObjectFactory::registeredNames();
    EXPECT_TRUE(names.contains(L"TyxNumValidator", false));
    EXPECT_TRUE(names.contains(L"TyxMetaProperty", false));
    TyxTextMsg msg;
    EXPECT_EQ(TyxObjectFactory::createObject(L"Nobody", TyxVariantMap(), &msg), nullptr);
    EXPECT_EQ(msg.text(), L"No factory is registered for class 'Nobody'.");
    EXPECT_EQ(TyxObjectFactory::createObject(L"TyxNumValidator", TyxVariantMap(), &msg), nullptr);
    EXPECT_EQ(msg.text(), L"The factory of class 'TyxNumValidator' made no object from the given arguments.");
}

} // namespace
