#include "Console.h"

#include <QCoreApplication>
#include <QJsonDocument>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace
{

void write(std::FILE* stream, const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stream);
}

void printLibraryMessage(QtMsgType, const QMessageLogContext&, const QString& message)
{
    printMessage(message);
}

void ignoreLibraryMessage(QtMsgType, const QMessageLogContext&, const QString&) {}

} // namespace

void printResult(const QString& line)
{
    write(stdout, line + QLatin1Char('\n'));
}

void printResult(const QJsonObject& object)
{
    printResult(QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact)));
}

void printMessage(const QString& message)
{
    std::fflush(stdout); // results and messages in the order in which they came
    write(stderr, QStringLiteral("%1: %2\n").arg(QCoreApplication::applicationName(), message));
}

void installMessageHandler()
{
    qInstallMessageHandler(printLibraryMessage);
}

SilencedWarnings::SilencedWarnings()
    : m_PreviousHandler(qInstallMessageHandler(ignoreLibraryMessage))
{
}

SilencedWarnings::~SilencedWarnings()
{
    qInstallMessageHandler(m_PreviousHandler);
}

bool flushResult()
{
    return std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
}

int finishOutput(int status)
{
    if (flushResult())
        return status;
    printMessage(QStringLiteral("cannot write the result: %1")
                     .arg(QString::fromLocal8Bit(std::strerror(errno))));
    return UnusableInput;
}
