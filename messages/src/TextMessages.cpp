#include "TextMessages.h"

#include "CompiledMessage.h"

#include <TextManagerBase.h>

#include <QCache>
#include <QDebug>
#include <QMutex>
#include <QPair>

#include <algorithm>

namespace
{

/**
 * Compiled messages, for they cost ten times what it costs to format one. ICU changes them while it
 * formats, so that it does so under the mutex.
 */
class MessageMemory
{
public:
    QString format(const QString& pattern, const QVariantMap& arguments, const QString& languageKey,
                   QString& error)
    {
        const Key key(languageKey, pattern);
        const QMutexLocker locker(&m_Mutex);
        if (CompiledMessage* remembered = m_Messages.object(key))
            return remembered->format(arguments, error);
        auto message = std::make_unique<CompiledMessage>(pattern, languageKey);
        const QString text = message->format(arguments, error);
        m_Messages.insert(key, message.release(), std::max(pattern.size(), leastCost));
        return text;
    }

private:
    using Key = QPair<QString, QString>; // language and pattern

    // In characters, which a compiled message costs some twenty bytes each. A short one costs more
    // for what all have: 10 kB, with dates up to 80.
    static constexpr QString::size_type leastCost = 500;
    static constexpr QString::size_type mostCost = 128 * leastCost;

    QMutex m_Mutex;
    QCache<Key, CompiledMessage> m_Messages{mostCost};
};

/** @param name what a warning calls the pattern. */
QString format(const QString& name, const QString& pattern, const QVariantMap& arguments,
               const QString& languageKey)
{
    static MessageMemory memory;
    QString error;
    const QString message = memory.format(pattern, arguments, languageKey, error);
    if (error.isEmpty())
        return message;
    qWarning().noquote() << "Unable to format message" << name << ":" << error;
    return pattern;
}

} // namespace

TextMessages::TextMessages(const TextManagerBase& textManager)
    : m_TextManager(textManager)
{
}

QString TextMessages::getMessage(const QString& textUrl, const QVariantMap& arguments,
                                 const QString& languageKey) const
{
    // The language first, and then its own text: a reload between the two cannot bring the text of
    // one language under the rules of another, unless the text itself has gone.
    const QString language = m_TextManager.getAnsweringLanguage(textUrl, languageKey);
    if (language.isEmpty())
        return QString();
    return format(textUrl, m_TextManager.getText(textUrl, language), arguments, language);
}

QString TextMessages::formatPattern(const QString& pattern, const QVariantMap& arguments,
                                    const QString& languageKey)
{
    return format(pattern, pattern, arguments, languageKey);
}
