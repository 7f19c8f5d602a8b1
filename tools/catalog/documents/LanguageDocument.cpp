#include "LanguageDocument.h"

#include "LanguageReading.h"
#include "NodeKeys.h"

#include "LanguageDefinitions.h"

#include <QJsonObject>
#include <QVarLengthArray>

#include <algorithm>

namespace
{

/** Whether Qt takes it, and it has a "Content": asked where the tree has a fault. */
bool doesQtLoad(const QByteArray& bytes)
{
    return parseLanguage(bytes).contains(LanguageDefinitions::getJsonContentName());
}

QString nameOfType(JsonTree::Type type)
{
    switch (type) {
    case JsonTree::Type::Object:
        return QStringLiteral("an object");
    case JsonTree::Type::Array:
        return QStringLiteral("an array");
    case JsonTree::Type::String:
        return QStringLiteral("a text");
    case JsonTree::Type::Number:
        return QStringLiteral("a number");
    case JsonTree::Type::Bool:
        return QStringLiteral("a truth value");
    case JsonTree::Type::Null:
        break;
    }
    return QStringLiteral("null");
}

} // namespace

LanguageDocument::LanguageDocument(const QByteArray& bytes)
    : m_Tree(bytes)
{
    if (!m_Tree.isSound()) {
        m_IsLoaded = doesQtLoad(bytes);
        return;
    }
    const int content = m_Tree.child(JsonTree::root, LanguageDefinitions::getJsonContentName());
    m_IsLoaded = content != JsonTree::none;
    m_Content = m_Tree.isObject(content) ? content : JsonTree::none;
    if (m_Content != JsonTree::none)
        walkContent();
}

int LanguageDocument::headerField(const QString& field) const
{
    if (!m_Tree.isSound())
        return JsonTree::none;
    const int header = m_Tree.child(JsonTree::root, LanguageDefinitions::getJsonHeaderName());
    const int value = m_Tree.child(header, field);
    return m_Tree.isString(value) ? value : JsonTree::none;
}

QString LanguageDocument::urlOf(int node) const
{
    QVarLengthArray<int, 32> path;
    for (; node != m_Content && node > JsonTree::root; node = m_Tree.at(node).parent)
        path.append(node);
    const QString& separator = LanguageDefinitions::getUrlSeparator();
    QString url;
    bool isBegun = false; // a text manager puts no separator behind an empty beginning
    for (auto member = path.crbegin(); member != path.crend(); ++member) {
        if (isBegun && m_Tree.hasKey(*member, nodeKeys().childs))
            continue;
        const QString key = m_Tree.keyOf(*member);
        url += isBegun ? separator + key : key;
        isBegun = isBegun || !key.isEmpty();
    }
    // Keys that only begin with "childs" lose that beginning, too.
    return url.remove(separator + LanguageDefinitions::getJsonChildsKey());
}

bool LanguageDocument::isContainer(int node) const
{
    int containers = 0; // "childs" in a "childs" is a node of that name
    for (; node != m_Content; node = m_Tree.at(node).parent) {
        if (node == JsonTree::none || !m_Tree.isObject(node))
            return false;
        if (!m_Tree.hasKey(node, nodeKeys().childs))
            return containers % 2 == 1;
        ++containers;
    }
    return containers % 2 == 0;
}

QVector<Finding> LanguageDocument::findFaults() const
{
    if (!m_Tree.isSound())
        return findMalformed();
    const QString& contentName = LanguageDefinitions::getJsonContentName();
    if (!m_IsLoaded)
        return {faultAt(JsonTree::root, m_Tree.at(JsonTree::root).valueBegin,
                        QStringLiteral("no-content"),
                        QStringLiteral("no language file: expected an object with \"%1\", found "
                                       "%2. The file is left out; put the texts below \"%1\", or "
                                       "move the file away.")
                            .arg(contentName, describeTop()))};
    QVector<Finding> faults = findWrongTypes();
    for (const int member : m_Tree.repeatedKeys())
        faults.append(faultAt(member, m_Tree.at(member).keyBegin, QStringLiteral("repeated-key"),
                              QStringLiteral("the key \"%1\" stands there twice, and only the last "
                                             "one counts. Remove one of them.")
                                  .arg(m_Tree.keyOf(member))));
    const auto isEarlier = [](const Finding& one, const Finding& other) {
        return std::make_pair(one.place.line, one.place.column) <
               std::make_pair(other.place.line, other.place.column);
    };
    std::stable_sort(faults.begin(), faults.end(), isEarlier);
    return faults;
}

