// Reference counting of objects.
#include <gtest/gtest.h>

#include <tyx/TyxObject.h>
#include <tyx/TyxSmartPtr.h>

namespace {

using namespace tyx;

class Counted : public TyxObject, public TyxRefCounted {
public:
    using TyxRefCounted::addRef;
    using TyxRefCounted::removeRef;
};

TEST(TyxRefCountedTest, CountFollowsOwnersAndCopiesStartAtZero)
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
        const Counted copy(*object);
        EXPECT_EQ(copy.refCount(), 0);
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

} // namespace
