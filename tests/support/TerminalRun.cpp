#include "TerminalRun.h"

#include <QVector>

#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

QByteArray outputOnTerminal(const QStringList& arguments)
{
    QVector<QByteArray> words{TEXTMANAGER_PROGRAM};
    for (const QString& argument : arguments)
        words.append(argument.toUtf8());
    QVector<char*> pointers;
    for (QByteArray& word : words)
        pointers.append(word.data());
    pointers.append(nullptr);

    int terminal = -1;
    const pid_t child = ::forkpty(&terminal, nullptr, nullptr, nullptr);
    if (child == 0) {
        ::execv(pointers.first(), pointers.data());
        ::_exit(127);
    }
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
