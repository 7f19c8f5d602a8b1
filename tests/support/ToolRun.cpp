#include "ToolRun.h"

#include "LanguageFiles.h"
#include "Table.h"

#include <QProcess>
#include <QTest>

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

void compareWithRow(const ToolRun& run, const LanguageFiles& files)
{
    if (hasCell("output"))
        QCOMPARE(run.output(), files.fill(cell("output")));
    QVERIFY2(run.says(files.fill(cell("message"))), qPrintable(run.messages()));
    QCOMPARE(run.exitStatus(), cell("exit").toInt());
}
