#include "WatchedMutex.h"

#include <QMutex>

#include <atomic>

#include <dlfcn.h>
#ifdef __SANITIZE_THREAD__
#include <sanitizer/tsan_interface.h>
#endif

// The operations of QMutex, in the place of Qt's own: they count, and hand on. Qt's code is not
// instrumented, so the thread sanitizer cannot see how a recursive QMutex orders threads and would
// report what the mutex guards. These tell it.

namespace
{

std::atomic<const QMutex*> watchedMutex{nullptr};
std::atomic<int> lockCount{0};

template<typename Function>
Function* original(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

} // namespace

int countLocks(const QMutex& mutex, const std::function<void()>& work)
{
    lockCount = 0;
    watchedMutex = &mutex;
    work();
    watchedMutex = nullptr;
    return lockCount;
}

void QMutex::lock()
{
    tryLock(-1);
}

bool QMutex::tryLock(int timeout)
{
    static auto* const tryLockInQt = original<bool(QMutex*, int)>("_ZN6QMutex7tryLockEi");
    const bool isLocked = tryLockInQt(this, timeout);
    if (isLocked && watchedMutex == this)
        ++lockCount;
#ifdef __SANITIZE_THREAD__
    if (isLocked)
        __tsan_acquire(this);
#endif
    return isLocked;
}

void QMutex::unlock() noexcept
{
    static auto* const unlockInQt = original<void(QMutex*)>("_ZN6QMutex6unlockEv");
#ifdef __SANITIZE_THREAD__
    __tsan_release(this);
#endif
    unlockInQt(this);
}
