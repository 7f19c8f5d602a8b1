#pragma once

#include "TextManagerLibraryExport.h"

#include "JsonDataIteratorObjectBase.h"

#include <QJsonObject>
#include <QJsonValue>
#include <QString>
#include <QVector>

class TextManagerReferenceParameters;

/** One set of keys that a translator looks for in every object. */
struct JsonDataTranslatorConfiguration {
    QString textIdKey;                   ///< holds the text id, a text URL
    QString textKey;                     ///< receives the text
    QString shortTextKey;                ///< receives the short text; empty: none is written
    bool overwriteText = false;          ///< false: a text that is there and not empty is kept
    bool insertDynamicLabelText = false; ///< true: a dynamic label comes before the text id
};

/**
 * Writes texts into JSON data of other services: beside each text id that it finds in an object, it
 * writes the text and the short text of one language. The platform's walk over the data calls
 * compute() for each object.
 *
 * Which keys it looks for is its configuration: the fixed one of a data type, sets of keys of the
 * caller's own, or these behind that. Without a configuration nothing is changed. Keys are not
 * checked and, like text ids, are taken as they are; no key of an object is ever removed.
 *
 * **Language.** That of the reference parameters, through their text manager, with the fallbacks of
 * TextManagerBase; their read mode plays no part. A text id that is unknown is no fault: the empty
 * text is written.
 *
 * **Ownership.** The reference parameters stay the caller's and must outlive the translator.
 *
 * **Threads.** No lock: one thread at a time. To translate in several threads, give each a
 * translator of its own; they may share the reference parameters and the text manager, also while
 * it reloads. Look-ups take the text manager's lock one by one, so a reload may fall between a text
 * and its short text. A dynamic label blocks until the configuration service has answered; one of
 * the registry is read through the text manager's reader, which then has to allow several threads.
 */
class TEXTMANAGERLIBRARY_EXPORT JsonDataIteratorTextIdTranslator : public JsonDataIteratorObjectBase
{
public:
    /** Which service the data come from. The underlying type is fixed because values outside the
     * enumerators are legal input, which setConfiguration() reports. */
    enum DataType : int {
        SystemInformationRegistry = 1, ///< registry entries; a dynamic label is read for each first
        ConfigurationAndProcessDataDynamic = 2, ///< data whose labels may be dynamic
        ConfigurationAndProcessData = 3,        ///< data with fixed labels
        SystemInformationData = 4,              ///< data items, each with a label and a value
    };

    /** Starts with an empty configuration and keeps text ids. */
    explicit JsonDataIteratorTextIdTranslator(
        const TextManagerReferenceParameters& referenceParameters);
    ~JsonDataIteratorTextIdTranslator() override;

    /**
     * Replaces the whole configuration, what addConfigurationElement() added too, by the fixed one
     * of @p dataType. Its keys are those of the platform:
     *
     * | Data type | Keys | A text that is there | Dynamic label |
     * |---|---|---|---|
     * | SystemInformationRegistry | label, with short text | is kept | replaces the label |
     * | ConfigurationAndProcessDataDynamic | label | is replaced | comes before the text id |
     * | ConfigurationAndProcessData | label | is replaced | is ignored |
     * | SystemInformationData | label, then value, with short texts | is kept | is ignored |
     *
     * A value that is no data type is a warning, and the configuration stays. It is deliberately
     * stored all the same: after it, compute() no longer reads dynamic labels of the registry.
     */
    void setConfiguration(const DataType& dataType);

    /** Adds a set of keys behind those that are there; a text that is there is kept, dynamic labels
     * are ignored. An empty @p shortTextKey writes no short text. */
    void addConfigurationElement(const QString& textIdKey, const QString& textKey,
                                 const QString& shortTextKey);

    /** Whether each text id, and each URL of a dynamic label, is blanked once it has been used.
     * Deliberately, despite the name, its key stays, with an empty string. */
    void setDeleteTextUrl(bool deleteTextUrl);

    /**
     * Translates one object: for the registry its dynamic label, then each set of keys in the order
     * of the configuration. What one writes, the next ones find. What is below the object is left
     * to the walk.
     *
     * @param value is not used.
     */
    void compute(QJsonObject& object, QJsonValue& value) override;

    /**
     * Writes the registry's label when the object has a URL for it: what
     * TextManagerBase::getDynamicText() answers, be it empty. The URL deliberately stays, whatever
     * setDeleteTextUrl() says. A URL that is no string is a warning and changes nothing.
     */
    void translateDynamicText(QJsonObject& object) const;

    /**
     * Translates one set of keys, whose members the arguments are. In this order:
     *
     * 1. Without @p overwriteText, a text that is there and not empty is kept, and nothing is done.
     *    One that is no string is a warning, and is replaced.
     * 2. insertDynamicLableTextUrl(); where it wrote a text, the text id is not looked at.
     * 3. The text and the short text of the text id are written, be they empty; then the text id is
     *    blanked if setDeleteTextUrl() says so. One that is no string is a warning and changes
     *    nothing.
     */
    void translateKeyInJsonObject(QJsonObject& object, const QString& textIdKey,
                                  const QString& textKey, const QString& shortTextKey,
                                  bool overwriteText, bool insertDynamicLabelText) const;

    /**
     * Writes the text of the object's dynamic label, when it has a URL for one that is a string and
     * not empty, and @p insertDynamicLabelText is set. "Lable" is part of the interface and stays.
     *
     * With setDeleteTextUrl() the URL is blanked, deliberately also when its text could not be read
     * and the text id answers in its place.
     *
     * @return whether it wrote a text; an empty one is not written.
     */
    bool insertDynamicLableTextUrl(QJsonObject& object, const QString& textKey,
                                   bool insertDynamicLabelText) const;

    /**
     * Asks the device's configuration service for the text of a selector. Each call makes a
     * connection of its own and blocks until the service has answered.
     *
     * @return the text, or the value as a string; empty, with a warning that says why, when it
     * could not be read. Deliberately, a URL that is invalid or a service that is not there does
     * not end the call: the reply of the call that was never made is looked at too, and is one more
     * warning where the platform takes it for an error.
     */
    QString getDynamicSelectorText(const QString& selectorUrl, const QString& language) const;

private:
    const TextManagerReferenceParameters& m_ReferenceParameters; ///< not owned
    QVector<JsonDataTranslatorConfiguration> m_Configuration;    ///< translated in this order
    bool m_DeleteTextUrl = false;                                ///< whether used URLs are blanked
    DataType m_DataType = static_cast<DataType>(0);              ///< as set, valid or not; 0: none
};
