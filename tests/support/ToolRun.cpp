#include "ToolRun.h"

#include <QProcess>

ToolRun::ToolRun(const QStringList& arguments, const QByteArray& input,
                 const QString& workingDirectory, const QString& program)
{
    constexpr int limitInMilliseconds = 60'000 * TIME_FACTOR;
    QProcess process;
    process.setWorkingDirectory(workingDirectory);
    process.start(program, arguments);
    process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(limitInMilliseconds))
        qFatal("%s: %s", qPrintable(program), qPrintable(process.errorString()));

    if (process.exitStatus() == QProcess::NormalExit)
        m_ExitStatus = process.exitCode();
    m_StrOutput = QString::fromUtf8(process.readAllStandardOutput());
    m_StrMessages = QString::fromUtf8(process.readAllStandardError());
}
