// Shared pointer to a TyxRefCounted object.
#pragma once

#include <type_traits>

#include <tyx/TyxRefCounted.h>
#include <tyx/TyxSafeBool.h>

namespace tyx {

namespace internal {
/// A pointer to \p U converts to a pointer to \p T: the pointee is derived
/// from \p T, or \p T is its const form.
template <class U, class T>
concept TyxPointeeOf = std::is_convertible_v<U *, T *>;
} // namespace internal

/// Shares an object derived from TyxRefCounted. Copies add a reference; the
/// last release destroys the object through its virtual destructor.
template <class T>
class TyxSmartPtr : public internal::TyxSafeBool {
public:
    TyxSmartPtr() = default;
    TyxSmartPtr(std::nullptr_t) {}
    /// Takes a reference on \p p when it is not null.
    TyxSmartPtr(T *p) : m_ptr(p) { acquire(); }
    TyxSmartPtr(const TyxSmartPtr &other) : internal::TyxSafeBool(), m_ptr(other.m_ptr) { acquire(); }
    /// Shares the object of a pointer to a derived or non-const type.
    template <internal::TyxPointeeOf<T> U>
    TyxSmartPtr(const TyxSmartPtr<U> &other) : m_ptr(other.get())
    {
        acquire();
    }
    ~TyxSmartPtr() override { release(); }

    /// Replaces the pointer. Holding the same object already touches no
    /// count; otherwise the old reference goes before the new one is taken.
    TyxSmartPtr &operator=(const TyxSmartPtr &other) { return assign(other.m_ptr); }
    TyxSmartPtr &operator=(T *p) { return assign(p); }
    template <internal::TyxPointeeOf<T> U>
    TyxSmartPtr &operator=(const TyxSmartPtr<U> &other)
    {
        return assign(other.get());
    }

    T *operator->() const { return m_ptr; }
    T &operator*() const { return *m_ptr; }
    T *get() const { return m_ptr; }

private:
    bool booleanTest() const override { return m_ptr != nullptr; }

    void acquire() const
    {
        if (m_ptr)
            static_cast<const TyxRefCounted *>(m_ptr)->addRef();
    }

    void release()
    {
        if (m_ptr && static_cast<const TyxRefCounted *>(m_ptr)->removeRef())
            delete m_ptr;
    }

    TyxSmartPtr &assign(T *p)
    {
        if (p == m_ptr)
            return *this;
        release();
        m_ptr = p;
        acquire();
        return *this;
    }

    T *m_ptr = nullptr;
};

/// Declares the pointer class \p PtrName over TyxSmartPtr<\p Pointee>; it adds
/// nothing but its name.
#define TYX_DECLARE_PTR_CLASS(PtrName, Pointee)                                                              \
    class PtrName : public ::tyx::TyxSmartPtr<Pointee> {                                                     \
    public:                                                                                                  \
        using ::tyx::TyxSmartPtr<Pointee>::TyxSmartPtr;                                                      \
        PtrName() = default;                                                                                 \
        PtrName(const ::tyx::TyxSmartPtr<Pointee> &p) : ::tyx::TyxSmartPtr<Pointee>(p) {}                    \
    }

/// Declares the pointer classes \p Name##Ptr and \p Name##ConstPtr of a
/// reference-counted class.
#define TYX_DECLARE_SMART_PTR(Name)                                                                          \
    class Name;                                                                                              \
    TYX_DECLARE_PTR_CLASS(Name##Ptr, Name);                                                                  \
    TYX_DECLARE_PTR_CLASS(Name##ConstPtr, const Name)

/// The same with only the \p Name##Ptr class.
#define TYX_DECLARE_SMART_PTR_ONLY(Name)                                                                     \
    class Name;                                                                                              \
    TYX_DECLARE_PTR_CLASS(Name##Ptr, Name)

} // namespace tyx
