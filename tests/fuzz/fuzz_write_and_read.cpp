// A path, a value and a document: the value written there, and all read again.

#include "FuzzSupport.h"
#include "PlainWalk.h"

#include "LanguageInformation.h"

#include <QJsonArray>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    const QString path = input.takeText();
    const QByteArray line = input.takeLine();
    const QJsonArray values = PlainWalk::parse('[' + line + ']').toArray();
    const QJsonValue value = values.isEmpty() ? QString::fromUtf8(line) : values.first();
    QJsonObject document = PlainWalk::parse(input.rest()).toObject();
    QJsonObject expected = document;
    const auto result = PlainWalk::write(path.split('/'), value, expected);
    LanguageInformation information;
    const QJsonObject before = document; // shares its data with what is written to
    const QJsonObject copyBefore = PlainWalk::parse(input.rest()).toObject();
    require(information.setJsonValue(path, value, document) == result, "the result");
    require(document == expected, "the document");
    require(before == copyBefore, "a copy to stay as it was");

    const QJsonValue plain = PlainWalk::read(path.split('/'), document);
    QJsonValue read = QJsonValue::Undefined;
    require(information.readJsonValue(path, document, read) == !plain.isUndefined(), "the value");
    require(read == plain, "the same value");
    return 0;
}
