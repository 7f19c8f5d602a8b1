#include "PackedDocument.h"

#include "LanguageDefinitions.h"

#include <QJsonDocument>

namespace
{

QJsonObject withoutComments(QJsonObject node, PackedComments comments)
{
    for (auto member = node.begin(); member != node.end();) {
        const bool isComment =
            member.key() == LanguageDefinitions::getJsonCommentName() && member.value().isString();
        if (isComment && comments == PackedComments::Dropped) {
            member = node.erase(member);
            continue;
        }
        if (isComment)
            member.value() = QString();
        else if (member.value().isObject())
            member.value() = withoutComments(member.value().toObject(), comments);
        ++member;
    }
    return node;
}

} // namespace

QByteArray packed(const QJsonObject& document, PackedComments comments)
{
    QJsonObject result = document;
    const QString& content = LanguageDefinitions::getJsonContentName();
    if (comments != PackedComments::Kept)
        result.insert(content, withoutComments(document.value(content).toObject(), comments));
    return QJsonDocument(result).toJson(QJsonDocument::Compact) + '\n';
}
