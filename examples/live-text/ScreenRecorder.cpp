#include "ScreenRecorder.h"

#include <QCoreApplication>
#include <QPixmap>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QScreen>

#include <cstdio>

namespace
{

void printLine(const QString& line)
{
    std::fprintf(stdout, "%s\n", line.toUtf8().constData());
}

/** Whether all of a label's text can be read. */
bool isWhole(const QQuickItem& label)
{
    const QRectF screen(QPointF(), label.window()->size());
    const QRectF place = label.mapRectToScene(label.boundingRect());
    return screen.contains(place) && !label.property("truncated").toBool();
}

/** Prints what the visible labels from @p item on show: items with a text that know its URL. */
void printLabels(const QQuickItem& item)
{
    if (!item.isVisible())
        return;
    const QVariant url = item.property("url");
    const QVariant text = item.property("text");
    if (url.isValid() && text.isValid())
        printLine(QStringList{url.toString(),
                              isWhole(item) ? QStringLiteral("whole") : QStringLiteral("cut"),
                              text.toString().replace(QLatin1Char('\n'), QLatin1String("\\n"))}
                      .join(QLatin1Char('\t')));
    const auto children = item.childItems();
    for (const QQuickItem* child : children)
        printLabels(*child);
}

} // namespace

ScreenRecorder::ScreenRecorder(QQuickWindow& window, QQmlEngine& engine, const QString& folder)
    : m_Window(window)
    , m_Texts(*engine.singletonInstance<QObject*>(qmlTypeId("TextManager", 1, 0, "Texts")))
    , m_StrFolder(folder)
{
    // The class is the module's own.
    connect(&m_Texts, SIGNAL(changed()), this, SLOT(changed()));
    // A frame shows what all labels made of the change. Queued: a picture is a frame, too.
    connect(&window, &QQuickWindow::frameSwapped, this, &ScreenRecorder::record,
            Qt::QueuedConnection);
}

void ScreenRecorder::changed()
{
    m_IsChanged = true;
    m_Window.update();
}

void ScreenRecorder::record()
{
    if (!m_IsChanged)
        return;
    m_IsChanged = false;
    const QString language = m_Texts.property("language").toString();
    const QString path = QStringLiteral("%1/live-text-%2.png").arg(m_StrFolder, language);
    // From the screen: where there is no display to draw on, QQuickWindow::grabWindow() sees
    // nothing.
    if (!m_Window.screen()->grabWindow(m_Window.winId()).save(path)) {
        std::fprintf(stderr, "live-text: cannot write %s\n", qUtf8Printable(path));
        QCoreApplication::exit(2);
        return;
    }
    printLabels(*m_Window.contentItem());
    printLine(QStringLiteral("shown ") + language);
    std::fflush(stdout);
}
