// Shared pointers: assignment order, self-assignment, auto pointers and policies.
#include <gtest/gtest.h>

#include <tyx/TyxAutoPtr.h>
#include <tyx/TyxSmartPtr.h>

#include <type_traits>

namespace {

using namespace tyx;

class Node : public TyxRefCounted {
public:
    explicit Node(int *destroyed) : m_destroyed(destroyed) {}
    ~Node() override { ++*m_destroyed; }

    TyxSmartPtr<Node> next;

private:
    int *m_destroyed;
};

struct Tracked {
    explicit Tracked(int *destroyed) : m_destroyed(destroyed) {}
    ~Tracked() { ++*m_destroyed; }
    int *m_destroyed;
};

TEST(TyxSmartPtrTest, NullPointersTestFalse)
{
    TyxSmartPtr<Node> empty;
    EXPECT_FALSE(empty);
    static_assert(!std::is_convertible_v<TyxSmartPtr<Node>, int>);
    static_assert(!std::is_convertible_v<TyxSmartPtr<Node>, bool>);
    static_assert(std::is_convertible_v<TyxSmartPtr<Node>, TyxSmartPtr<const Node>>);
    static_assert(!std::is_convertible_v<TyxSmartPtr<const Node>, TyxSmartPtr<Node>>);
}

TEST(TyxSmartPtrTest, SelfAssignmentKeepsTheCount)
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
}

TEST(TyxSmartPtrTest, AssignmentReleasesTheOldObjectFirst)
{
    int destroyed = 0;
    TyxSmartPtr<Node> p(new Node(&destroyed));
    p = new Node(&destroyed);
    EXPECT_EQ(destroyed, 1);
    p = nullptr;
    EXPECT_EQ(destroyed, 2);
}

TEST(TyxSmartPtrTest, ReplacingByAnObjectReachableOnlyThroughTheOldOne)
{
    // The caller's duty: hold a copy of the new object before assigning.
    int destroyed = 0;
    TyxSmartPtr<Node> head(new Node(&destroyed));
    head->next = new Node(&destroyed);
    const TyxSmartPtr<Node> keep(head->next);
    head = keep;
    EXPECT_EQ(destroyed, 1);
    EXPECT_EQ(head->refCount(), 2);
}

TEST(TyxSmartPtrTest, ConstPointerSharesTheCount)
{
    int destroyed = 0;
    TyxSmartPtr<Node> p(new Node(&destroyed));
    TyxSmartPtr<const Node> c(p);
    EXPECT_EQ(c->refCount(), 2);
    p = nullptr;
    EXPECT_EQ(destroyed, 0);
    c = nullptr;
    EXPECT_EQ(destroyed, 1);
}

TEST(TyxAutoPtrTest, CopiesDestroyThePointeeOnce)
{
    int destroyed = 0;
    {
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

TEST(TyxAutoPtrTest, NoDeleteOnlyBorrows)
{
    int destroyed = 0;
    Tracked local(&destroyed);
    {
        TyxAutoPtr<Tracked> borrowed(&local, TyxNoDelete());
        TyxAutoPtr<Tracked> copy(borrowed);
        EXPECT_EQ(copy.get(), &local);
    }
    EXPECT_EQ(destroyed, 0);
}

} // namespace
