#include "TerminalRun.h"

#include "ToolRun.h"

QByteArray outputOnTerminal(const QStringList& arguments)
{
    QString line;
    for (QString word : QStringList(TEXTMANAGER_PROGRAM) + arguments)
        line += '\'' + word.replace("'", "'\\''") + "' ";
    const ToolRun run({"-qec", line, "/dev/null"}, {}, {}, "script");
    if (run.exitStatus() < 0 || run.exitStatus() > 2)
        qFatal("the program did not run to its end on a terminal");
    return run.output().toUtf8();
}
