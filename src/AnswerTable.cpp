#include "AnswerTable_p.h"

#include <new>
#include <utility>

void AnswerTable::insert(const QString& textUrl, const LookUpAnswer& answer)
{
    if (2 * m_Count >= m_Slots.size())
        grow();
    ++m_Count;
    put({m_Hash(textUrl), Entry::make(textUrl, answer)});
}

AnswerTable::Entry::Pointer AnswerTable::Entry::make(const QString& textUrl,
                                                     const LookUpAnswer& answer)
{
    void* const memory = ::operator new(sizeof(Entry) + byteCount(textUrl));
    Pointer entry(new (memory) Entry{answer, textUrl.size()});
    std::memcpy(entry->url(), textUrl.constData(), byteCount(textUrl));
    return entry;
}

void AnswerTable::Entry::Deleter::operator()(Entry* entry) const
{
    entry->~Entry();
    ::operator delete(entry);
}

void AnswerTable::put(Slot slot)
{
    std::size_t i = firstSlot(slot.hash);
    while (m_Slots[i].entry != nullptr)
        i = slotAfter(i);
    m_Slots[i] = std::move(slot);
}

void AnswerTable::grow()
{
    constexpr std::size_t fewestSlots = 16;
    std::vector<Slot> oldSlots(m_Slots.empty() ? fewestSlots : 2 * m_Slots.size());
    oldSlots.swap(m_Slots);
    for (Slot& slot : oldSlots) {
        if (slot.entry != nullptr)
            put(std::move(slot));
    }
}
