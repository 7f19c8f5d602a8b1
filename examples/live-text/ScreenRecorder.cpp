#include "ScreenRecorder.h"

#include "ScreenTexts.h"

#include <QCoreApplication>
#include <QPixmap>
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

/** Prints what the visible labels from @p item on show: items that know their text's URL. */
void printLabels(const QQuickItem& item)
{
    if (!item.isVisible())
        return;
    const QVariant url = item.property("url");
    const QVariant text = item.property("text");
    if (url.isValid() && text.isValid())
        printLine(url.toString() + QLatin1Char('\t') +
                  text.toString().replace(QLatin1Char('\n'), QLatin1String("\\n")));
    const auto children = item.childItems();
    for (const QQuickItem* child : children)
        printLabels(*child);
}

} // namespace

ScreenRecorder::ScreenRecorder(QQuickWindow& window, const ScreenTexts& texts,
                               const QString& folder)
    : m_Window(window)
    , m_Texts(texts)
    , m_StrFolder(folder)
{
    connect(&texts, &ScreenTexts::changed, this, [this] {
        m_IsChanged = true;
        m_Window.update();
    });
    // A frame shows what all labels made of the change. Queued: a picture is a frame, too.
    connect(&window, &QQuickWindow::frameSwapped, this, &ScreenRecorder::record,
            Qt::QueuedConnection);
}

void ScreenRecorder::record()
{
    if (!m_IsChanged)
        return;
    m_IsChanged = false;
    const QString path = QStringLiteral("%1/live-text-%2.png").arg(m_StrFolder, m_Texts.language());
    // From the screen: where there is no display to draw on, QQuickWindow::grabWindow() sees
    // nothing.
    if (!m_Window.screen()->grabWindow(m_Window.winId()).save(path)) {
        std::fprintf(stderr, "live-text: cannot write %s\n", qUtf8Printable(path));
        QCoreApplication::exit(2);
        return;
    }
    printLabels(*m_Window.contentItem());
    printLine(QStringLiteral("shown ") + m_Texts.language());
    std::fflush(stdout);
}
