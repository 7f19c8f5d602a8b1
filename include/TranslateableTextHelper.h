#pragma once

#include "TextManagerLibraryExport.h"

#include <QJsonObject>
#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>

/**
 * Keeps one text in several languages, a translateable text object, and shows the text of the
 * current language as a property that a user interface can bind to.
 *
 * A translateable text object maps language keys to texts: `{"POSIX": "Save", "de_DE":
 * "Sichern"}`. It is valid when it has the key "POSIX", whether or not the text there is empty.
 * Validity is a statement only: an object that is not valid is kept and answers all the same.
 *
 * Where an operation chooses a language, it takes the first of these that is a key of the object,
 * compared exactly and case-sensitively:
 *
 * 1. the wanted language,
 * 2. "en_US",
 * 3. "POSIX".
 *
 * An empty text under the chosen key is the answer: the choice looks at the keys, not at the texts.
 *
 * **Language.** The object makes no connections of its own. Its owner connects the private slot
 * languageGotReloaded(QString) to a signal that carries the new language key, with a string-based
 * connect, which reaches private slots:
 *
 *     connect(device, SIGNAL(languageChanged(QString)),
 *             helper, SLOT(languageGotReloaded(QString)));
 *
 * **Threads.** No lock: use it in the thread that the QObject lives in.
 *
 * **Slots on currentTextChanged()** may call any operation of the object, and may delete it.
 */
class TEXTMANAGERLIBRARY_EXPORT TranslateableTextHelper : public QObject
{
    Q_OBJECT
    /** The text in the current language; what is written stays until a text is chosen again. */
    Q_PROPERTY(QString currentText READ currentText WRITE setCurrentText NOTIFY currentTextChanged)

public:
    /**
     * Starts empty and not valid.
     *
     * @param strLanguage key of the current language.
     */
    TranslateableTextHelper(const QString& strLanguage, QObject* parent);
    ~TranslateableTextHelper() override;

    /**
     * Replaces the object by @p map, cleans and checks it as checkTranslateableTextObject() does,
     * then chooses the current text out of it.
     *
     * @return isValid() afterwards; false when a slot on currentTextChanged() deleted the object.
     */
    bool setTranslateableTextObject(const QMap<QString, QVariant>& map);
    /** As above, with the members of @p object as texts by language. */
    bool setTranslateableTextObject(const QJsonObject& object);
    /**
     * As above, with the map that QVariant::toMap() makes of @p variant.
     *
     * @return isValid() afterwards: false, with a warning and after resetCurrentSettings(), when
     * QVariant::canConvert() has no way from the variant to a map. A string in a variant is no map,
     * and deliberately not parsed.
     */
    bool setTranslateableTextObject(const QVariant& variant);
    /**
     * As above, with the object that the JSON text @p json holds.
     *
     * A string literal or a QByteArray fits this overload and the one for variants alike, which is
     * an error of the compiler: make a QString of it.
     *
     * @return isValid() afterwards: false, with a warning and after resetCurrentSettings(), when
     * the text is no JSON or no object.
     */
    bool setTranslateableTextObject(const QString& json);

    /**
     * Cleans the object with removeEmptyLanguages().
     *
     * @return whether the object has the key "POSIX". Deliberately, isValid() stays as it was: the
     * operations that set the object store the result.
     */
    bool checkTranslateableTextObject();

    /**
     * Makes a string of every value and removes the languages whose text is empty or no string.
     * "POSIX" deliberately stays, if need be with an empty text: its key makes the object valid.
     * Neither the current text nor isValid() follows.
     */
    void removeEmptyLanguages();

    /** A copy of the object, language key to text. */
    QMap<QString, QVariant> getTranslateableTextObject() const;
    /** The object as JSON in one line without blanks; "{}" when it is empty. */
    QString getTranslateableTextObjectAsJsonString() const;

    /**
     * Sets the text of one language, then chooses the current text again. Deliberately unchecked:
     * isValid() stays as it was, and an empty @p text stays until the next check.
     */
    void setText(const QString& language, const QString& text);

    /** The result of the last set; false before. */
    bool isValid() const;
    /** Sets what isValid() answers, and nothing else. */
    void setValid(bool valid);

    /** The languages of the object in ascending order. */
    QStringList getAvailableLanguages() const;

    /** The text in the current language. */
    QString currentText() const;
    /** Shows @p text as the current text, whatever the object says; signals only a change. */
    void setCurrentText(const QString& text);

    /** Key of the current language. */
    QString getCurrentLanguage() const;
    /** The language that is tried after the wanted one: "en_US". */
    QString getDefaultLanguage() const;
    /** The language that is tried last: "POSIX". */
    QString getLastFallbackLanguage() const;

    /**
     * The language that answers for @p language, in the order above.
     *
     * @return its key; empty, with the warning "Unable to find suitable language!", when there is
     * none. Deliberately no other language of the object is taken then.
     */
    QString getPossibleLanguage(const QString& language) const;

    /**
     * The text for @p language, or for the current language when that is empty, in the order above.
     *
     * @return the text; empty, with two warnings, when no language answers.
     */
    QString getText(const QString& language) const;

    /**
     * Chooses the current text for the current language, in the order above; it is set empty, with
     * two warnings, when no language answers.
     */
    void extractCurrentText();

    /**
     * Empties the object and the current text and makes the object not valid; the current language
     * stays. Deliberately silent: currentTextChanged() is not emitted, although the text changes.
     */
    void resetCurrentSettings();

Q_SIGNALS:
    /** Emitted by setCurrentText(), and what calls it, after the text has become another one. */
    void currentTextChanged();

private Q_SLOTS:
    /** Makes @p strLanguage the current language and chooses the current text again; does nothing
     * when it is the current language already. */
    void languageGotReloaded(const QString& strLanguage);

private:
    using Entry = QMap<QString, QVariant>::const_iterator;

    Entry findEntry(const QString& language) const;
    bool isFound(const Entry& entry) const;

    QMap<QString, QVariant> m_TranslateableTextObject; ///< language key to text
    QString m_StrCurrentLanguage;                      ///< key of the current language
    QString m_StrCurrentText;                          ///< value of the property
    bool m_bValid = false;                             ///< result of the last check
    QString m_StrDefaultLanguage;                      ///< tried after the wanted language
    QString m_StrLastFallbackLanguage;                 ///< tried last; its key makes valid
};
