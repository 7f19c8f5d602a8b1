#pragma once

#include "JsonTree.h"

#include <QByteArray>
#include <QJsonObject>
#include <QStringList>

/** What stands around the members of an object. */
struct ObjectStyle {
    QByteArray opening;   ///< between "{" and the first key
    QByteArray separator; ///< between two members, with the comma
    QByteArray colon;     ///< between key and value, with the colon
    QByteArray closing;   ///< between the last value and "}"
};

/** How a JSON text is laid out, so that what is added to it looks like what is around it. */
class JsonLayout
{
public:
    /** @param tree outlives the layout. */
    explicit JsonLayout(const JsonTree& tree);

    /** The style of an object; of an empty one what it will have with members. */
    ObjectStyle styleOf(int object) const;

    /** The text of a value that becomes a member of @p object. */
    QByteArray textOf(const QJsonValue& value, int object) const;

    /** A key or another string as JSON writes it. */
    static QByteArray textOf(const QString& string);

private:
    int modelFor(const QJsonObject& value, int parent) const;
    ObjectStyle styleBelow(const ObjectStyle& outer) const;
    QByteArray textOf(const QJsonObject& object, const ObjectStyle& style, int model) const;
    QStringList keysInOrder(const QJsonObject& object, int model) const;
    QByteArray between(int begin, int end) const { return m_Tree.bytes().mid(begin, end - begin); }

    const JsonTree& m_Tree;
    QByteArray m_Indentation; ///< of one level
};
