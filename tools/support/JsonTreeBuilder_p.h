#pragma once

#include "JsonTree.h"

#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>

/** Takes what the parser meets and makes the nodes of a tree of it. */
class JsonTreeBuilder : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, JsonTreeBuilder>
{
public:
    /** Fills @p tree, which has its bytes, with its nodes or its fault. */
    static void build(JsonTree& tree);

    // What the parser calls; false ends it.
    bool Null() { return addScalar(JsonTree::Type::Null); }
    bool Bool(bool) { return addScalar(JsonTree::Type::Bool); }
    bool RawNumber(const char* digits, rapidjson::SizeType length, bool);
    bool String(const char*, rapidjson::SizeType, bool)
    {
        return addScalar(JsonTree::Type::String);
    }
    bool Key(const char* key, rapidjson::SizeType length, bool);
    bool StartObject() { return enter(JsonTree::Type::Object); }
    bool EndObject(rapidjson::SizeType);
    bool StartArray() { return enter(JsonTree::Type::Array); }
    bool EndArray(rapidjson::SizeType);

private:
    /** An object or array whose end has not come yet. */
    struct Level {
        int node;
        int lastChild;
    };

    explicit JsonTreeBuilder(JsonTree& tree);
    void run();

    int offset() const { return m_Start + static_cast<int>(m_Stream.Tell()); }
    int beginOfToken() const;
    int addNode(JsonTree::Type type, int valueBegin, int valueEnd);
    bool addScalar(JsonTree::Type type);
    bool enter(JsonTree::Type type);
    void leave();
    bool refuse(int offset, const QString& reason);
    void findRepeatedKeys(int object);
    void findRepeatedKeys(std::size_t first, std::size_t end);
    void markRepeated(int earlier, int later);

    JsonTree& m_Tree;
    const int m_Start; ///< behind the byte order mark
    rapidjson::MemoryStream m_Stream;
    std::vector<Level> m_Levels;
    JsonTree::Node m_Next; ///< takes the key of the next member
    int m_LastEnd;         ///< of the last key or value, or of the beginning of their container
    std::vector<int> m_Members; ///< of the object that ends
};
