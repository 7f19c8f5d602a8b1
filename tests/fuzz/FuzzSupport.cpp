#include "FuzzSupport.h"

#include <QFile>

#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    // Warnings are made, since that is code of the project, and go nowhere.
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
        require(type != QtFatalMsg, qPrintable(text));
    });
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere");
    qputenv("QT_QPA_PLATFORM", "offscreen");
    return 0;
}

QByteArray FuzzInput::takeLine()
{
    const int end = m_Rest.indexOf('\n');
    const QByteArray line = m_Rest.left(end);
    m_Rest = end < 0 ? QByteArray() : m_Rest.mid(end + 1);
    return line;
}

void FuzzFolder::write(const QString& name, const QByteArray& bytes) const
{
    QFile file(path() + name);
    require(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size(), "a file written");
}

void require(bool isSo, const char* expected)
{
    if (isSo)
        return;
    std::fprintf(stderr, "expected: %s\n", expected);
    std::abort();
}
