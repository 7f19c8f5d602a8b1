// Stands between a program and its file system, and lets one call of the program fail: linked into
// a test program, or loaded into any other with LD_PRELOAD.
//
// The environment variable TEXTMANAGER_FAULT says what happens at which call, as in "EIO 17". Calls
// are counted from 1, again from the beginning when the variable changes. What can happen:
//
//   kill    the program is killed before it makes the call, as by the loss of its power
//   EIO     the call fails with an error of the disk
//   gone    as EIO, and so does every call after it: the disk was pulled out
//   EINTR   the call is interrupted by a signal
//   ENOSPC  the call fails because the disk is full, and so does all that takes space from then on
//   short   the call reads or writes half of what it is asked to; only such calls are counted
//
// A third word leaves calls out: "EIO 17 readdir64" counts calls of that name, and "EIO 17 change"
// those that change the disk.
//
// Each fault is added as a line to the file that TEXTMANAGER_FAULT_REPORT names.

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <string_view>

#include <dlfcn.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace
{

/** What a call does with the space of a disk, and whether it can be done by half. */
enum class Kind { Asks, TakesSpace, Reads, Writes };

struct Fault {
    std::atomic<std::size_t> hash{0};
    std::atomic<long> call{0};
    std::atomic<long> count{0};
    char name[8] = "";
    char counted[16] = "";

    bool is(const char* other) const { return std::strcmp(name, other) == 0; }
};

/** The fault that is wanted now. */
Fault& currentFault()
{
    static Fault fault;
    const char* wanted = std::getenv("TEXTMANAGER_FAULT");
    const std::size_t hash = wanted != nullptr ? std::hash<std::string_view>()(wanted) : 0;
    if (fault.hash.exchange(hash) != hash) {
        long call = 0;
        fault.counted[0] = '\0';
        if (wanted == nullptr ||
            std::sscanf(wanted, "%7s %ld %15s", fault.name, &call, fault.counted) < 2)
            call = 0;
        fault.count = 0;
        fault.call = call;
    }
    return fault;
}

void report(const char* function)
{
    constexpr int toBeAppended = 02001; // O_WRONLY | O_APPEND
    const char* path = std::getenv("TEXTMANAGER_FAULT_REPORT");
    if (path == nullptr)
        return;
    const long file = syscall(SYS_openat, -100, path, toBeAppended);
    syscall(SYS_write, file, function, std::strlen(function));
    syscall(SYS_write, file, "\n", 1);
    syscall(SYS_close, file);
}

bool isCounted(const Fault& fault, const char* function, Kind kind)
{
    const bool changes = kind == Kind::TakesSpace || kind == Kind::Writes;
    const bool isPartial = kind == Kind::Reads || kind == Kind::Writes;
    const bool isMeant = fault.counted[0] == '\0' || std::strcmp(fault.counted, function) == 0 ||
                         (changes && std::strcmp(fault.counted, "change") == 0);
    return fault.call != 0 && isMeant && (isPartial || !fault.is("short"));
}

/** Counts a call. @return whether it is to fail, and errno is set; or is done by half. */
bool isFaulty(const char* function, Kind kind)
{
    Fault& fault = currentFault();
    if (!isCounted(fault, function, kind))
        return false;
    const long number = ++fault.count;
    const bool takesSpace = kind == Kind::TakesSpace || kind == Kind::Writes;
    const bool isLasting = fault.is("gone") || (fault.is("ENOSPC") && takesSpace);
    if (number != fault.call && (number < fault.call || !isLasting))
        return false;
    report(function);
    if (fault.is("kill"))
        syscall(SYS_kill, syscall(SYS_getpid), SIGKILL);
    errno = fault.is("ENOSPC") ? ENOSPC : fault.is("EINTR") ? EINTR : EIO;
    return true;
}

bool isDoneByHalf()
{
    return currentFault().is("short");
}

using Call = long(long, long, long, long, long, long);

template<typename Function = Call>
Function* next(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

/** Whether a file that is opened so may be a new one. */
Kind kindOfOpening(long flags)
{
    constexpr long create = 0100;
    constexpr long unnamed = 020000000;
    return (flags & (create | unnamed)) != 0 ? Kind::TakesSpace : Kind::Asks;
}

} // namespace

// Numbers and pointers come in the same places as the parameters here, however many a call has, and
// its result goes back in the place of theirs. The names are those of the linker alone: headers
// declare the calls with other parameters.
#define FAULTY_CALL(kind, failure, name)                                                           \
    extern "C" long faulty_##name(long a, long b, long c, long d, long e, long f) __asm__(#name);  \
    long faulty_##name(long a, long b, long c, long d, long e, long f)                             \
    {                                                                                              \
        static auto* const original = next(#name);                                                 \
        return isFaulty(#name, kind) ? failure : original(a, b, c, d, e, f);                       \
    }

#define FAULTY_CALLS(kind, one, two, three, four, five)                                            \
    FAULTY_CALL(kind, -1, one)                                                                     \
    FAULTY_CALL(kind, -1, two)                                                                     \
    FAULTY_CALL(kind, -1, three)                                                                   \
    FAULTY_CALL(kind, -1, four)                                                                    \
    FAULTY_CALL(kind, -1, five)

#define FAULTY_TRANSFER(kind, name)                                                                \
    extern "C" long faulty_##name(int file, void* data, unsigned long size) __asm__(#name);        \
    long faulty_##name(int file, void* data, unsigned long size)                                   \
    {                                                                                              \
        static auto* const original = next<long(int, void*, unsigned long)>(#name);                \
        if (!isFaulty(#name, kind))                                                                \
            return original(file, data, size);                                                     \
        return isDoneByHalf() ? original(file, data, (size + 1) / 2) : -1;                         \
    }

FAULTY_TRANSFER(Kind::Reads, read)
FAULTY_TRANSFER(Kind::Writes, write)
FAULTY_CALL(kindOfOpening(b), -1, open)
FAULTY_CALL(kindOfOpening(b), -1, open64)
FAULTY_CALL(kindOfOpening(c), -1, openat)
FAULTY_CALL(kindOfOpening(c), -1, openat64)
FAULTY_CALLS(Kind::TakesSpace, fdatasync, fsetxattr, fsync, ftruncate, ftruncate64)
FAULTY_CALLS(Kind::TakesSpace, link, linkat, mkdir, rename, renameat2)
FAULTY_CALLS(Kind::Asks, access, chmod, fchmod, fchown, fcntl)
FAULTY_CALLS(Kind::Asks, fcntl64, flock, fremovexattr, fstat, fstat64)
FAULTY_CALLS(Kind::Asks, fstatfs, futimens, getxattr, listxattr, lstat)
FAULTY_CALLS(Kind::Asks, lstat64, readlink, readlinkat, rmdir, stat)
FAULTY_CALLS(Kind::Asks, stat64, statx, unlink, unlinkat, utimensat)
FAULTY_CALL(Kind::Asks, 0, opendir)
FAULTY_CALL(Kind::Asks, 0, readdir64)
FAULTY_CALL(Kind::Asks, 0, realpath)

extern "C" void* faulty_mmap64(void* a, unsigned long b, int c, int d, int e,
                               long long f) __asm__("mmap64");
void* faulty_mmap64(void* a, unsigned long b, int c, int d, int e, long long f)
{
    static auto* const original =
        next<void*(void*, unsigned long, int, int, int, long long)>("mmap64");
    return isFaulty("mmap64", Kind::Asks) ? reinterpret_cast<void*>(-1)
                                          : original(a, b, c, d, e, f);
}

// What is closed is closed, whatever the call says.
extern "C" int close(int file)
{
    static auto* const original = next<int(int)>("close");
    const bool isAnErrorToBeTold = isFaulty("close", Kind::Asks);
    const int error = errno;
    const int result = original(file);
    if (!isAnErrorToBeTold)
        return result;
    errno = error;
    return -1;
}
