#include "JsonDataIteratorTextIdTranslator.h"

#include "JsonMember_p.h"
#include "TextManagerBase.h"
#include "TextManagerReferenceParameters.h"

#include "ConfigurationAndProcessDataDefinitions.h"
#include "ConfigurationFileHandlerDBusConnector.h"
#include "DBusReply.h"
#include "SelectorUrlHandler.h"
#include "SystemInformationManagerDataDefinitions.h"
#include "SystemInformationManagerRegistryDefinitions.h"

#include <QDebug>
#include <QJsonObject>
#include <QJsonValue>
#include <QSharedPointer>
#include <QVariant>

namespace
{

using Table = QVector<JsonDataTranslatorConfiguration>;

const Table& registryTable()
{
    using Keys = SystemInformationManagerRegistryDefinitions;
    static const Table table = {
        {Keys::getKeyLabelTextId(), Keys::getKeyLabel(), Keys::getKeyLabelShort(), false, false}};
    return table;
}

Table makeConfigurationAndProcessDataTable(bool insertDynamicLabelText)
{
    using Keys = ConfigurationAndProcessDataDefinitions;
    return {{Keys::getKeyDataPropertyLabelTextId(), Keys::getKeyDataPropertyLabelText(), QString(),
             true, insertDynamicLabelText}};
}

const Table& configurationAndProcessDataDynamicTable()
{
    static const Table table = makeConfigurationAndProcessDataTable(true);
    return table;
}

const Table& configurationAndProcessDataTable()
{
    static const Table table = makeConfigurationAndProcessDataTable(false);
    return table;
}

const Table& systemInformationDataTable()
{
    using Keys = SystemInformationManagerDataDefinitions;
    static const Table table = {{Keys::getKeyLabelTextId(), Keys::getKeyLabelText(),
                                 Keys::getKeyLabelTextShort(), false, false},
                                {Keys::getKeyValueTextId(), Keys::getKeyValueText(),
                                 Keys::getKeyValueTextShort(), false, false}};
    return table;
}

// A value that was looked up shares the object's data, and a write to the object would copy them
// all: the three that follow leave none behind.

/** Whether there is a text to keep; warns of one that is no string. */
bool holdsText(const QJsonObject& object, const QString& textKey)
{
    const QJsonValue text = object.value(textKey);
    if (!text.isUndefined() && !text.isString())
        qWarning() << "JsonValue for 'Text' does not contain a string!";
    return !text.toString().isEmpty();
}

/** @return whether there is a text id; warns of one that is no string. */
bool readTextId(const QJsonObject& object, const QString& textIdKey, QString& textId)
{
    const QJsonValue value = object.value(textIdKey);
    if (!value.isUndefined() && !value.isString())
        qWarning() << "JsonValue for 'TextId' does not contain a string!";
    textId = value.toString();
    return value.isString();
}

/** @return whether there is a URL for the label; warns of one that is no string. */
bool readLabelUrl(const QJsonObject& object, QString& url)
{
    const QJsonValue value =
        object.value(ConfigurationAndProcessDataDefinitions::getKeyDataPropertyLabelTextUrl());
    if (!value.isUndefined() && !value.isString())
        qWarning() << "Json value for labelTextUrl does not contain a string:" << value << "!";
    url = value.toString();
    return value.isString();
}

void blank(QJsonObject& object, const QString& key)
{
    setMember(object, key, QString());
}

/** The text as the configuration service answers it; the default reply without the service. */
DBusReply readText(const SelectorUrlHandler& selector, const QString& language)
{
    const QSharedPointer<ConfigurationFileHandlerDBusConnector> connector =
        ConfigurationFileHandlerDBusConnector::createAndConnect(selector.getModuleName(),
                                                                selector.getObjectName());
    if (connector.isNull()) {
        qWarning() << "Invalid pointer to connector!";
        return DBusReply();
    }
    return connector->getDynamicText(selector.getInstance(), selector.getUrlIncludingIndex(),
                                     QStringLiteral("Device"), language);
}

} // namespace

JsonDataIteratorTextIdTranslator::JsonDataIteratorTextIdTranslator(
    const TextManagerReferenceParameters& referenceParameters)
    : m_ReferenceParameters(referenceParameters)
{
}

JsonDataIteratorTextIdTranslator::~JsonDataIteratorTextIdTranslator() = default;

