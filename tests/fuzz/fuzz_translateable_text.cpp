// A language, and the text of a translateable text object: set, asked and written again.

#include "FuzzSupport.h"
#include "PlainWalk.h"

#include "TranslateableTextHelper.h"

#include <QJsonDocument>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    const QString language = input.takeText();
    const QString json = QString::fromUtf8(input.rest());
    const QJsonDocument document = QJsonDocument::fromJson(json.toUtf8());
    QMap<QString, QVariant> texts;
    const QVariantMap members = document.object().toVariantMap();
    for (auto member = members.begin(); member != members.end(); ++member) {
        if (!member->toString().isEmpty() || member.key() == "POSIX")
            texts.insert(member.key(), member->toString());
    }

    TranslateableTextHelper helper(language, nullptr);
    require(helper.setTranslateableTextObject(json) == texts.contains("POSIX"), "validity");
    require(helper.getTranslateableTextObject() == texts, "the texts");
    require(helper.getAvailableLanguages() == texts.keys(), "the languages");
    const QString wanted = texts.contains(language)  ? language
                           : texts.contains("en_US") ? QStringLiteral("en_US")
                                                     : QStringLiteral("POSIX");
    require(helper.currentText() == texts.value(wanted).toString(), "the current text");
    require(helper.getText(language) == texts.value(wanted).toString(), "the text");

    const QString written = helper.getTranslateableTextObjectAsJsonString();
    TranslateableTextHelper again(QString(), nullptr);
    again.setTranslateableTextObject(written);
    require(again.getTranslateableTextObjectAsJsonString() == written, "the same written again");
    helper.setText(language, written);
    require(helper.currentText() == written, "the text that was set");
    return 0;
}
