// Qt's own code is not instrumented, so the thread sanitizer cannot see how a recursive QMutex
// orders threads and would report what the mutex guards. This tells it, in Qt 5.

#include <QMutex>

#if defined(__SANITIZE_THREAD__) && QT_VERSION < QT_VERSION_CHECK(6, 0, 0)

#include <dlfcn.h>
#include <sanitizer/tsan_interface.h>

void QMutex::lock()
{
    tryLock(-1);
}

bool QMutex::tryLock(int timeout)
{
    static const auto tryLockInQt =
        reinterpret_cast<bool (*)(QMutex*, int)>(dlsym(RTLD_NEXT, "_ZN6QMutex7tryLockEi"));
    const bool isLocked = tryLockInQt(this, timeout);
    if (isLocked)
        __tsan_acquire(this);
    return isLocked;
}

void QMutex::unlock() noexcept
{
    static const auto unlockInQt =
        reinterpret_cast<void (*)(QMutex*)>(dlsym(RTLD_NEXT, "_ZN6QMutex6unlockEv"));
    __tsan_release(this);
    unlockInQt(this);
}

#endif
