#include "TranslateableTextHelper.h"

#include "CompactJson_p.h"
#include "LanguageDefinitions.h"

#include <QDebug>
#include <QJsonDocument>
#include <QJsonParseError>
#include <QPointer>

TranslateableTextHelper::TranslateableTextHelper(const QString& strLanguage, QObject* parent)
    : QObject(parent)
    , m_StrCurrentLanguage(strLanguage)
    , m_StrDefaultLanguage(LanguageDefinitions::getFirstFallbackLanguageFilename())
    , m_StrLastFallbackLanguage(LanguageDefinitions::getSecondFallbackLanguageFilename())
{
}

TranslateableTextHelper::~TranslateableTextHelper() = default;

bool TranslateableTextHelper::setTranslateableTextObject(const QMap<QString, QVariant>& map)
{
    m_TranslateableTextObject = map;
    setValid(checkTranslateableTextObject());
    // Whoever hears of the new text may delete this object.
    const QPointer<TranslateableTextHelper> self(this);
    extractCurrentText();
    return self && isValid();
}

bool TranslateableTextHelper::setTranslateableTextObject(const QJsonObject& object)
{
    // What lies below a member is no text, and may be too deep to be made variants of.
    QVariantMap texts;
    for (auto member = object.constBegin(); member != object.constEnd(); ++member) {
        const bool isContainer = member.value().isObject() || member.value().isArray();
        texts.insert(member.key(), isContainer ? QVariant() : member.value().toVariant());
    }
    return setTranslateableTextObject(texts);
}

bool TranslateableTextHelper::setTranslateableTextObject(const QVariant& variant)
{
    if (variant.canConvert<QVariantMap>())
        return setTranslateableTextObject(variant.toMap());
    qWarning() << "Cannot convert variant to variant map:" << variant << "!";
    resetCurrentSettings();
    return isValid();
}

bool TranslateableTextHelper::setTranslateableTextObject(const QString& json)
{
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(json.toUtf8(), &parseError);
    if (parseError.error != QJsonParseError::NoError) {
        resetCurrentSettings();
        qWarning() << "Error on parsing json:" << parseError.errorString() << "!";
        return isValid();
    }
    if (document.isObject())
        return setTranslateableTextObject(document.object());
    resetCurrentSettings();
    qWarning() << "Json document does not contain an object!";
    return isValid();
}

bool TranslateableTextHelper::checkTranslateableTextObject()
{
    removeEmptyLanguages();
    return m_TranslateableTextObject.contains(m_StrLastFallbackLanguage);
}

void TranslateableTextHelper::removeEmptyLanguages()
{
    QMap<QString, QVariant> texts;
    for (auto entry = m_TranslateableTextObject.constBegin();
         entry != m_TranslateableTextObject.constEnd(); ++entry) {
        const QString text = entry.value().toString();
        if (!text.isEmpty() || entry.key() == m_StrLastFallbackLanguage)
            texts.insert(entry.key(), text);
    }
    m_TranslateableTextObject = texts;
}

QMap<QString, QVariant> TranslateableTextHelper::getTranslateableTextObject() const
{
    return m_TranslateableTextObject;
}

QString TranslateableTextHelper::getTranslateableTextObjectAsJsonString() const
{
    return toCompactJson(m_TranslateableTextObject);
}

void TranslateableTextHelper::setText(const QString& language, const QString& text)
{
    m_TranslateableTextObject.insert(language, text);
    extractCurrentText();
}

bool TranslateableTextHelper::isValid() const
{
    return m_bValid;
}

void TranslateableTextHelper::setValid(bool valid)
{
    m_bValid = valid;
}

QStringList TranslateableTextHelper::getAvailableLanguages() const
{
    return m_TranslateableTextObject.keys();
}

QString TranslateableTextHelper::currentText() const
{
    return m_StrCurrentText;
}

void TranslateableTextHelper::setCurrentText(const QString& text)
{
    if (text == m_StrCurrentText)
        return;
    m_StrCurrentText = text;
    Q_EMIT currentTextChanged();
}

QString TranslateableTextHelper::getCurrentLanguage() const
{
    return m_StrCurrentLanguage;
}

QString TranslateableTextHelper::getDefaultLanguage() const
{
    return m_StrDefaultLanguage;
}

QString TranslateableTextHelper::getLastFallbackLanguage() const
{
    return m_StrLastFallbackLanguage;
}

QString TranslateableTextHelper::getPossibleLanguage(const QString& language) const
{
    const Entry entry = findEntry(language);
    return isFound(entry) ? entry.key() : QString();
}

QString TranslateableTextHelper::getText(const QString& language) const
{
    const QString& wantedLanguage = language.isEmpty() ? m_StrCurrentLanguage : language;
    const Entry entry = findEntry(wantedLanguage);
    if (isFound(entry))
        return entry.value().toString();
    qWarning() << "No suitable text found in translateable text object for language"
               << wantedLanguage << ":" << m_TranslateableTextObject << "!";
    return QString();
}

void TranslateableTextHelper::extractCurrentText()
{
    const Entry entry = findEntry(m_StrCurrentLanguage);
    if (isFound(entry)) {
        setCurrentText(entry.value().toString());
        return;
    }
    qWarning() << "No suitable language found in translateable text object:"
               << m_TranslateableTextObject << "!";
    setCurrentText(QString());
}

void TranslateableTextHelper::resetCurrentSettings()
{
    m_TranslateableTextObject.clear();
    m_StrCurrentText.clear();
    setValid(false);
}

void TranslateableTextHelper::languageGotReloaded(const QString& strLanguage)
{
    if (strLanguage == m_StrCurrentLanguage)
        return;
    m_StrCurrentLanguage = strLanguage;
    extractCurrentText();
}

/**
 * The entry that answers for @p language, after a warning when there is none. It is an entry, and
 * not the key that getPossibleLanguage() gives, because the empty key may be one of the object's.
 */
TranslateableTextHelper::Entry TranslateableTextHelper::findEntry(const QString& language) const
{
    for (const QString& key : {language, m_StrDefaultLanguage, m_StrLastFallbackLanguage}) {
        const Entry entry = m_TranslateableTextObject.constFind(key);
        if (isFound(entry))
            return entry;
    }
    qWarning() << "Unable to find suitable language!";
    return m_TranslateableTextObject.constEnd();
}

bool TranslateableTextHelper::isFound(const Entry& entry) const
{
    return entry != m_TranslateableTextObject.constEnd();
}
