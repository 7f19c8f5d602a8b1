// A data type, keys ("ID TEXT SHORT"), whether ids are blanked, and a JSON document: its text ids
// translated, and compared where the data type adds no keys.

#include "FuzzSupport.h"
#include "PlainWalk.h"

#include "JsonDataIterator.h"
#include "JsonDataIteratorTextIdTranslator.h"
#include "TextManagerBase.h"
#include "TextManagerReferenceParameters.h"

#include <QJsonArray>

namespace
{

using Translator = JsonDataIteratorTextIdTranslator;
using Keys = QStringList; ///< of the text id, the text and the short text

/** Two documents of texts, the full ones and the short ones. */
TextManagerBase& manager()
{
    static const FuzzFolder folder;
    folder.write("en_US.json", R"({"Content": {"A": {"text": "a"}, "B": {"text": "A"}}})");
    static TextManagerBase manager(folder.path(), "de_DE", ".");
    return manager;
}

void translatePlainly(QJsonObject& object, const Keys& keys, bool areIdsBlanked)
{
    const QJsonValue id = object.value(keys.value(0));
    if (!object.value(keys.value(1)).toString().isEmpty() || !id.isString())
        return;
    const QString text = manager().getText(id.toString(), "de_DE");
    const QString shortText = manager().getShortText(id.toString(), "de_DE");
    object.insert(keys.value(1), text);
    if (!keys.value(2).isEmpty())
        object.insert(keys.value(2), shortText);
    if (areIdsBlanked)
        object.insert(keys.value(0), QString());
}

QJsonValue translatedPlainly(const QJsonValue& value, const Keys& keys, bool areIdsBlanked)
{
    if (value.isArray()) {
        QJsonArray array;
        for (const QJsonValue& element : value.toArray())
            array.append(translatedPlainly(element, keys, areIdsBlanked));
        return array;
    }
    QJsonObject object = value.toObject();
    translatePlainly(object, keys, areIdsBlanked);
    for (auto member = object.begin(); member != object.end(); ++member)
        member.value() = translatedPlainly(member.value(), keys, areIdsBlanked);
    return value.isObject() ? object : value;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    const int dataType = input.takeLine().toInt();
    const Keys keys = input.takeText().split(' ');
    const bool areIdsBlanked = input.takeLine() == "blank";
    QJsonValue value = PlainWalk::parse(input.rest());
    if (value.isUndefined())
        return 0;

    const TextManagerReferenceParameters parameters(manager(), "de_DE");
    Translator translator(parameters);
    translator.setConfiguration(static_cast<Translator::DataType>(dataType));
    translator.addConfigurationElement(keys.value(0), keys.value(1), keys.value(2));
    translator.setDeleteTextUrl(areIdsBlanked);
    const QJsonValue plain = translatedPlainly(value, keys, areIdsBlanked);
    JsonDataIterator::iterate(value, translator);
    const bool hasOnlyTheseKeys = dataType < Translator::SystemInformationRegistry ||
                                  dataType > Translator::SystemInformationData;
    require(!hasOnlyTheseKeys || value == plain, "the translation");
    return 0;
}
