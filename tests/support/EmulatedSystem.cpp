// Stands between the test programs and an emulator. Qt asks the kernel whether it starts processes
// in a newer way; the emulator hands that question on, but does not know the newer way itself. Here
// the answer is no, and Qt takes the older.

#include <cerrno>
#include <cstdarg>

#include <dlfcn.h>
#include <sys/syscall.h>
#include <sys/wait.h>

extern "C" long syscall(long number, ...) noexcept
{
    using Function = long(long, ...);
    static auto* const next = reinterpret_cast<Function*>(dlsym(RTLD_NEXT, "syscall"));
    long words[6];
    va_list list;
    va_start(list, number);
    for (long& word : words)
        word = va_arg(list, long);
    va_end(list);
    if (number == SYS_waitid && words[0] == P_PIDFD) {
        errno = EINVAL;
        return -1;
    }
    return next(number, words[0], words[1], words[2], words[3], words[4], words[5]);
}
