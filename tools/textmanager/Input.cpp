#include "Input.h"

#include "Console.h"

#include <QFile>

#include <cerrno>
#include <cstdlib>
#include <cstring>

namespace
{

void reportUnreadable(const QString& name)
{
    printMessage(QStringLiteral("cannot read %1: %2.")
                     .arg(name, QString::fromLocal8Bit(std::strerror(errno))));
}

} // namespace

std::unique_ptr<Input> Input::open(const QString& path)
{
    if (path == QLatin1String("-"))
        return std::unique_ptr<Input>(new Input(QStringLiteral("standard input"), stdin));
    std::FILE* file = std::fopen(QFile::encodeName(path).constData(), "r");
    if (file != nullptr)
        return std::unique_ptr<Input>(new Input(path, file));
    reportUnreadable(path);
    return nullptr;
}

Input::Input(const QString& name, std::FILE* file)
    : m_StrName(name)
    , m_File(file)
{
}

Input::~Input()
{
    std::free(m_Line);
    if (m_File != stdin)
        std::fclose(m_File);
}

std::optional<QByteArray> Input::readAll()
{
    QByteArray bytes;
    char part[64 * 1024];
    while (const std::size_t size = std::fread(part, 1, sizeof part, m_File))
        bytes.append(part, static_cast<int>(size));
    if (!isBroken())
        return bytes;
    reportUnreadable(m_StrName);
    return std::nullopt;
}

bool Input::readLine(QByteArray& line)
{
    // Qt reads lines from a pipe byte by byte, and the streams of C++ know no reason of a failure.
    const auto size = ::getline(&m_Line, &m_LineSize, m_File);
    if (size < 0) {
        if (isBroken())
            reportUnreadable(m_StrName);
        return false;
    }
    line = QByteArray(m_Line, static_cast<int>(size));
    if (line.endsWith('\n'))
        line.chop(1);
    return true;
}
