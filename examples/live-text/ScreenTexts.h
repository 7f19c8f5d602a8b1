#pragma once

#include <QHash>
#include <QObject>
#include <QString>
#include <QStringList>

class TextManagerBase;
class TranslateableTextHelper;

/**
 * The texts of a screen: for each text URL an object whose property currentText a label binds to.
 *
 * The language is the text manager's own, that of the device, until chooseLanguage() takes another
 * one. When it changes, and when the language files are loaded again, every label follows.
 */
class ScreenTexts : public QObject
{
    Q_OBJECT
    /** Keys of the languages that a user can choose. */
    Q_PROPERTY(QStringList languages READ languages NOTIFY changed)
    /** Key of the device's language. */
    Q_PROPERTY(QString deviceLanguage READ deviceLanguage NOTIFY changed)
    /** Key of the language that was chosen; empty for the device's. */
    Q_PROPERTY(QString chosenLanguage READ chosenLanguage NOTIFY changed)
    /** Key of the language that is shown. */
    Q_PROPERTY(QString language READ language NOTIFY changed)
    /** Whether the language that is shown is written from right to left. */
    Q_PROPERTY(bool isRightToLeft READ isRightToLeft NOTIFY changed)

public:
    /** @param textManager must outlive this object. */
    explicit ScreenTexts(TextManagerBase& textManager);

    /** The object for the text at @p url, a TranslateableTextHelper that belongs to this object. */
    Q_INVOKABLE QObject* of(const QString& url);
    /** The name of a language in itself, as its speakers look for it. */
    Q_INVOKABLE static QString nameOfLanguage(const QString& language);
    /** Shows another language than the device's; empty: the device's again. */
    Q_INVOKABLE void chooseLanguage(const QString& language);

    QStringList languages() const;
    QString deviceLanguage() const;
    QString chosenLanguage() const { return m_StrChosenLanguage; }
    QString language() const { return m_StrLanguage; }
    bool isRightToLeft() const;

Q_SIGNALS:
    /** What the objects for the texts follow. */
    void languageChanged(const QString& language);
    /** Emitted when any property, or the language files, may have changed. */
    void changed();

private:
    void exportTexts();
    void updateLanguage();

    TextManagerBase& m_TextManager;
    QString m_StrChosenLanguage;
    QString m_StrLanguage;
    QHash<QString, TranslateableTextHelper*> m_Texts; ///< by URL
};
