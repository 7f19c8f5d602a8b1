#pragma once

#include <QString>
#include <QStringList>

class TextManager;

/** The texts that 'textmanager watch' shows, as they are now. */
class WatchedTexts
{
public:
    /** @param manager stays the caller's and must outlive this object. */
    WatchedTexts(const TextManager& manager, const QStringList& urls, bool isJsonWanted);

    /** Prints all texts, each at once, after a message that names their language. @return whether
     * they could be written. */
    bool print();
    /** As print(), but says nothing when all is as it was printed last. */
    bool printIfChanged();

private:
    QStringList current() const;
    void reportLanguage() const;
    void printText(const QString& url, const QString& text) const;

    const TextManager& m_Manager;
    const QStringList m_Urls;
    const bool m_IsJsonWanted;
    QStringList m_Printed; ///< the language and the texts
};
