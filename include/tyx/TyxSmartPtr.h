// Shared pointer to a TyxRefCounted object.
#pragma once

#include <tyx/TyxRefCounted.h>
#include <tyx/TyxSafeBool.h>

namespace tyx {

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
    template <class U>
    TyxSmartPtr(const TyxSmartPtr<U> &other) : m_ptr(other.get())
    {
        acquire();
    }
    ~TyxSmartPtr() override { release(); }

    /// Replaces the pointer. Holding the same object already touches no
    /// count; otherwise the old reference goes before the new one is taken.
    TyxSmartPtr &operator=(const TyxSmartPtr &other) { return assign(other.m_ptr); }
    TyxSmartPtr &operator=(T *p) { return assign(p); }
    template <class U>
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

/// Declares the pointer classes \p Name##Ptr and \p Name##ConstPtr of a
/// reference-counted class; they add nothing but their names.
#define TYX_DECLARE_SMART_PTR(Name)                                                                          \
    class Name;                                                                                              \
    class Name##Ptr : public ::tyx::TyxSmartPtr<Name> {                                                      \
    public:                                                                                                  \
        using ::tyx::TyxSmartPtr<Name>::TyxSmartPtr;                                                         \
        Name##Ptr() = default;                                                                               \
        Name##Ptr(const ::tyx::TyxSmartPtr<Name> &p) : ::tyx::TyxSmartPtr<Name>(p) {}                        \
    };                                                                                                       \
    class Name##ConstPtr : public ::tyx::TyxSmartPtr<const Name> {                                           \
    public:                                                                                                  \
        using ::tyx::TyxSmartPtr<const Name>::TyxSmartPtr;                                                   \
        Name##ConstPtr() = default;                                                                          \
        Name##ConstPtr(const ::tyx::TyxSmartPtr<const Name> &p) : ::tyx::TyxSmartPtr<const Name>(p) {}       \
    }

/// The same with only the \p Name##Ptr class.
#define TYX_DECLARE_SMART_PTR_ONLY(Name)                                                                     \
    class Name;                                                                                              \
    class Name##Ptr : public ::tyx::TyxSmartPtr<Name> {                                                      \
    public:                                                                                                  \
        using ::tyx::TyxSmartPtr<Name>::TyxSmartPtr;                                                         \
        Name##Ptr() = default;                                                                               \
        Name##Ptr(const ::tyx::TyxSmartPtr<Name> &p) : ::tyx::TyxSmartPtr<Name>(p) {}                        \
    }

} // namespace tyx
