#include "Input.h"

#include "Console.h"

#include <QFile>

#include <cerrno>
#include <cstdlib>
#include <cstring>

namespace
{

/** As long as a document may be; what is made of one takes a multiple of that. */
constexpr int limitInBytes = 512 * 1024 * 1024;

void reportUnreadable(const QString& name, int error)
{
    printMessage(QStringLiteral("cannot read %1: %2.")
                     .arg(name, QString::fromLocal8Bit(std::strerror(error))));
}

} // namespace

std::unique_ptr<Input> Input::open(const QString& path)
{
    if (path == QLatin1String("-"))
        return std::unique_ptr<Input>(new Input(nameOf(path), stdin));
    std::FILE* file = std::fopen(QFile::encodeName(path).constData(), "r");
    if (file != nullptr)
        return std::unique_ptr<Input>(new Input(path, file));
    reportUnreadable(path, errno);
    return nullptr;
}

QString Input::nameOf(const QString& path)
{
    return path == QLatin1String("-") ? QStringLiteral("standard input") : path;
}

Input::Input(const QString& name, std::FILE* file)
    : m_StrName(name)
    , m_File(file)
{
}

Input::~Input()
{
    if (m_File != stdin)
        std::fclose(m_File);
}

std::optional<QByteArray> Input::readAll()
{
    QByteArray bytes;
    char part[64 * 1024];
    while (bytes.size() <= limitInBytes) {
        const std::size_t size = std::fread(part, 1, sizeof part, m_File);
        bytes.append(part, static_cast<int>(size));
        if (std::feof(m_File))
            return bytes;
        if (std::ferror(m_File)) {
            reportFailure(errno);
            return std::nullopt;
        }
    }
    reportFailure(EFBIG);
    return std::nullopt;
}

bool Input::readLine(QByteArray& line)
{
    // Qt reads lines from a pipe byte by byte from the system, and the streams of C++ know no
    // reason of a failure. getline() would keep a line without end.
    constexpr int longestLine = 64 * 1024 * 1024;
    line.clear();
    m_IsLineTooLong = false;
    int byte = getc_unlocked(m_File);
    const bool isAtEnd = byte == EOF;
    for (; byte != EOF && byte != '\n'; byte = getc_unlocked(m_File)) {
        m_IsLineTooLong = line.size() == longestLine;
        if (!m_IsLineTooLong)
            line.append(static_cast<char>(byte));
    }
    if (std::ferror(m_File))
        reportFailure(errno);
    return !isAtEnd && !m_IsBroken;
}

void Input::reportFailure(int error)
{
    m_IsBroken = true;
    reportUnreadable(m_StrName, error);
}
