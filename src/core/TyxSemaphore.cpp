// Counting semaphore over a POSIX semaphore.
#include <tyx/TyxSemaphore.h>

#include <cerrno>
#include <semaphore.h>

namespace tyx {

namespace {

constexpr unsigned int maximumCount = 0x7FFFFFFF;

sem_t *semaphore(void *handle) { return static_cast<sem_t *>(handle); }

} // namespace

TyxSemaphore::TyxSemaphore(unsigned int initial) { initialize(initial); }

TyxSemaphore::~TyxSemaphore()
{
    if (m_handle) {
        sem_destroy(semaphore(m_handle));
        delete semaphore(m_handle);
        m_handle = nullptr;
    }
}

bool TyxSemaphore::initialize(unsigned int initial)
{
    if (m_handle)
        return false;
    auto *created = new sem_t;
    if (initial > maximumCount || sem_init(created, 0, initial) != 0) {
        delete created;
        m_systemErrorCode = -1;
        return false;
    }
    m_handle = created;
    return true;
}

bool TyxSemaphore::acquire()
{
    if (!m_handle)
        return false;
    while (sem_wait(semaphore(m_handle)) != 0) {
        if (errno != EINTR) {
            m_systemErrorCode = errno;
            return false;
        }
    }
    return true;
}

bool TyxSemaphore::tryAcquire()
{
    if (!m_handle)
        return false;
    if (sem_trywait(semaphore(m_handle)) != 0) {
        m_systemErrorCode = errno;
        return false;
    }
    return true;
}

void TyxSemaphore::release(unsigned int count)
{
    if (!m_handle)
        return;
    for (unsigned int i = 0; i < count; ++i) {
        if (sem_post(semaphore(m_handle)) != 0) {
            m_systemErrorCode = errno;
            return;
        }
    }
}

} // namespace tyx
