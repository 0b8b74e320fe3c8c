// Counting semaphore.
#pragma once

#include <tyx/TyxGlobal.h>

namespace tyx {

/// A counting semaphore with a maximum of 0x7FFFFFFF. Without a handle
/// (creation failed) every operation does nothing and answers false.
class TYX_EXPORT TyxSemaphore {
public:
    explicit TyxSemaphore(unsigned int initial);
    TyxSemaphore(const TyxSemaphore &) = delete;
    TyxSemaphore &operator=(const TyxSemaphore &) = delete;
    ~TyxSemaphore();

    /// Whether the semaphore exists.
    bool isValid() const { return m_handle != nullptr; }
    /// Waits without limit; true when acquired.
    bool acquire();
    /// Acquires only if that needs no wait; true when acquired.
    bool tryAcquire();
    /// Adds \p count to the semaphore.
    void release(unsigned int count);
    /// errno of the last failed operation, -1 when creation failed.
    int systemErrorCode() const { return m_systemErrorCode; }

private:
    bool initialize(unsigned int initial);

    void *m_handle = nullptr;
    int m_systemErrorCode = 0;
};

} // namespace tyx
