#pragma once

#include "ReloadListener.h"

#include <QJSValue>
#include <QObject>
#include <qqml.h>
#include <QSet>
#include <QString>
#include <QStringList>

class QQmlEngine;
class TextManagerBase;

/** The texts of one QML engine, `Texts` in QML, in the language that it shows. */
class Texts : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(Texts)
    QML_SINGLETON
    QML_UNCREATABLE("Texts is there once for each engine")

    /** The function text(url). It is a property so that a binding that calls it is notified. */
    Q_PROPERTY(QJSValue text READ text NOTIFY changed)
    /** Key of the language that is shown. */
    Q_PROPERTY(QString language READ language NOTIFY changed)
    /** Key of the text manager's own language. */
    Q_PROPERTY(QString deviceLanguage READ deviceLanguage NOTIFY changed)
    /** Keys of the languages that a user can choose: those that are loaded but "POSIX". */
    Q_PROPERTY(QStringList languages READ languages NOTIFY changed)
    /** Whether the language that is shown is written from right to left. */
    Q_PROPERTY(bool isRightToLeft READ isRightToLeft NOTIFY changed)
    /** Key of a language to show in place of the text manager's own; empty: that one. */
    Q_PROPERTY(QString chosenLanguage READ chosenLanguage WRITE setChosenLanguage NOTIFY changed)

public:
    /** Belongs to @p engine. @p textManager must outlive it. */
    Texts(QQmlEngine& engine, TextManagerBase& textManager);
    /** The object that @p engine has; null without one. */
    static Texts* of(const QQmlEngine& engine);

    /** The name of a language in itself, as its speakers look for it; the key where it has none. */
    Q_INVOKABLE static QString nameOf(const QString& language);

    QJSValue text() const { return m_TextFunction; }
    QString language() const;
    QString deviceLanguage() const { return m_StrDeviceLanguage; }
    QStringList languages() const;
    bool isRightToLeft() const;
    QString chosenLanguage() const { return m_StrChosenLanguage; }
    void setChosenLanguage(const QString& language);

    const TextManagerBase& textManager() const { return m_TextManager; }
    /** What texts are looked up with, never empty: an empty key would be replaced by the current
     * language, which another thread may be changing. */
    QString lookUpKey() const;

    /** Whether this is the first time that @p textUrl is found to have no text. */
    bool isNewlyMissing(const QString& textUrl);
    /** What is shown where there is no text. */
    static QString substituteFor(const QString& textUrl);

Q_SIGNALS:
    /** Any property, or the text at any URL, may be another one now. */
    void changed();

private:
    void announce();

    QQmlEngine& m_Engine;
    const TextManagerBase& m_TextManager;
    QString m_StrDeviceLanguage;
    QString m_StrChosenLanguage;
    QJSValue m_TextFunction;
    QSet<QString> m_MissingUrls; ///< those that were reported
    ReloadListener m_ReloadListener;
};
