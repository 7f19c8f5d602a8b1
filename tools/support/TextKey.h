#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

/**
 * A text as a key of QHash and QSet, where texts come from files of strangers. Qt's own hash of a
 * QString is one with which keys that collide can be made up, whatever its seed; each would then
 * cost a walk along all others.
 */
class TextKey : public QString
{
public:
    TextKey() = default;
    TextKey(const QString& text)
        : QString(text)
    {
    }
};

using TextKeyHash = decltype(qHash(QString())); // another type in each Qt

/** With a secret of the process. */
TextKeyHash qHash(const TextKey& key, TextKeyHash seed = 0);

/** What QStringList::removeDuplicates() does, which has Qt's hash. */
void removeRepeated(QStringList& texts);
