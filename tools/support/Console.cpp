#include "Console.h"

#include <QCoreApplication>
#include <QJsonDocument>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include <stdio_ext.h>
#include <unistd.h>

namespace
{

/** Writes bytes that a text or a file name may have a part in. */
void write(std::FILE* stream, bool isTerminal, const QByteArray& bytes)
{
    const QByteArray shown = isTerminal ? withVisibleControls(bytes) : bytes;
    std::fwrite(shown.constData(), 1, static_cast<std::size_t>(shown.size()), stream);
}

void printLibraryMessage(QtMsgType, const QMessageLogContext&, const QString& message)
{
    printMessage(message);
}

void ignoreLibraryMessage(QtMsgType, const QMessageLogContext&, const QString&) {}

} // namespace

QString counted(qint64 count, const char* noun)
{
    return QStringLiteral("%1 %2%3").arg(count).arg(QLatin1String(noun),
                                                    QLatin1String(count == 1 ? "" : "s"));
}

QByteArray withVisibleControls(const QByteArray& utf8)
{
    constexpr int firstPrintable = 0x20;
    constexpr int deleteCharacter = 0x7f;
    const auto byteAt = [&](int index) {
        return index < utf8.size() ? static_cast<unsigned char>(utf8.at(index)) : 0;
    };
    QByteArray shown;
    shown.reserve(utf8.size());
    for (int index = 0; index < utf8.size(); ++index) {
        int byte = byteAt(index);
        const bool isLayout = byte == '\n' || byte == '\t';
        // The controls from U+0080 to U+009F, one of which begins sequences, too.
        const bool isHighControl =
            byte == 0xc2 && byteAt(index + 1) >= 0x80 && byteAt(index + 1) <= 0x9f;
        if (isHighControl)
            byte = byteAt(++index);
        if (isHighControl || (byte < firstPrintable && !isLayout) || byte == deleteCharacter)
            shown += "\\u00" + QByteArray(1, static_cast<char>(byte)).toHex();
        else
            shown += static_cast<char>(byte);
    }
    return shown;
}

void printPart(const QByteArray& part)
{
    static const bool isOnTerminal = ::isatty(STDOUT_FILENO) != 0;
    write(stdout, isOnTerminal, part);
}

void printResult(const QByteArray& line)
{
    printPart(line);
    printPart("\n");
}

void printResult(const QString& line)
{
    printResult(line.toUtf8());
}

void printPaintedResult(const QString& lines)
{
    const QByteArray bytes = lines.toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stdout);
}

void printResult(const QJsonObject& object)
{
    printResult(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

void printMessage(const QString& message)
{
    std::fflush(stdout); // results and messages in the order in which they came
    static const bool isOnTerminal = ::isatty(STDERR_FILENO) != 0;
    write(stderr, isOnTerminal,
          QStringLiteral("%1: %2\n").arg(QCoreApplication::applicationName(), message).toUtf8());
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

QString takeResultFault()
{
    if (flushResult())
        return QString();
    const QString reason = QString::fromLocal8Bit(std::strerror(errno));
    __fpurge(stdout); // so that the end of the program does not try again
    std::clearerr(stdout);
    return reason;
}

int finishOutput(int status)
{
    const QString fault = takeResultFault();
    if (fault.isEmpty())
        return status;
    printMessage(QStringLiteral("cannot write the result: %1").arg(fault));
    return UnusableInput;
}
