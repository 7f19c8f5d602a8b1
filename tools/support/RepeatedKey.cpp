#include "RepeatedKey.h"

#include "JsonTree.h"

std::optional<QString> findRepeatedKey(const QByteArray& json)
{
    const JsonTree tree(json);
    if (!tree.isSound())
        return std::nullopt;
    return tree.repeatedKeys().empty() ? QString() : tree.pathOf(tree.repeatedKeys().front());
}
