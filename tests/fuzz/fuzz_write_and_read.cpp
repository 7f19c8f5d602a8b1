// A path, a value and a document: the value written there, and all read again.

#include "FuzzSupport.h"
#include "PlainWalk.h"

#include "LanguageInformation.h"
#include "TextManagerConverter.h"

#include <QJsonArray>

namespace
{

void compareConverter(const QString& url, const QString& text, QJsonObject document)
{
    const int keyCount = url.count('/') + 1;
    const QString storagePath = keyCount < 2 ? QString() : QString(url).replace("/", "/childs/");
    QJsonObject expected = document;
    const auto result =
        PlainWalk::write(("Content/" + storagePath + "/text").split('/'), text, expected);
    TextManagerConverter converter("xx", document);
    require(converter.setText(url, text) == result, "the result of the converter");
    require(document == expected, "the converter's document");
    bool ok = false;
    const QJsonValue read = PlainWalk::readMember(url, "text", expected);
    require(converter.getText(url, ok) == read.toString() && ok == !read.isUndefined(), "its text");
    require(converter.getAvailableUrls() == PlainWalk::urls(expected.value("Content")), "its URLs");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    const QString path = input.takeText();
    const QByteArray line = input.takeLine();
    const QJsonArray values = PlainWalk::parse('[' + line + ']').toArray();
    const QJsonValue value = values.isEmpty() ? QString::fromUtf8(line) : values.first();
    QJsonObject document = PlainWalk::parse(input.rest()).toObject();
    compareConverter(path, value.toString(), document);

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
