#pragma once

#include <QMessageLogContext>
#include <QString>
#include <QStringList>

#include <functional>

/**
 * Takes the messages that are logged while it lives, from whatever thread, away from the test's
 * log. One at a time.
 */
class WarningCapture
{
public:
    /** @param note finds out, while a message is logged, what is added to its text. */
    explicit WarningCapture(std::function<QString(const QString&)> note = {});
    ~WarningCapture();
    Q_DISABLE_COPY_MOVE(WarningCapture)

    /**
     * The texts so far, in their order, which are then forgotten. What is not as every message of
     * the library has to be (a warning of the category "default" with file, line and function) has
     * a text that says so.
     */
    QStringList take();

private:
    static void handle(QtMsgType type, const QMessageLogContext& context, const QString& text);

    QtMessageHandler m_PreviousHandler;
};
