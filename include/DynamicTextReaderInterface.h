#pragma once

#include "TextManagerLibraryExport.h"

#include <QString>
#include <QVariant>

/**
 * Supplies texts that are in no language file because another part of the device makes them at run
 * time. The application implements it and gives it to TextManagerBase::setDynamicTextReader().
 *
 * The library takes no lock around it: readDynamicValue() is called in the thread that asks for a
 * text.
 */
class TEXTMANAGERLIBRARY_EXPORT DynamicTextReaderInterface
{
public:
    /** @param otherfilesPath the folder of the device's files that hold no language; it is kept for
     * the implementation and not looked at. */
    explicit DynamicTextReaderInterface(const QString& otherfilesPath);
    virtual ~DynamicTextReaderInterface();

    /**
     * Fetches the text at @p url in all its languages.
     *
     * @return a translateable text object, see TranslateableTextHelper: a variant that converts to
     * a map from language key to text. An invalid variant when there is none.
     */
    virtual QVariant readDynamicValue(const QString& url) = 0;

    /** The folder that the constructor was given. */
    QString getOtherfilesPath() const;

private:
    QString m_StrOtherfilesPath;
};
