// Shared pointer to an object that knows nothing of reference counting.
#pragma once

#include <type_traits>

#include <tyx/TyxSmartPtr.h>

namespace tyx {

/// Deletion policy that destroys the object; a null pointer is left alone.
struct TyxDefaultDelete {
    template <class T>
    void operator()(T *p) const
    {
        delete p;
    }
};

/// Deletion policy for a borrowed object: the pointer is only carried.
struct TyxNoDelete {
    template <class T>
    void operator()(T *) const
    {
    }
};

namespace internal {

/// Destroys an untyped pointer by the policy of one (type, policy) pair.
class TYX_EXPORT DeleterIF {
public:
    virtual ~DeleterIF();
    virtual void destroy(void *p) = 0;
};

template <class T, class D>
class DeleterImpl final : public DeleterIF {
public:
    void destroy(void *p) override { m_policy(static_cast<T *>(p)); }

    /// The one deleter of this pair. It is made at first use and never
    /// deleted, because every proxy of the pair keeps pointing at it.
    static DeleterIF *instance()
    {
        static DeleterIF *const deleter = new DeleterImpl<T, D>;
        return deleter;
    }

private:
    D m_policy;
};

/// Counted companion of a TyxAutoPtr: its destructor hands the owned pointer
/// to the deleter. It does not own the deleter.
class TYX_EXPORT TyxAutoPtrProxy : public TyxRefCounted {
public:
    TyxAutoPtrProxy(void *owned, DeleterIF *deleter) : m_owned(owned), m_deleter(deleter) {}
    TyxAutoPtrProxy(const TyxAutoPtrProxy &) = delete;
    TyxAutoPtrProxy &operator=(const TyxAutoPtrProxy &) = delete;
    ~TyxAutoPtrProxy() override;

private:
    void *m_owned;
    DeleterIF *m_deleter;
};

} // namespace internal

/// Shares an arbitrary object: every copy holds the same pointer and the
/// same counted proxy, and the object dies by its policy with the last copy.
template <class T>
class TyxAutoPtr : public internal::TyxSafeBool {
public:
    TyxAutoPtr() = default;
    /// Takes \p p under the policy \p D (TyxDefaultDelete unless stated).
    template <class D = TyxDefaultDelete>
    explicit TyxAutoPtr(T *p, D = D())
        : m_ptr(p),
          m_proxy(new internal::TyxAutoPtrProxy(const_cast<std::remove_const_t<T> *>(p),
                                                internal::DeleterImpl<std::remove_const_t<T>, D>::instance()))
    {
    }
    TyxAutoPtr(const TyxAutoPtr &other) = default;
    TyxAutoPtr &operator=(const TyxAutoPtr &other) = default;
    ~TyxAutoPtr() override = default;

    virtual T *get() const { return m_ptr; }
    T *operator->() const { return m_ptr; }
    T &operator*() const { return *m_ptr; }

private:
    bool booleanTest() const override { return m_ptr != nullptr; }

    T *m_ptr = nullptr;
    TyxSmartPtr<internal::TyxAutoPtrProxy> m_proxy;
};

} // namespace tyx
