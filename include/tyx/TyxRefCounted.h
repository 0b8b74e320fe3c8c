// Intrusive atomic reference count shared by TyxSmartPtr.
#pragma once

#include <atomic>

#include <tyx/TyxGlobal.h>

namespace tyx {

template <class T>
class TyxSmartPtr;

/// Root of every reference-counted class. A new object has a count of 0 and
/// no owner until a TyxSmartPtr takes it; a copy starts again at 0.
class TYX_EXPORT TyxRefCounted {
public:
    /// True when more than one pointer shares the object.
    bool hasMultipleRefs() const { return m_refCount.load() > 1; }
    /// The count itself.
    const std::atomic<int> &refCount() const { return m_refCount; }

protected:
    TyxRefCounted() : m_refCount(0) {}
    TyxRefCounted(const TyxRefCounted &) : m_refCount(0) {}
    TyxRefCounted &operator=(const TyxRefCounted &) { return *this; }
    virtual ~TyxRefCounted();

    /// Adds one reference.
    void addRef() const { m_refCount.fetch_add(1); }
    /// Drops one reference; true when the count before was below 2, which
    /// tells the caller to destroy the object.
    bool removeRef() const { return m_refCount.fetch_sub(1) < 2; }

private:
    template <class T>
    friend class TyxSmartPtr;

    mutable std::atomic<int> m_refCount;
};

} // namespace tyx
