// Reference counts and shared pointers: assignment order, self-assignment,
// auto pointers and policies.
#include <gtest/gtest.h>

#include <tyx/TyxAutoPtr.h>
#include <tyx/TyxObject.h>
#include <tyx/TyxSmartPtr.h>

#include <type_traits>

namespace {

using namespace tyx;

class Node : public TyxObject, public TyxRefCounted {
public:
    explicit Node(int *destroyed) : m_destroyed(destroyed) {}
    Node(const Node &other) = default;
    ~Node() override { ++*m_destroyed; }

    using TyxRefCounted::addRef;
    using TyxRefCounted::removeRef;
    TyxSmartPtr<Node> next;

private:
    int *m_destroyed;
};

struct Tracked {
    explicit Tracked(int *destroyed) : m_destroyed(destroyed) {}
    ~Tracked() { ++*m_destroyed; }
    int *m_destroyed;
};

static_assert(!std::is_convertible_v<TyxSmartPtr<Node>, bool>);
static_assert(std::is_convertible_v<TyxSmartPtr<Node>, TyxSmartPtr<const Node>>);
static_assert(!std::is_convertible_v<TyxSmartPtr<const Node>, TyxSmartPtr<Node>>);

TEST(TyxRefCountedTest, CountFollowsOwnersAndCopiesStartAtZero)
{
    int destroyed = 0;
    auto *object = new Node(&destroyed);
    EXPECT_EQ(object->refCount(), 0);
    TyxSmartPtr<Node> first(object);
    EXPECT_EQ(object->refCount(), 1);
    {
        TyxSmartPtr<const Node> second(first);
        EXPECT_EQ(object->refCount(), 2);
        EXPECT_TRUE(object->hasMultipleRefs());
        const Node copy(*object);
        EXPECT_EQ(copy.refCount(), 0);
    }
    EXPECT_EQ(destroyed, 1); // the copy
    EXPECT_EQ(object->refCount(), 1);
    // A const pointer alone keeps the object.
    TyxSmartPtr<const Node> constant(first);
    first = nullptr;
    EXPECT_EQ(destroyed, 1);
    constant = nullptr;
    EXPECT_EQ(destroyed, 2);

    // removeRef signals when the count falls below two, even below zero.
    Node local(&destroyed);
    local.addRef();
    local.addRef();
    EXPECT_FALSE(local.removeRef()); // 2 -> 1
    EXPECT_TRUE(local.removeRef());  // 1 -> 0
    EXPECT_TRUE(local.removeRef());  // 0 -> -1
}

TEST(TyxSmartPtrTest, SelfAssignmentKeepsTheCountAndOtherReleasesFirst)
{
    int destroyed = 0;
    TyxSmartPtr<Node> p(new Node(&destroyed));
    TyxSmartPtr<Node> &alias = p;
    p = alias;
    EXPECT_EQ(p->refCount(), 1);
    TyxSmartPtr<Node> other(p);
    p = other; // same object through another pointer
    EXPECT_EQ(p->refCount(), 2);
    p = p.get();
    EXPECT_EQ(p->refCount(), 2);
    EXPECT_EQ(destroyed, 0);

    // Assignment releases the old object first.
    other = nullptr;
    p = new Node(&destroyed);
    EXPECT_EQ(destroyed, 1);

    // The caller's duty: hold a copy of the new object before assigning.
    TyxSmartPtr<Node> head(new Node(&destroyed));
    head->next = new Node(&destroyed);
    const TyxSmartPtr<Node> keep(head->next);
    head = keep;
    EXPECT_EQ(destroyed, 2);
    EXPECT_EQ(head->refCount(), 2);
}

TEST(TyxAutoPtrTest, CopiesDestroyThePointeeOnceAndNoDeleteOnlyBorrows)
{
    int destroyed = 0;
    Tracked local(&destroyed);
    {
        TyxAutoPtr<Tracked> borrowed(&local, TyxNoDelete());
        TyxAutoPtr<Tracked> copy(borrowed);
        EXPECT_EQ(copy.get(), &local);
        TyxAutoPtr<Tracked> a(new Tracked(&destroyed));
        TyxAutoPtr<Tracked> b(a);
        TyxAutoPtr<Tracked> c;
        c = b;
        EXPECT_EQ(a.get(), c.get());
        a = TyxAutoPtr<Tracked>();
        b = TyxAutoPtr<Tracked>();
        EXPECT_EQ(destroyed, 0);
        EXPECT_TRUE(c);
        const TyxAutoPtr<const Tracked> constant(new Tracked(&destroyed));
    }
    EXPECT_EQ(destroyed, 2);
}

} // namespace
