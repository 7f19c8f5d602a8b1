#include "JsonLayout.h"

#include "TextKey.h"

#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>

namespace
{

bool holdsObjects(const QJsonObject& object)
{
    return std::any_of(object.begin(), object.end(),
                       [](const QJsonValue& member) { return member.isObject(); });
}

/** A value without members in the form that Qt gives it. */
QByteArray compact(const QJsonValue& value)
{
    return QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact).chopped(1).mid(1);
}

bool isLaidOutInLines(const ObjectStyle& style)
{
    return style.opening.contains('\n') || style.opening.contains('\r');
}

} // namespace

JsonLayout::JsonLayout(const JsonTree& tree)
    : m_Tree(tree)
{
    const QByteArray opening = styleOf(JsonTree::root).opening;
    const auto lineEnd = std::max(opening.lastIndexOf('\n'), opening.lastIndexOf('\r'));
    m_Indentation = lineEnd < 0 ? QByteArray() : opening.mid(lineEnd + 1);
    if (m_Indentation.isEmpty())
        m_Indentation = QByteArray(4, ' ');
}

ObjectStyle JsonLayout::styleOf(int object) const
{
    const int first = m_Tree.firstChild(object);
    if (first == JsonTree::none) {
        const int parent = m_Tree.at(object).parent;
        if (parent == JsonTree::none)
            return {{}, ",", ":", {}};
        const int model = modelFor(QJsonObject(), parent);
        return model == JsonTree::none ? styleBelow(styleOf(parent)) : styleOf(model);
    }
    const JsonTree::Node& node = m_Tree.at(object);
    ObjectStyle style;
    style.opening = between(node.valueBegin + 1, m_Tree.at(first).keyBegin);
    style.colon = between(m_Tree.at(first).keyEnd, m_Tree.at(first).valueBegin);
    if (style.colon.contains('\n'))
        style.colon = ": ";
    int last = first;
    for (int next = m_Tree.at(first).nextSibling; next != JsonTree::none;
         next = m_Tree.at(next).nextSibling) {
        const QByteArray separator = between(m_Tree.at(last).valueEnd, m_Tree.at(next).keyBegin);
        // Blank lines set groups apart: the shortest is what stands within one.
        if (style.separator.isEmpty() || separator.size() < style.separator.size())
            style.separator = separator;
        last = next;
    }
    if (last == first)
        style.separator = ',' + (isLaidOutInLines(style)     ? style.opening
                                 : style.colon.endsWith(' ') ? QByteArrayLiteral(" ")
                                                             : QByteArray());
    style.closing = between(m_Tree.at(last).valueEnd, node.valueEnd - 1);
    return style;
}

QByteArray JsonLayout::textOf(const QJsonValue& value, int object) const
{
    if (!value.isObject())
        return compact(value);
    const int model = modelFor(value.toObject(), object);
    const ObjectStyle style =
        model == JsonTree::none ? styleBelow(styleOf(object)) : styleOf(model);
    return textOf(value.toObject(), style, model);
}

QByteArray JsonLayout::textOf(const QString& string)
{
    const bool isPlain = std::none_of(string.begin(), string.end(), [](QChar character) {
        return character < QLatin1Char(' ') || character == QLatin1Char('"') ||
               character == QLatin1Char('\\') || character.isSurrogate();
    });
    // What needs no escape is spared the way through a document of its own.
    return isPlain ? '"' + string.toUtf8() + '"' : compact(string);
}

/** A member of @p parent that a new one with the value is to look like; none when there is none. */
int JsonLayout::modelFor(const QJsonObject& value, int parent) const
{
    int model = JsonTree::none;
    for (int member = m_Tree.firstChild(parent); member != JsonTree::none;
         member = m_Tree.at(member).nextSibling) {
        if (!m_Tree.isObject(member) || m_Tree.firstChild(member) == JsonTree::none)
            continue;
        bool hasObjects = false;
        for (int child = m_Tree.firstChild(member); child != JsonTree::none;
             child = m_Tree.at(child).nextSibling)
            hasObjects = hasObjects || m_Tree.isObject(child);
        if (hasObjects == holdsObjects(value))
            return member;
        if (model == JsonTree::none)
            model = member;
    }
    return model;
}

ObjectStyle JsonLayout::styleBelow(const ObjectStyle& outer) const
{
    if (!isLaidOutInLines(outer))
        return outer;
    const QByteArray opening = outer.opening + m_Indentation;
    return {opening, ',' + opening, outer.colon, outer.opening};
}

QByteArray JsonLayout::textOf(const QJsonObject& object, const ObjectStyle& style, int model) const
{
    QByteArray text;
    for (const QString& key : keysInOrder(object, model)) {
        text += text.isEmpty() ? '{' + style.opening : style.separator;
        text += textOf(key) + style.colon;
        const QJsonValue value = object.value(key);
        if (!value.isObject()) {
            text += compact(value);
            continue;
        }
        const int inner =
            model == JsonTree::none ? JsonTree::none : modelFor(value.toObject(), model);
        text += textOf(value.toObject(),
                       inner == JsonTree::none ? styleBelow(style) : styleOf(inner), inner);
    }
    return text.isEmpty() ? QByteArrayLiteral("{}") : text + style.closing + '}';
}

/** The keys in the order of the model's, those that it does not have at the end; in ascending order
 * when the model's are. */
QStringList JsonLayout::keysInOrder(const QJsonObject& object, int model) const
{
    QStringList keys = object.keys();
    QStringList keysOfModel;
    for (int member = model == JsonTree::none ? model : m_Tree.firstChild(model);
         member != JsonTree::none; member = m_Tree.at(member).nextSibling)
        keysOfModel.append(m_Tree.keyOf(member));
    if (std::is_sorted(keysOfModel.begin(), keysOfModel.end()))
        return keys;
    QHash<TextKey, QString::size_type> positions;
    for (const QString& key : qAsConst(keysOfModel))
        positions.insert(key, positions.size());
    const auto positionOf = [&](const QString& key) {
        return positions.value(key, keysOfModel.size());
    };
    std::stable_sort(keys.begin(), keys.end(), [&](const QString& one, const QString& other) {
        return positionOf(one) < positionOf(other);
    });
    return keys;
}
