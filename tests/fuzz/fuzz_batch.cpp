// A language document in one line, and a batch of edits: all of them done, and the file rewritten.

#include "EditBatch.h"
#include "EditedDocument.h"
#include "FuzzSupport.h"
#include "PlainWalk.h"
#include "TextNodes.h"

namespace
{

void write(const TextEdit& edit, const QString& name, const std::optional<QString>& value,
           QJsonObject& document)
{
    if (!value)
        return;
    const QStringList node = storagePathOf(edit.url, document);
    if (valueAt(node, document).isUndefined() && !findUnusableKey(edit.url).isEmpty())
        return;
    const QJsonObject before = document;
    if (!writeString(node + QStringList(name), *value, document).isEmpty()) {
        require(document == before, "a document as it was");
        return;
    }
    require(PlainWalk::readMember(edit.url, name, document) == *value, "look-ups find the text");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    const QByteArray bytes = input.takeLine();
    EditedDocument document(bytes);
    if (document.fault()) {
        require(!document.describeFault("x").isEmpty(), "a reason");
        return 0;
    }
    require(document.bytes() == bytes, "an unchanged document to keep its bytes");
    const EditBatch batch(input.rest());
    for (const TextEdit& edit : batch.edits()) {
        write(edit, "text", edit.text, document.document());
        write(edit, "comment", edit.comment, document.document());
    }
    const auto rewritten = document.bytes();
    if (!rewritten)
        return 0;
    require(!EditedDocument(*rewritten).fault(), "a file that can be edited again");
    return 0;
}
