#include "SteppedToolRun.h"

#include <QVector>

#include <csignal>

#include <fcntl.h>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

[[noreturn]] void becomeTool(const QStringList& arguments)
{
    QVector<char*> words; // which end with this program, when it becomes the other
    for (const QString& word : QStringList(TEXTMANAGER_PROGRAM) + arguments)
        words.append(qstrdup(qUtf8Printable(word)));
    words.append(nullptr);
    const int nothing = ::open("/dev/null", O_WRONLY);
    ::dup2(nothing, STDOUT_FILENO);
    ::dup2(nothing, STDERR_FILENO);
    if (::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) == 0)
        ::execv(TEXTMANAGER_PROGRAM, words.data());
    ::_exit(127);
}

bool isStopped(pid_t process)
{
    int status = 0;
    return ::waitpid(process, &status, 0) == process && WIFSTOPPED(status);
}

/** The number of the call before which the program stands; -1 when it stands elsewhere. */
long enteredCall(pid_t process)
{
    struct __ptrace_syscall_info info = {};
    if (::ptrace(PTRACE_GET_SYSCALL_INFO, process, sizeof info, &info) <= 0)
        qFatal("system calls cannot be followed here");
    return info.op == PTRACE_SYSCALL_INFO_ENTRY ? static_cast<long>(info.entry.nr) : -1;
}

} // namespace

void runStepped(const QStringList& arguments, const std::function<bool(long)>& beforeCall)
{
    const pid_t process = ::fork();
    if (process == 0)
        becomeTool(arguments);
    if (!isStopped(process))
        qFatal("the program textmanager cannot be traced");
    ::ptrace(PTRACE_SETOPTIONS, process, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL);
    do {
        const long call = enteredCall(process);
        if (call >= 0 && !beforeCall(call))
            ::kill(process, SIGKILL);
        ::ptrace(PTRACE_SYSCALL, process, nullptr, nullptr);
    } while (isStopped(process));
}
