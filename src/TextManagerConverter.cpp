#include "TextManagerConverter.h"

#include "HeaderKey_p.h"
#include "LanguageDefinitions.h"

#include <QDebug>

namespace
{

/** As headerKey(), with the warning for a value that is no enumerator. */
QString checkedHeaderKey(TextManagerDefinitions::HeaderInfo headerInfo)
{
    const QString key = headerKey(headerInfo);
    if (key.isEmpty())
        qWarning() << "unknown Header Url :" << static_cast<int>(headerInfo);
    return key;
}

} // namespace

TextManagerConverter::TextManagerConverter(const QString& languageName, QJsonObject& jsonObject)
    : m_JsonObject(jsonObject)
    , m_StrLanguage(languageName)
{
    // A string value, not a literal: the message is shown in double quotes.
    if (jsonObject.isEmpty())
        qWarning() << QStringLiteral("empty jsonObject passed");
}

TextManagerConverter::~TextManagerConverter() = default;

QString TextManagerConverter::getText(const QString& textUrl, bool& ok) const
{
    return m_LanguageInformation.getObject(textUrl, ok, m_JsonObject,
                                           LanguageDefinitions::getJsonContentName(),
                                           LanguageDefinitions::getJsonTextName());
}

QString TextManagerConverter::getComment(const QString& textUrl, bool& ok) const
{
    return m_LanguageInformation.getObject(textUrl, ok, m_JsonObject,
                                           LanguageDefinitions::getJsonContentName(),
                                           LanguageDefinitions::getJsonCommentName());
}

QStringList TextManagerConverter::getAvailableUrls() const
{
    return m_LanguageInformation.getAvailableUrls(m_JsonObject);
}

QString TextManagerConverter::getHeaderText(TextManagerDefinitions::HeaderInfo headerInfo) const
{
    bool ok = false;
    return m_LanguageInformation.getObject(checkedHeaderKey(headerInfo), ok, m_JsonObject,
                                           LanguageDefinitions::getJsonHeaderName(), QString());
}

TextManagerDefinitions::SetReturnValue
TextManagerConverter::setHeaderText(TextManagerDefinitions::HeaderInfo headerInfo,
                                    const QString& text)
{
    const QString key = checkedHeaderKey(headerInfo);
    QString path = LanguageDefinitions::getJsonHeaderName();
    if (!key.isEmpty())
        path += LanguageDefinitions::getUrlSeparator() + key;
    return m_LanguageInformation.setJsonValue(path, text, m_JsonObject);
}

TextManagerDefinitions::SetReturnValue TextManagerConverter::setText(const QString& textUrl,
                                                                     const QString& text)
{
    return setNodeProperty(textUrl, LanguageDefinitions::getJsonTextName(), text);
}

TextManagerDefinitions::SetReturnValue TextManagerConverter::setComment(const QString& textUrl,
                                                                        QString& comment)
{
    return setNodeProperty(textUrl, LanguageDefinitions::getJsonCommentName(), comment);
}

QString TextManagerConverter::createJsonKeysFromUrl(const QString& textUrl)
{
    const QString& separator = LanguageDefinitions::getUrlSeparator();
    const QStringList keys = textUrl.split(separator);
    if (keys.size() < 2)
        return QString();
    return keys.join(separator + LanguageDefinitions::getJsonChildsKey() + separator);
}

bool TextManagerConverter::replaceContent(QJsonObject& content)
{
    const QString& contentKey = LanguageDefinitions::getJsonContentName();
    m_JsonObject.remove(contentKey);
    if (m_JsonObject.contains(contentKey))
        return true;
    m_JsonObject.insert(contentKey, content);
    return !m_JsonObject.contains(contentKey);
}

void TextManagerConverter::clearContent()
{
    m_JsonObject.insert(LanguageDefinitions::getJsonContentName(), QJsonObject());
}

TextManagerDefinitions::SetReturnValue
TextManagerConverter::setNodeProperty(const QString& textUrl, const QString& propertyName,
                                      const QString& value)
{
    const QStringList path = {LanguageDefinitions::getJsonContentName(),
                              createJsonKeysFromUrl(textUrl), propertyName};
    return m_LanguageInformation.setJsonValue(path.join(LanguageDefinitions::getUrlSeparator()),
                                              value, m_JsonObject);
}
