#pragma once

#include "TextFolder.h"

#include <QByteArray>
#include <QHash>
#include <QMap>
#include <QMutex>
#include <QMutexLocker>
#include <QString>
#include <QTranslator>

#include <libintl.h>
#include <unicode/ures.h>

/**
 * What a user might look texts up with instead: each opens the texts of one language, and answers
 * as its users have it answer, in a QString. The answers stand in the header, so that the compiler
 * can do for a peer what it would do in a program that uses it.
 */
class TranslatorPeer
{
public:
    explicit TranslatorPeer(const TextFolder& folder);

    QString text(const QByteArray& id) const { return m_Translator.translate("", id.constData()); }

private:
    QTranslator m_Translator;
};

class GettextPeer
{
public:
    explicit GettextPeer(const TextFolder& folder);

    QString text(const QByteArray& id) const
    {
        const char* const answer = dgettext(domain(), id.constData());
        // What has no text is answered with the id itself.
        return answer == id.constData() ? QString() : QString::fromUtf8(answer);
    }

private:
    static const char* domain() { return "texts"; }
};

/**
 * A bundle of one flat table. In the nested tables of a tree, each opened on the way to the text, a
 * look-up took a third longer.
 */
class IcuPeer
{
public:
    explicit IcuPeer(const TextFolder& folder);
    ~IcuPeer();
    IcuPeer(const IcuPeer&) = delete;
    IcuPeer& operator=(const IcuPeer&) = delete;

    QString text(const QByteArray& id) const
    {
        UErrorCode error = U_ZERO_ERROR;
        int32_t length = 0;
        const UChar* const answer = ures_getStringByKey(m_Bundle, id.constData(), &length, &error);
        return U_SUCCESS(error) ? QString(reinterpret_cast<const QChar*>(answer), length)
                                : QString();
    }

private:
    UResourceBundle* m_Bundle;
};

/**
 * The practical limit: nothing but a hash for each language, and the lock that makes it safe to
 * replace one.
 */
class HashPeer
{
public:
    using Languages = QMap<QString, QHash<QString, QString>>;

    explicit HashPeer(const Languages& languages);

    QString text(const QString& url, const QString& languageKey) const
    {
        const QMutexLocker locker(&m_Mutex);
        const auto texts = m_Languages.constFind(languageKey);
        return texts == m_Languages.constEnd() ? QString() : texts->value(url);
    }

    /** Looks, under the lock, for what changed since, as a reload has to do at the least. */
    void lookForChanges(const TextFolder& folder) const;

private:
    Languages m_Languages;
    mutable QMutex m_Mutex{QMutex::Recursive};
};
