#pragma once

#include "TextManagerDefinitions.h"
#include "TextManagerLibraryExport.h"

#include <QJsonObject>
#include <QJsonValue>
#include <QPair>
#include <QString>
#include <QStringList>

/**
 * Walks one language document, the parsed top-level object of a language file, by text URL.
 *
 * The class has no state: one object may be used from any thread. No operation keeps the document
 * that it is given, and only setJsonValue() changes it. There is no lock; whoever shares a document
 * between threads guards it.
 *
 * However deep a document or a URL is, the operations take little stack. Qt itself does not: for
 * each level it takes about 50 bytes to free a document, 140 to compare two, 270 to parse one (up
 * to 1024 levels) and 350 to print one.
 *
 * A text URL joins node keys with "/", from a top-level node of "Content" down, without the
 * "childs" levels: `Menu/Save`. Keys are case-sensitive, and empty keys are keys like any other.
 */
class TEXTMANAGERLIBRARY_EXPORT LanguageInformation
{
public:
    LanguageInformation() = default;
    virtual ~LanguageInformation();

    /** Whether @p jsonObject holds @p key with a string as its value. */
    bool checkIfPropertyExists(const QJsonObject& jsonObject, const QString& key) const;

    /** Whether @p jsonValue is a text node, an object whose "text" and "comment" are strings. */
    bool checkIfTextAndCommentExists(const QJsonValue& jsonValue) const;

    /** Whether @p jsonObject holds "childs", whatever the type of its value. */
    bool hasChildKey(const QJsonObject& jsonObject) const;

    /**
     * Reads the value, of whatever JSON type, that @p textUrl names in @p jsonObject.
     *
     * Every key but the last is looked up in the child container of the node before it if that node
     * has one, else in the node itself. The last key is always a member of the node itself: that is
     * where "text" and "comment" live, so `Menu/Save/text` is found and `Menu/Save` is not.
     *
     * @return whether the value was found. If not, @p jsonValue is left as it was. A missing key is
     * silent; a value on the way that is no object is a warning, "Unable to find jsonObject for
     * url:" with the rest of the URL from that value on.
     */
    bool readJsonValue(const QString& textUrl, const QJsonObject& jsonObject,
                       QJsonValue& jsonValue) const;

    /**
     * Reads the string that @p textUrl names in @p jsonObject, as readJsonValue() finds it.
     *
     * @param ok set to whether the URL was found. It deliberately differs from the returned value:
     * for a value that is no string it is true.
     * @param result receives the string; unchanged when none was read.
     * @return whether a string was read. A value of another type is a warning, "Invalid data type
     * of jsonValue for url:" with the URL.
     */
    bool readStringValueFromJson(const QString& textUrl, bool& ok, const QJsonObject& jsonObject,
                                 QString& result) const;

    /**
     * The string at @p textUrl + "/" + @p propertyName inside the root member @p objectName of the
     * document @p jsonObject; an empty @p propertyName adds nothing to the URL.
     *
     * @param ok set to whether the URL was found, as in readStringValueFromJson().
     * @return the string; empty when there is none.
     */
    QString getObject(const QString& textUrl, bool& ok, const QJsonObject& jsonObject,
                      const QString& objectName, const QString& propertyName) const;

    /**
     * The "language" (first) and the "subLanguage" (second) of the document's header. What is
     * missing or no string is empty.
     */
    QPair<QString, QString> getLanguageHeaderInfo(const QJsonObject& jsonObject) const;

    /**
     * The URLs of all text nodes of the document @p jsonObject, each before those of the nodes
     * below it, siblings in ascending order of their keys. Empty without a "Content" object.
     */
    QStringList getAvailableUrls(const QJsonObject& jsonObject) const;

    /**
     * Appends to @p urls the URLs of all text nodes below @p jsonValue, whose storage path (the
     * URL with its "childs" levels written out) is @p prefix. The value itself is never listed.
     *
     * The walk enters every object member, not only "childs". URLs are made by removing each
     * "/childs" from the storage path as text: a node key that begins with "childs" deliberately
     * loses that beginning.
     */
    void collectUrls(const QJsonValue& jsonValue, const QString& prefix, QStringList& urls) const;

    /**
     * Writes @p jsonValue into @p jsonObject at the path @p textUrl, and creates the objects that
     * are missing on the way.
     *
     * The path is taken literally: unlike the reads, a write never steps into "childs" by itself.
     * Give the storage path with the member's name at its end:
     * `Content/Menu/childs/Save/text`.
     *
     * A member that exists is only replaced by a value of its own JSON type; a null is replaced by
     * nothing but null. A member created on the way starts empty or, deliberately, as a copy of
     * @p jsonValue when that is an object; the rest of the path is then written into that copy.
     *
     * A write costs what the path costs, not what the document holds, unless someone else holds a
     * copy of the document, or of a part on the path: the objects shared with it are copied first.
     * A new member moves those of its siblings that come after it, since QJsonObject keeps its
     * members in order. Texts that were replaced take memory for a while, in proportion to what the
     * object holds that they were in.
     *
     * @return Success, or Error when the leaf has another type than @p jsonValue, silently, or when
     * a value on the way is no object, with the warning "Unable to find jsonObject for url:" and
     * the rest of the path from that value on; @p jsonObject is whole then. After an Error @p
     * jsonObject is equal to what it was, with one deliberate exception: a member created on the
     * way as a copy of an object that the rest of the path then clashes with stays.
     */
    TextManagerDefinitions::SetReturnValue
    setJsonValue(const QString& textUrl, const QJsonValue& jsonValue, QJsonObject& jsonObject);
};
