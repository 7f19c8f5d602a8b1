#include "WarningCapture.h"

#include <QMutex>

#include <cstring>
#include <utility>

namespace
{

QMutex mutex;
QStringList texts;
std::function<QString(const QString&)> noteOf;

} // namespace

WarningCapture::WarningCapture(std::function<QString(const QString&)> note)
    : m_PreviousHandler(qInstallMessageHandler(handle))
{
    take();
    noteOf = std::move(note);
}

WarningCapture::~WarningCapture()
{
    qInstallMessageHandler(m_PreviousHandler);
}

QStringList WarningCapture::take()
{
    const QMutexLocker locker(&mutex);
    return std::exchange(texts, {});
}

void WarningCapture::handle(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    const bool isWarning = type == QtWarningMsg && std::strcmp(context.category, "default") == 0;
    const bool isLocated =
        context.file != nullptr && context.line > 0 && context.function != nullptr;
    const QString asInQt5 = QString(text).replace(QLatin1String("QList("), QLatin1String("(")) +
                            (noteOf ? noteOf(text) : QString());
    const QMutexLocker locker(&mutex);
    texts.append(isWarning && isLocated ? asInQt5
                                        : QStringLiteral("not a located warning: %1").arg(asInQt5));
}
