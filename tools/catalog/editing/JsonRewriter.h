#pragma once

#include "JsonLayout.h"
#include "JsonTree.h"

#include <QByteArray>
#include <QJsonObject>
#include <QMap>
#include <QString>

#include <vector>

/**
 * Writes a changed document over the text that it came from: the bytes of what is unchanged stay,
 * blanks, line ends and the digits of numbers among them.
 *
 * New members stand where their key belongs when those around them ascend, and else at the end.
 */
class JsonRewriter
{
public:
    /** @param tree the text; it outlives the rewriter, and is an object at its top. */
    explicit JsonRewriter(const JsonTree& tree);

    /** The text of @p tree with other strings at some of its nodes, and every other byte its own.
     */
    static QByteArray replaceStrings(const JsonTree& tree, const QMap<int, QString>& strings);

    /** The text of @p wanted. @param asRead what Qt makes of the text. */
    QByteArray rewrite(const QJsonObject& asRead, const QJsonObject& wanted);

private:
    struct Member {
        QString key;
        int node;      ///< none for a new one
        int endBefore; ///< where the member before it ends in the text
    };

    std::vector<Member> membersOf(int object, const QJsonObject& asRead,
                                  const QJsonObject& wanted) const;
    void writeObject(int object, const QJsonObject& asRead, const QJsonObject& wanted);
    void writeValue(const Member& member, int object, const QJsonValue& asRead,
                    const QJsonValue& wanted);
    QByteArray bytes(int begin, int end) const { return m_Tree.bytes().mid(begin, end - begin); }

    const JsonTree& m_Tree;
    const JsonLayout m_Layout;
    QByteArray m_Out;
};
