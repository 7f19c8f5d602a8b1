#pragma once

#include "LanguageInformation.h"
#include "TextManagerDefinitions.h"
#include "TextManagerLibraryExport.h"

#include <QJsonObject>
#include <QObject>
#include <QString>
#include <QStringList>

/**
 * Edits one language document in memory: its texts and comments by text URL, its header, and its
 * content tree as a whole.
 *
 * It works on the caller's document: every change is there as soon as the operation returns, and
 * saving it is the caller's business. There are no fallback languages and no files.
 *
 * **Threads.** There is no lock: the converter and the document are used from one thread at a time.
 *
 * **Ownership.** The document belongs to the caller and must outlive the converter. The object has
 * no QObject parent.
 */
class TEXTMANAGERLIBRARY_EXPORT TextManagerConverter : public QObject
{
    Q_OBJECT

public:
    /**
     * Binds to @p jsonObject, the language document of @p languageName. An empty one is a warning,
     * "empty jsonObject passed", and may be edited all the same.
     */
    TextManagerConverter(const QString& languageName, QJsonObject& jsonObject);
    ~TextManagerConverter() override;

    /**
     * The text of the node at @p textUrl.
     *
     * @param ok set to whether the node has a "text"; deliberately also true when it is no string,
     * which is a warning.
     * @return the text; empty when there is none.
     */
    QString getText(const QString& textUrl, bool& ok) const;
    /** The comment of the node at @p textUrl; @p ok and the failures are those of getText(). */
    QString getComment(const QString& textUrl, bool& ok) const;
    /** The URLs of all text nodes, as LanguageInformation::getAvailableUrls() orders them. */
    QStringList getAvailableUrls() const;

    /**
     * One field of the header; empty when it is missing or no string.
     *
     * A value that is no enumerator is a warning, "unknown Header Url :" with the value, and
     * deliberately reads the header's member with the empty key.
     */
    QString getHeaderText(TextManagerDefinitions::HeaderInfo headerInfo) const;
    /**
     * Writes one field of the header, as LanguageInformation::setJsonValue() does.
     *
     * A value that is no enumerator is a warning, "unknown Header Url :" with the value, and
     * deliberately aims at "Header" itself: an Error when there is one, else it is created holding
     * the string, with Success.
     */
    TextManagerDefinitions::SetReturnValue
    setHeaderText(TextManagerDefinitions::HeaderInfo headerInfo, const QString& text);

    /**
     * Writes the text of the node at @p textUrl, as LanguageInformation::setJsonValue() does: the
     * path's missing nodes are created, and Error, for a "text" that is no string or something on
     * the way that is no object, leaves the document as it was.
     *
     * A new node has nothing but the text: it is not listed as a URL before it has a comment too.
     *
     * A URL of one key deliberately does not write to the top-level node of that name, which
     * getText() reads, but to the node with the empty key: its storage path is empty. Reach a
     * top-level node through LanguageInformation::setJsonValue() with `Content/Menu/text`.
     */
    TextManagerDefinitions::SetReturnValue setText(const QString& textUrl, const QString& text);
    /** Writes the comment of a node, as setText() writes its text. @p comment is not changed; it is
     * no const reference because the interface has always been so. */
    TextManagerDefinitions::SetReturnValue setComment(const QString& textUrl, QString& comment);

    /**
     * The storage path of @p textUrl, with "childs" between every two keys: `Menu/childs/Save` for
     * `Menu/Save`. Deliberately empty for a URL of one key.
     */
    QString createJsonKeysFromUrl(const QString& textUrl);

    /**
     * Puts a copy of @p content in place of the content tree; all else in the document stays.
     *
     * @return deliberately inverted: false when the new content is in place, true when it is not.
     */
    bool replaceContent(QJsonObject& content);
    /** Makes the content tree an empty object; all else in the document stays. */
    void clearContent();

private:
    TextManagerDefinitions::SetReturnValue
    setNodeProperty(const QString& textUrl, const QString& propertyName, const QString& value);

    QJsonObject& m_JsonObject; ///< the caller's document
    QString m_StrLanguage;     ///< the language's name; kept, and read by no operation
    LanguageInformation m_LanguageInformation;
};
