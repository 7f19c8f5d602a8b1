#pragma once

#include <QJSValue>
#include <QObject>

class QQmlEngine;
class Texts;

/** What Texts.text() calls. Not part of Texts, where QML would see a second way to call it. */
class TextFunction : public QObject
{
    Q_OBJECT

public:
    /** A JavaScript function of one URL, which holds what it needs. */
    static QJSValue makeFor(Texts& texts, QQmlEngine& engine);

    /**
     * The text at @p textUrl; where neither the language nor a fallback has one, what
     * Texts::substituteFor() makes of the URL, with a warning the first time that names the QML
     * file and line of the call.
     */
    Q_INVOKABLE QString textAt(const QString& textUrl) const;

private:
    TextFunction(Texts& texts, QQmlEngine& engine);
    void report(const QString& textUrl) const;

    Texts& m_Texts;
    QQmlEngine& m_Engine;
};
