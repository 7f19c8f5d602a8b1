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

// Each call by its own name, not a 32-bit machine's calls by those of their 64-bit kin.
#undef _FILE_OFFSET_BITS
#undef _TIME_BITS

// No header that declares the functions below: these have to be their only declarations.
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <dlfcn.h>
#include <sys/syscall.h>

extern "C" long syscall(long number, ...) noexcept;

namespace
{

/** What a call does with the space of a disk, and whether it can be done by half. */
enum class Kind { Asks, TakesSpace, Reads, Writes };

struct Fault {
    std::atomic<unsigned long> hash{0};
    std::atomic<long> call{0};
    std::atomic<long> count{0};
    char name[8] = "";
    char counted[16] = "";

    bool is(const char* other) const { return std::strcmp(name, other) == 0; }
};

unsigned long hashOf(const char* text)
{
    unsigned long hash = 5381;
    for (; *text != '\0'; ++text)
        hash = hash * 33 + static_cast<unsigned char>(*text);
    return hash;
}

/** The fault that is wanted now. */
Fault& currentFault()
{
    static Fault fault;
    const char* wanted = std::getenv("TEXTMANAGER_FAULT");
    const unsigned long hash = wanted != nullptr ? hashOf(wanted) : 0;
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

template<typename Function>
Function* next(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

/** Whether a file that is opened so may be a new one. */
Kind kindOfOpening(int flags)
{
    constexpr int create = 0100;
    constexpr int unnamed = 020000000;
    return (flags & (create | unnamed)) != 0 ? Kind::TakesSpace : Kind::Asks;
}

} // namespace

#define FAULTY_CALL(kind, result, failure, name, parameters, arguments)                            \
    extern "C" result name parameters                                                              \
    {                                                                                              \
        static auto* const original = next<result parameters>(#name);                              \
        return isFaulty(#name, kind) ? failure : original arguments;                               \
    }

#define FAULTY_TRANSFER(kind, name, bytes)                                                         \
    extern "C" std::ptrdiff_t name(int file, bytes data, std::size_t size)                         \
    {                                                                                              \
        static auto* const original = next<std::ptrdiff_t(int, bytes, std::size_t)>(#name);        \
        if (!isFaulty(#name, kind))                                                                \
            return original(file, data, size);                                                     \
        return isDoneByHalf() ? original(file, data, (size + 1) / 2) : -1;                         \
    }

// What takes a variable number of arguments gets them in the same places as these.
FAULTY_CALL(kindOfOpening(b), int, -1, open, (const char* a, int b, unsigned c), (a, b, c))
FAULTY_CALL(kindOfOpening(b), int, -1, open64, (const char* a, int b, unsigned c), (a, b, c))
FAULTY_CALL(kindOfOpening(c), int, -1, openat, (int a, const char* b, int c, unsigned d),
            (a, b, c, d))
FAULTY_CALL(kindOfOpening(c), int, -1, openat64, (int a, const char* b, int c, unsigned d),
            (a, b, c, d))
FAULTY_TRANSFER(Kind::Reads, read, void*)
FAULTY_TRANSFER(Kind::Writes, write, const void*)
FAULTY_CALL(Kind::TakesSpace, int, -1, ftruncate, (int a, long b), (a, b))
FAULTY_CALL(Kind::TakesSpace, int, -1, ftruncate64, (int a, std::int64_t b), (a, b))
FAULTY_CALL(Kind::TakesSpace, int, -1, fsync, (int a), (a))
FAULTY_CALL(Kind::TakesSpace, int, -1, fdatasync, (int a), (a))
FAULTY_CALL(Kind::TakesSpace, int, -1, mkdir, (const char* a, unsigned b), (a, b))
FAULTY_CALL(Kind::TakesSpace, int, -1, link, (const char* a, const char* b), (a, b))
FAULTY_CALL(Kind::TakesSpace, int, -1, linkat, (int a, const char* b, int c, const char* d, int e),
            (a, b, c, d, e))
FAULTY_CALL(Kind::TakesSpace, int, -1, rename, (const char* a, const char* b), (a, b))
FAULTY_CALL(Kind::TakesSpace, int, -1, renameat2,
            (int a, const char* b, int c, const char* d, unsigned e), (a, b, c, d, e))
FAULTY_CALL(Kind::TakesSpace, int, -1, fsetxattr,
            (int a, const char* b, const void* c, std::size_t d, int e), (a, b, c, d, e))
FAULTY_CALL(Kind::Asks, int, -1, unlink, (const char* a), (a))
FAULTY_CALL(Kind::Asks, int, -1, rmdir, (const char* a), (a))
FAULTY_CALL(Kind::Asks, int, -1, chmod, (const char* a, unsigned b), (a, b))
FAULTY_CALL(Kind::Asks, int, -1, fchmod, (int a, unsigned b), (a, b))
FAULTY_CALL(Kind::Asks, int, -1, fchown, (int a, unsigned b, unsigned c), (a, b, c))
FAULTY_CALL(Kind::Asks, int, -1, fremovexattr, (int a, const char* b), (a, b))
FAULTY_CALL(Kind::Asks, std::ptrdiff_t, -1, getxattr,
            (const char* a, const char* b, void* c, std::size_t d), (a, b, c, d))
FAULTY_CALL(Kind::Asks, std::ptrdiff_t, -1, listxattr, (const char* a, char* b, std::size_t c),
            (a, b, c))
FAULTY_CALL(Kind::Asks, int, -1, futimens, (int a, const void* b), (a, b))
FAULTY_CALL(Kind::Asks, int, -1, flock, (int a, int b), (a, b))
FAULTY_CALL(Kind::Asks, int, -1, fcntl, (int a, int b, void* c), (a, b, c))
FAULTY_CALL(Kind::Asks, int, -1, fcntl64, (int a, int b, void* c), (a, b, c))
FAULTY_CALL(Kind::Asks, int, -1, access, (const char* a, int b), (a, b))
FAULTY_CALL(Kind::Asks, int, -1, stat, (const char* a, void* b), (a, b))
FAULTY_CALL(Kind::Asks, int, -1, stat64, (const char* a, void* b), (a, b))
FAULTY_CALL(Kind::Asks, int, -1, lstat, (const char* a, void* b), (a, b))
FAULTY_CALL(Kind::Asks, int, -1, lstat64, (const char* a, void* b), (a, b))
FAULTY_CALL(Kind::Asks, int, -1, fstat, (int a, void* b), (a, b))
FAULTY_CALL(Kind::Asks, int, -1, fstat64, (int a, void* b), (a, b))
FAULTY_CALL(Kind::Asks, int, -1, fstatfs, (int a, void* b), (a, b))
FAULTY_CALL(Kind::Asks, int, -1, statx, (int a, const char* b, int c, unsigned d, void* e),
            (a, b, c, d, e))
FAULTY_CALL(Kind::Asks, void*, nullptr, opendir, (const char* a), (a))
FAULTY_CALL(Kind::Asks, void*, nullptr, readdir64, (void* a), (a))
FAULTY_CALL(Kind::Asks, char*, nullptr, realpath, (const char* a, char* b), (a, b))
FAULTY_CALL(Kind::Asks, std::ptrdiff_t, -1, readlink, (const char* a, char* b, std::size_t c),
            (a, b, c))
FAULTY_CALL(Kind::Asks, void*, reinterpret_cast<void*>(-1), mmap64,
            (void* a, std::size_t b, int c, int d, int e, std::int64_t f), (a, b, c, d, e, f))

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
