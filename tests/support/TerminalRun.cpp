#include "TerminalRun.h"

#include <QVector>

#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

QByteArray outputOnTerminal(const QStringList& arguments, const QByteArray& input)
{
    int pipe[2];
    if (::pipe(pipe) != 0 || ::write(pipe[1], input.constData(), size_t(input.size())) < 0)
        qFatal("there is no pipe");
    int terminal = -1;
    const pid_t child = ::forkpty(&terminal, nullptr, nullptr, nullptr);
    ::close(pipe[1]);
    if (child == 0) {
        QVector<char*> words; // which end with the child, when it becomes the program
        for (const QString& word : QStringList(TEXTMANAGER_PROGRAM) + arguments)
            words.append(qstrdup(qUtf8Printable(word)));
        words.append(nullptr);
        ::dup2(pipe[0], STDIN_FILENO);
        ::execv(words.first(), words.data());
        ::_exit(127);
    }
    ::close(pipe[0]);
    if (child < 0)
        qFatal("there is no pseudo terminal");
    QByteArray output;
    char buffer[4096];
    for (ssize_t count = 0; (count = ::read(terminal, buffer, sizeof buffer)) > 0;)
        output.append(buffer, static_cast<int>(count));
    ::close(terminal);
    int status = 0;
    ::waitpid(child, &status, 0);
    if (!WIFEXITED(status) || WEXITSTATUS(status) == 127)
        qFatal("the program did not run to its end on a terminal");
    return output;
}
