#pragma once

#include <QObject>
#include <QString>

class QQmlEngine;
class QQuickWindow;

/**
 * Writes down what a screen shows, in every language that it shows: a picture in a folder, and on
 * standard output a line "URL<tab>whole<tab>text" for each label ("cut" where the text has not
 * enough room, and "\n" for a line break) and then a line "shown LANGUAGE".
 */
class ScreenRecorder : public QObject
{
    Q_OBJECT

public:
    /** All must outlive this object. Ends the program when a picture cannot be written. */
    ScreenRecorder(QQuickWindow& window, QQmlEngine& engine, const QString& folder);

private Q_SLOTS:
    void changed();

private:
    void record();

    QQuickWindow& m_Window;
    const QObject& m_Texts; ///< the module's singleton
    const QString m_StrFolder;
    bool m_IsChanged = true; ///< since the last picture
};
