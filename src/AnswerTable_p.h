#pragma once

#include "LookUpDocuments_p.h"
#include "TextHash_p.h"

#include <QString>

#include <cstring>
#include <memory>
#include <vector>

/** What a look-up by text URL came to. */
struct LookUpAnswer {
    QString text;
    bool ok = false;
    LookUpStep lastStep = LookUpStep::SecondFallback; ///< the text is from there, or there is none
};

/**
 * Answers by text URL, in a hash table with open addressing.
 *
 * A look-up spends its time waiting for memory. So the characters of a URL lie right behind its
 * answer; a QHash would have them in a place of their own.
 */
class AnswerTable
{
public:
    /** The answer, until the table goes; null when there is none. */
    const LookUpAnswer* find(const QString& textUrl) const
    {
        if (m_Slots.empty())
            return nullptr;
        const quint64 hash = m_Hash(textUrl);
        for (std::size_t i = firstSlot(hash); m_Slots[i].entry != nullptr; i = slotAfter(i)) {
            if (m_Slots[i].hash == hash && m_Slots[i].entry->isFor(textUrl))
                return &m_Slots[i].entry->answer;
        }
        return nullptr;
    }
    /** Takes in the answer to a URL that has none yet, and no part of the URL's own data. */
    void insert(const QString& textUrl, const LookUpAnswer& answer);

private:
    /** An answer, and behind it in memory the characters of its URL. */
    struct Entry {
        struct Deleter {
            void operator()(Entry* entry) const;
        };
        using Pointer = std::unique_ptr<Entry, Deleter>;

        static Pointer make(const QString& textUrl, const LookUpAnswer& answer);
        bool isFor(const QString& textUrl) const
        {
            return urlSize == textUrl.size() &&
                   std::memcmp(url(), textUrl.constData(), byteCount(textUrl)) == 0;
        }
        const void* url() const { return this + 1; }
        void* url() { return this + 1; }

        LookUpAnswer answer;
        QString::size_type urlSize;
    };
    struct Slot {
        quint64 hash = 0;
        Entry::Pointer entry; ///< null where the slot is free
    };

    static std::size_t byteCount(const QString& textUrl)
    {
        return static_cast<std::size_t>(textUrl.size()) * sizeof(QChar);
    }
    std::size_t firstSlot(quint64 hash) const
    {
        return static_cast<std::size_t>(hash) & (m_Slots.size() - 1);
    }
    std::size_t slotAfter(std::size_t i) const { return (i + 1) & (m_Slots.size() - 1); }
    void put(Slot slot);
    void grow();

    /** A power of two of them, at most half of them taken. */
    std::vector<Slot> m_Slots;
    std::size_t m_Count = 0;
    TextHash m_Hash;
};
