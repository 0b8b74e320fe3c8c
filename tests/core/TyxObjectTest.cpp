// Object root and reference counting.
#include <gtest/gtest.h>

#include <tyx/TyxMetaObject.h>
#include <tyx/TyxObject.h>
#include <tyx/TyxSmartPtr.h>

namespace {

using namespace tyx;

class Plain : public TyxObject {};

class Counted : public TyxObject, public TyxRefCounted {
public:
    explicit Counted(int *destroyed = nullptr) : m_destroyed(destroyed) {}
    Counted(const Counted &other) = default;
    ~Counted() override
    {
        if (m_destroyed)
            ++*m_destroyed;
    }

    using TyxRefCounted::addRef;
    using TyxRefCounted::removeRef;

private:
    int *m_destroyed;
};

TEST(TyxObjectTest, RootHasNoDescription)
{
    Plain object;
    EXPECT_FALSE(object.isMetaObject());
    EXPECT_FALSE(static_cast<const Plain &>(object).metaObject());
    EXPECT_FALSE(object.metaObject());
}

TEST(TyxRefCountedTest, CountFollowsOwners)
{
    auto *object = new Counted;
    EXPECT_EQ(object->refCount(), 0);
    EXPECT_FALSE(object->hasMultipleRefs());
    TyxSmartPtr<Counted> first(object);
    EXPECT_EQ(object->refCount(), 1);
    {
        TyxSmartPtr<Counted> second(first);
        EXPECT_EQ(object->refCount(), 2);
        EXPECT_TRUE(object->hasMultipleRefs());
    }
    EXPECT_EQ(object->refCount(), 1);
}

TEST(TyxRefCountedTest, RemoveRefSignalsBelowTwo)
{
    Counted object;
    object.addRef();
    object.addRef();
    EXPECT_FALSE(object.removeRef()); // 2 -> 1
    EXPECT_TRUE(object.removeRef());  // 1 -> 0
    EXPECT_TRUE(object.removeRef());  // 0 -> -1 still signals
}

TEST(TyxRefCountedTest, CopyStartsAtZero)
{
    TyxSmartPtr<Counted> original(new Counted);
    TyxSmartPtr<Counted> shared(original);
    Counted copy(*original);
    EXPECT_EQ(copy.refCount(), 0);
    EXPECT_EQ(original->refCount(), 2);
}

} // namespace
