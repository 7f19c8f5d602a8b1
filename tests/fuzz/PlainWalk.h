#pragma once

#include "TextManagerDefinitions.h"

#include <QJsonObject>
#include <QJsonValue>
#include <QString>
#include <QStringList>

/** What docs/language-files.md says of a document, level by level, without a thought of time or
 * stack: what the library is compared with. */
namespace PlainWalk
{

/** Parsed as a file is, in text mode; undefined when it is no JSON. */
QJsonValue parse(QByteArray bytes);
/** The value at the end of @p keys, the first of which are done; undefined when there is none. */
QJsonValue read(const QStringList& keys, const QJsonObject& level, int from = 0);
/** The same for the member @p name of the node at @p url. */
QJsonValue readMember(const QString& url, const QString& name, const QJsonObject& document);
/** The URLs of the text nodes below @p value. */
QStringList urls(const QJsonValue& value, const QString& storagePath = QString());
TextManagerDefinitions::SetReturnValue write(const QStringList& keys, const QJsonValue& value,
                                             QJsonObject& level, int from = 0);

} // namespace PlainWalk
