#include "TextIdTranslation.h"

#include "TextManagerReferenceParameters.h"

#include "ConfigurationAndProcessDataDefinitions.h"
#include "JsonDataIterator.h"
#include "SystemInformationManagerDataDefinitions.h"
#include "SystemInformationManagerRegistryDefinitions.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>

#include <utility>

namespace
{

using Translator = JsonDataIteratorTextIdTranslator;

struct DataTypeEntry {
    QString name;
    Translator::DataType dataType;
    QVector<QPair<QString, QString>> keys; ///< text id key and text key
};

const QVector<DataTypeEntry>& dataTypes()
{
    using Registry = SystemInformationManagerRegistryDefinitions;
    using ProcessData = ConfigurationAndProcessDataDefinitions;
    using Data = SystemInformationManagerDataDefinitions;
    static const QPair<QString, QString> processDataKeys(
        ProcessData::getKeyDataPropertyLabelTextId(), ProcessData::getKeyDataPropertyLabelText());
    static const QVector<DataTypeEntry> entries = {
        {QStringLiteral("SystemInformationRegistry"),
         Translator::SystemInformationRegistry,
         {{Registry::getKeyLabelTextId(), Registry::getKeyLabel()}}},
        {QStringLiteral("ConfigurationAndProcessDataDynamic"),
         Translator::ConfigurationAndProcessDataDynamic,
         {processDataKeys}},
        {QStringLiteral("ConfigurationAndProcessData"),
         Translator::ConfigurationAndProcessData,
         {processDataKeys}},
        {QStringLiteral("SystemInformationData"),
         Translator::SystemInformationData,
         {{Data::getKeyLabelTextId(), Data::getKeyLabelText()},
          {Data::getKeyValueTextId(), Data::getKeyValueText()}}},
    };
    return entries;
}

} // namespace

QStringList TextIdTranslation::dataTypeNames()
{
    QStringList names;
    for (const DataTypeEntry& entry : dataTypes())
        names.append(entry.name);
    return names;
}

TextIdTranslation::TextIdTranslation(const TextManagerReferenceParameters& parameters)
    : JsonDataIteratorTextIdTranslator(parameters)
    , m_Parameters(parameters)
{
}

void TextIdTranslation::setDataType(const QString& name)
{
    for (const DataTypeEntry& entry : dataTypes()) {
        if (entry.name == name) {
            setConfiguration(entry.dataType);
            m_Keys = entry.keys;
        }
    }
}

void TextIdTranslation::addKeys(const QString& textIdKey, const QString& textKey,
                                const QString& shortTextKey)
{
    addConfigurationElement(textIdKey, textKey, shortTextKey);
    m_Keys.append({textIdKey, textKey});
}

QJsonDocument TextIdTranslation::translate(QJsonDocument document)
{
    QJsonValue data =
        document.isArray() ? QJsonValue(document.array()) : QJsonValue(document.object());
    document = QJsonDocument(); // a document that shares the data would make the walk copy them
    JsonDataIterator::iterate(data, *this);
    return data.isArray() ? QJsonDocument(data.toArray()) : QJsonDocument(data.toObject());
}

void TextIdTranslation::compute(QJsonObject& object, QJsonValue& value)
{
    constexpr int keptTextIds = 5; // of a stream without end there may be many
    QVector<QPair<QString, QString>> textIds;
    for (const auto& [textIdKey, textKey] : qAsConst(m_Keys)) {
        const QString textId = object.value(textIdKey).toString();
        if (!textId.isEmpty()) // an empty one was blanked, and has been used
            textIds.append({textId, textKey});
    }
    JsonDataIteratorTextIdTranslator::compute(object, value);
    for (const auto& [textId, textKey] : qAsConst(textIds)) {
        // A text that is kept, or of a dynamic label, is not empty; but one that is the text id of
        // other keys may have been blanked.
        if (!object.value(textKey).toString().isEmpty() || !m_Parameters.getText(textId).isEmpty())
            continue;
        ++m_MissCount;
        if (m_MissedTextIds.size() < keptTextIds && !m_MissedTextIds.contains(textId))
            m_MissedTextIds.append(textId);
    }
}
