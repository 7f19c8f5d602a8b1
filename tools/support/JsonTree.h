#pragma once

#include "Place.h"
#include "PlaceIndex.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

/** Where a text is no JSON, and why. */
struct JsonFault {
    int line = 1;   ///< from 1
    int column = 1; ///< in characters, from 1
    QString reason; ///< "malformed JSON: " and what was found and expected; no full stop
    bool isEncodingFault = false; ///< whether the bytes there are no UTF-8

    /** "name:line:column: reason" for the text of that name. */
    QString in(const QString& name) const;
};

/** A key to look for, encoded and hashed once. */
struct JsonKey {
    JsonKey(const QString& key);
    QByteArray bytes;
    uint hash; ///< cut to 32 bits, as a node keeps it
};

/**
 * A JSON text as it stands there: each object's members in their order, with the places of their
 * keys and values, repeated ones, and numbers as they were written.
 *
 * The values are indexes into one list in the order of the text: an object comes before its
 * members, and an array before its elements, which have no key. Strings stay in the bytes and are
 * decoded when they are asked for, so that a tree takes little more memory than its text.
 *
 * What stands here without a fault is parsed by Qt to the same values. The opposite does not hold:
 * Qt takes control characters in strings, unknown escapes and halves of surrogate pairs.
 */
class JsonTree
{
public:
    enum class Type : quint8 { Object, Array, String, Number, Bool, Null };
    static constexpr int none = -1;
    static constexpr int root = 0;

    struct Node {
        int keyBegin = 0; ///< offset of the key's opening quotation mark
        int keyEnd = 0;   ///< behind its closing one; equal to keyBegin where there is no key
        int valueBegin = 0;
        int valueEnd = 0;
        int parent = none;
        int nextSibling = none;
        uint keyHash = 0;
        Type type = Type::Null;
        bool isReplaced = false; ///< whether the same key comes again behind it: only that counts
    };

    JsonTree() = default;
    explicit JsonTree(const QByteArray& bytes);

    /** What is wrong. There are no nodes then. */
    const std::optional<JsonFault>& fault() const { return m_Fault; }
    bool isSound() const { return !m_Fault; }

    const QByteArray& bytes() const { return m_Bytes; }
    int size() const { return static_cast<int>(m_Nodes.size()); }
    const Node& at(int node) const { return m_Nodes[static_cast<std::size_t>(node)]; }
    Type typeOf(int node) const { return at(node).type; }
    bool isObject(int node) const { return node != none && typeOf(node) == Type::Object; }
    bool isString(int node) const { return node != none && typeOf(node) == Type::String; }

    /** The first member of an object, or element of an array; none when there is none. */
    int firstChild(int node) const;
    /** The member of that key, of several the last; none when @p node has none or is no object. */
    int child(int node, const JsonKey& key) const;

    bool hasKey(int node, const JsonKey& key) const;
    QString keyOf(int node) const { return decode(at(node).keyBegin, at(node).keyEnd); }
    /** The value of a string; empty for any other type. */
    QString stringOf(int node) const;
    /** The bytes of the value, as they were written. */
    QByteArray valueBytes(int node) const;
    /** The keys above and of the node, joined with "/", an empty one as two quotation marks. */
    QString pathOf(int node) const;

    Place placeOf(int offset) const { return m_Places.placeOf(m_Bytes, offset); }
    Place keyPlace(int node) const { return placeOf(at(node).keyBegin); }
    Place valuePlace(int node) const { return placeOf(at(node).valueBegin); }

    /** The members whose key stands in their object before, too, in the order of the text. */
    const std::vector<int>& repeatedKeys() const { return m_RepeatedKeys; }

private:
    friend class JsonTreeBuilder;
    QString decode(int begin, int end) const;

    QByteArray m_Bytes;
    PlaceIndex m_Places;
    std::vector<Node> m_Nodes;
    std::vector<int> m_RepeatedKeys;
    std::optional<JsonFault> m_Fault;
};