void JsonDataIteratorTextIdTranslator::setConfiguration(const DataType& dataType)
{
    m_DataType = dataType;
    switch (dataType) {
    case SystemInformationRegistry:
        m_Configuration = registryTable();
        return;
    case ConfigurationAndProcessDataDynamic:
        m_Configuration = configurationAndProcessDataDynamicTable();
        return;
    case ConfigurationAndProcessData:
        m_Configuration = configurationAndProcessDataTable();
        return;
    case SystemInformationData:
        m_Configuration = systemInformationDataTable();
        return;
    }
    qWarning() << "Received unknown data type:" << static_cast<int>(dataType) << "!";
}

void JsonDataIteratorTextIdTranslator::addConfigurationElement(const QString& textIdKey,
                                                               const QString& textKey,
                                                               const QString& shortTextKey)
{
    m_Configuration.append({textIdKey, textKey, shortTextKey, false, false});
}

void JsonDataIteratorTextIdTranslator::setDeleteTextUrl(bool deleteTextUrl)
{
    m_DeleteTextUrl = deleteTextUrl;
}

void JsonDataIteratorTextIdTranslator::compute(QJsonObject& object, QJsonValue&)
{
    if (m_DataType == SystemInformationRegistry)
        translateDynamicText(object);
    for (const JsonDataTranslatorConfiguration& keys : qAsConst(m_Configuration))
        translateKeyInJsonObject(object, keys.textIdKey, keys.textKey, keys.shortTextKey,
                                 keys.overwriteText, keys.insertDynamicLabelText);
}

void JsonDataIteratorTextIdTranslator::translateDynamicText(QJsonObject& object) const
{
    QString url;
    if (!readLabelUrl(object, url))
        return;
    setMember(object, SystemInformationManagerRegistryDefinitions::getKeyLabel(),
              m_ReferenceParameters.getTextManager().getDynamicText(
                  url, m_ReferenceParameters.getLanguage()));
}

void JsonDataIteratorTextIdTranslator::translateKeyInJsonObject(
    QJsonObject& object, const QString& textIdKey, const QString& textKey,
    const QString& shortTextKey, bool overwriteText, bool insertDynamicLabelText) const
{
    if (!overwriteText && holdsText(object, textKey))
        return;
    if (insertDynamicLableTextUrl(object, textKey, insertDynamicLabelText))
        return;
    QString textId;
    if (!readTextId(object, textIdKey, textId))
        return;

    const QString text =
        m_ReferenceParameters.getTextManager().getText(textId, m_ReferenceParameters.getLanguage());
    const QString shortText = m_ReferenceParameters.getShortText(textId);
    setMember(object, textKey, text);
    if (!shortTextKey.isEmpty())
        setMember(object, shortTextKey, shortText);
    if (m_DeleteTextUrl)
        blank(object, textIdKey);
}

bool JsonDataIteratorTextIdTranslator::insertDynamicLableTextUrl(QJsonObject& object,
                                                                 const QString& textKey,
                                                                 bool insertDynamicLabelText) const
{
    if (!insertDynamicLabelText)
        return false;
    const QString& urlKey =
        ConfigurationAndProcessDataDefinitions::getKeyDataPropertyLabelTextUrl();
    const QString url = object.value(urlKey).toString(); // empty, too, when it is no string
    if (url.isEmpty())
        return false;

    const QString text = getDynamicSelectorText(url, m_ReferenceParameters.getLanguage());
    if (!text.isEmpty())
        setMember(object, textKey, text);
    if (m_DeleteTextUrl)
        blank(object, urlKey);
    return !text.isEmpty();
}

QString JsonDataIteratorTextIdTranslator::getDynamicSelectorText(const QString& selectorUrl,
                                                                 const QString& language) const
{
    const SelectorUrlHandler selector(selectorUrl);
    DBusReply reply;
    if (selector.isValid())
        reply = readText(selector, language);
    else
        qWarning() << "Selectortext Url is invalid: " << selectorUrl;

    // Reached also without a call: what the default reply says belongs to the platform.
    if (reply.isError()) {
        qWarning() << "Error on reading dynamic text for selector:" << selectorUrl << "!";
        return QString();
    }
    const QVariant value = reply.getValue();
    if (!value.canConvert<QString>()) {
        qWarning() << "Received an invalid dynamic text value" << value << "!";
        return QString();
    }
    return value.toString();
}