void LanguageDocument::walkContent()
{
    const int end = m_Tree.at(m_Content).valueEnd;
    int node = m_Content + 1;
    while (node < m_Tree.size() && m_Tree.at(node).valueBegin < end) {
        const bool isWalked = m_Tree.isObject(node) && !m_Tree.at(node).isReplaced;
        if (!m_Tree.at(node).isReplaced)
            walkMember(node);
        node = isWalked ? node + 1 : behind(node);
    }
    m_TextNodes.shrink_to_fit();
}

void LanguageDocument::walkMember(int node)
{
    const bool isInContainer = isContainer(m_Tree.at(node).parent);
    const bool isValue =
        m_Tree.hasKey(node, nodeKeys().text) || m_Tree.hasKey(node, nodeKeys().comment);
    const bool isObjectWanted = isInContainer || m_Tree.hasKey(node, nodeKeys().childs);
    const bool isSound = m_Tree.isObject(node) || (!isObjectWanted && !isValue) ||
                         (!isObjectWanted && m_Tree.isString(node));
    if (!isSound)
        m_WrongTypes.push_back(node);
    const TextNode textNode{node, m_Tree.child(node, nodeKeys().text),
                            m_Tree.child(node, nodeKeys().comment)};
    if (m_Tree.isString(textNode.text) && m_Tree.isString(textNode.comment))
        m_TextNodes.push_back(textNode);
}

/** The node that follows the whole of @p node in the text. */
int LanguageDocument::behind(int node) const
{
    const int end = m_Tree.at(node).valueEnd;
    while (node < m_Tree.size() && m_Tree.at(node).valueBegin < end)
        ++node;
    return node;
}

Finding LanguageDocument::faultAt(int node, int offset, const QString& id,
                                  const QString& reason) const
{
    Finding finding;
    finding.id = id;
    finding.place = m_Tree.placeOf(offset);
    finding.url = isBelowContent(node) ? urlOf(node) : QString();
    finding.reason = reason;
    return finding;
}

QVector<Finding> LanguageDocument::findMalformed() const
{
    const JsonFault& fault = *m_Tree.fault();
    Finding finding;
    finding.id =
        fault.isEncodingFault ? QStringLiteral("not-utf8") : QStringLiteral("malformed-json");
    finding.place = {fault.line, fault.column};
    const QString advice =
        m_IsLoaded              ? QStringLiteral(". A text manager loads the file all the same; "
                                                              "correct it there.")
        : fault.isEncodingFault ? QStringLiteral(". The file is left out; save it as UTF-8.")
                                : QStringLiteral(". The file is left out; correct it there.");
    finding.reason = fault.reason + advice;
    return {finding};
}

QVector<Finding> LanguageDocument::findWrongTypes() const
{
    std::vector<int> nodes = m_WrongTypes;
    const auto addUnless = [&](int node, JsonTree::Type type) {
        if (node != JsonTree::none && m_Tree.typeOf(node) != type)
            nodes.push_back(node);
    };
    addUnless(m_Tree.child(JsonTree::root, LanguageDefinitions::getJsonContentName()),
              JsonTree::Type::Object);
    const int header = m_Tree.child(JsonTree::root, LanguageDefinitions::getJsonHeaderName());
    addUnless(header, JsonTree::Type::Object);
    for (const QString& field : {LanguageDefinitions::getJsonHeaderLanguageKey(),
                                 LanguageDefinitions::getJsonHeaderSubLanguageKey()})
        addUnless(m_Tree.child(header, field), JsonTree::Type::String);

    QVector<Finding> findings;
    for (const int node : nodes) {
        const int parent = m_Tree.at(node).parent;
        const bool isTextWanted =
            parent == header || (!isContainer(parent) && (m_Tree.hasKey(node, nodeKeys().text) ||
                                                          m_Tree.hasKey(node, nodeKeys().comment)));
        findings.append(faultAt(node, m_Tree.at(node).valueBegin, QStringLiteral("wrong-type"),
                                QStringLiteral("\"%1\" is %2, expected %3. Nothing of it is shown; "
                                               "correct it there.")
                                    .arg(m_Tree.keyOf(node), nameOfType(m_Tree.typeOf(node)),
                                         isTextWanted ? QStringLiteral("a text in quotation marks")
                                                      : QStringLiteral("an object"))));
    }
    return findings;
}

QString LanguageDocument::describeTop() const
{
    if (!m_Tree.isObject(JsonTree::root))
        return QStringLiteral("an array");
    QStringList keys;
    for (int member = m_Tree.firstChild(JsonTree::root); member != JsonTree::none;
         member = m_Tree.at(member).nextSibling)
        keys.append(m_Tree.keyOf(member));
    return QStringLiteral("an object with the keys (%1)").arg(keys.join(QStringLiteral(", ")));
}

bool LanguageDocument::isBelowContent(int node) const
{
    return m_Content != JsonTree::none && node > m_Content &&
           m_Tree.at(node).valueBegin < m_Tree.at(m_Content).valueEnd;
}
