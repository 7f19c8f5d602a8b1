#pragma once

#include "TextManagerLibraryExport.h"

#include <QObject>
#include <QString>

class DynamicTextReaderInterface;

/**
 * Answers dynamic texts in one language, out of the translateable text objects that a reader of the
 * application supplies.
 *
 * **Ownership.** The reader stays the application's. It must outlive the handler, or be taken back
 * with setInterface(nullptr).
 *
 * **Threads.** No lock. getText() may come from several threads at a time if the reader allows it,
 * but not while setInterface() runs. The thread that the QObject lives in plays no part.
 */
class TEXTMANAGERLIBRARY_EXPORT DynamicTextHandler : public QObject
{
    Q_OBJECT

public:
    /** Starts without a reader. */
    explicit DynamicTextHandler(QObject* parent);
    ~DynamicTextHandler() override;

    /** Makes @p readerInterface the reader; null switches reading off. */
    void setInterface(DynamicTextReaderInterface* readerInterface);

    /**
     * The text that the reader has for @p url, in the language that a TranslateableTextHelper
     * chooses for @p language: that one, then "en_US", then "POSIX". An empty @p language goes
     * straight to these two.
     *
     * @return the text; empty, with a warning, without a reader and when the reader answers an
     * invalid variant. Of a variant that is no usable object the helper warns.
     */
    QString getText(const QString& url, const QString& language) const;

private:
    DynamicTextReaderInterface* m_Interface = nullptr; ///< not owned; null: reading is off
};
