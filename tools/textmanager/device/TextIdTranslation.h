#pragma once

#include "JsonDataIteratorTextIdTranslator.h"

#include <QJsonDocument>
#include <QPair>
#include <QString>
#include <QStringList>
#include <QVector>

/** Translates whole JSON documents and counts the text ids that have no text. */
class TextIdTranslation : private JsonDataIteratorTextIdTranslator
{
public:
    /** The names of the data types, which are those of the library's enumeration. */
    static QStringList dataTypeNames();

    /** @param parameters stay the caller's and must outlive this object. */
    explicit TextIdTranslation(const TextManagerReferenceParameters& parameters);
    using JsonDataIteratorTextIdTranslator::setDeleteTextUrl;

    /** Looks for the keys of the data type @p name, one of dataTypeNames(). */
    void setDataType(const QString& name);
    /** Looks for these keys, too. An empty @p shortTextKey writes no short text. */
    void addKeys(const QString& textIdKey, const QString& textKey, const QString& shortTextKey);

    /** @param document is translated without a copy when it is moved here. */
    QJsonDocument translate(QJsonDocument document);

    /** How often the empty text was written for a text id. */
    qint64 missCount() const { return m_MissCount; }
    /** The first few text ids of these, each once. */
    QStringList missedTextIds() const { return m_MissedTextIds; }

private:
    void compute(QJsonObject& object, QJsonValue& value) override;

    const TextManagerReferenceParameters& m_Parameters;
    QVector<QPair<QString, QString>> m_Keys; ///< text id key and text key of what is looked for
    qint64 m_MissCount = 0;
    QStringList m_MissedTextIds;
};
