// A data type, keys ("ID TEXT SHORT"), whether ids are blanked, and a JSON document: its text ids
// translated.

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
using Configuration = QVector<JsonDataTranslatorConfiguration>;

Configuration fixedConfiguration(int dataType)
{
    if (dataType == Translator::ConfigurationAndProcessData)
        return {{"labelTextId", "labelText", "", true, false}};
    if (dataType == Translator::SystemInformationData)
        return {{"labelTextId", "labelText", "labelTextShort", false, false},
                {"valueTextId", "valueText", "valueTextShort", false, false}};
    return {};
}

/** Two documents of texts, the full ones and the short ones. */
TextManagerBase& manager()
{
    static const FuzzFolder folder;
    folder.write("en_US.json", R"({"Content": {"A": {"text": "a"}, "B": {"text": "A"}}})");
    static TextManagerBase manager(folder.path(), "de_DE", ".");
    return manager;
}

void translatePlainly(QJsonObject& object, const JsonDataTranslatorConfiguration& keys,
                      bool areIdsBlanked)
{
    const QJsonValue id = object.value(keys.textIdKey);
    const bool isKept = !keys.overwriteText && !object.value(keys.textKey).toString().isEmpty();
    if (isKept || !id.isString())
        return;
    const QString text = manager().getText(id.toString(), "de_DE");
    const QString shortText = manager().getShortText(id.toString(), "de_DE");
    object.insert(keys.textKey, text);
    if (!keys.shortTextKey.isEmpty())
        object.insert(keys.shortTextKey, shortText);
    if (areIdsBlanked)
        object.insert(keys.textIdKey, QString());
}

QJsonValue translatedPlainly(const QJsonValue& value, const Configuration& configuration,
                             bool areIdsBlanked)
{
    if (value.isArray()) {
        QJsonArray array;
        for (const QJsonValue& element : value.toArray())
            array.append(translatedPlainly(element, configuration, areIdsBlanked));
        return array;
    }
    QJsonObject object = value.toObject();
    for (const JsonDataTranslatorConfiguration& keys : configuration)
        translatePlainly(object, keys, areIdsBlanked);
    for (auto member = object.begin(); member != object.end(); ++member)
        member.value() = translatedPlainly(member.value(), configuration, areIdsBlanked);
    return value.isObject() ? object : value;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    const int dataType = input.takeLine().toInt();
    const QStringList keys = input.takeText().split(' ');
    const bool areIdsBlanked = input.takeLine() == "blank";
    QJsonValue value = PlainWalk::parse(input.rest());
    if (value.isUndefined())
        return 0;

    const TextManagerReferenceParameters parameters(manager(), "de_DE");
    Translator translator(parameters);
    translator.setConfiguration(static_cast<Translator::DataType>(dataType));
    translator.addConfigurationElement(keys.value(0), keys.value(1), keys.value(2));
    translator.setDeleteTextUrl(areIdsBlanked);
    const QJsonValue plain = translatedPlainly(
        value,
        fixedConfiguration(dataType) +
            Configuration{{keys.value(0), keys.value(1), keys.value(2), false, false}},
        areIdsBlanked);
    JsonDataIterator::iterate(value, translator);
    const bool hasDynamicTexts = dataType == Translator::SystemInformationRegistry ||
                                 dataType == Translator::ConfigurationAndProcessDataDynamic;
    require(hasDynamicTexts || value == plain, "the translation");
    return 0;
}
