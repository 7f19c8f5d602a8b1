#include "WatchedMutex.h"

#include <atomic>

#include <dlfcn.h>
#ifdef __SANITIZE_THREAD__
#include <sanitizer/tsan_interface.h>
#endif

// The operations of a text manager's mutex, in the place of Qt's own: they count, and hand on. Qt's
// code is not instrumented, so the thread sanitizer cannot see how a recursive mutex orders threads
// and would report what the mutex guards. These tell it.

namespace
{

std::atomic<const TextManagerMutex*> watchedMutex{nullptr};
std::atomic<int> lockCount{0};

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
constexpr const char* tryLockName = "_ZN6QMutex7tryLockEi";
constexpr const char* unlockName = "_ZN6QMutex6unlockEv";
#else
constexpr const char* tryLockName = "_ZN15QRecursiveMutex7tryLockEi";
constexpr const char* unlockName = "_ZN15QRecursiveMutex6unlockEv";
#endif

template<typename Function>
Function* original(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

} // namespace

int countLocks(const TextManagerMutex& mutex, const std::function<void()>& work)
{
    lockCount = 0;
    watchedMutex = &mutex;
    work();
    watchedMutex = nullptr;
    return lockCount;
}

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
void TextManagerMutex::lock() QT_MUTEX_LOCK_NOEXCEPT
{
    tryLock(-1);
}
#endif

bool TextManagerMutex::tryLock(int timeout) QT_MUTEX_LOCK_NOEXCEPT
{
    static auto* const tryLockInQt = original<bool(TextManagerMutex*, int)>(tryLockName);
    const bool isLocked = tryLockInQt(this, timeout);
    if (isLocked && watchedMutex == this)
        ++lockCount;
#ifdef __SANITIZE_THREAD__
    if (isLocked)
        __tsan_acquire(this);
#endif
    return isLocked;
}

void TextManagerMutex::unlock() noexcept
{
    static auto* const unlockInQt = original<void(TextManagerMutex*)>(unlockName);
#ifdef __SANITIZE_THREAD__
    __tsan_release(this);
#endif
    unlockInQt(this);
}
