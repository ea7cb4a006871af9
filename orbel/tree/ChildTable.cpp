#include "ChildTable.h"

#include "NameHash.h"
#include "NameOrder.h"
#include "TreeState.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>
#include <utility>

ChildTable::ChildTable() {
    ++treeState.childTables;
}

ChildTable::~ChildTable() {
    if (--treeState.childTables == 0)
        treeState.paths.release();
    for (const Entry& entry : m_entries) {
        delete entry.second();
        if (DataField* field = entry.first())
            field->m_listedIn = nullptr;
    }
}

const char* ChildTable::keyOf(const Entry& entry) {
    const DataField* field = entry.first();
    return field ? field->m_name : entry.second()->key.c_str();
}

inline bool ChildTable::isNamed(const Entry& entry, std::string_view name) {
    if (const Renamed* renamed = entry.second())
        return renamed->key == name;
    const DataField* field = entry.first();
    return field && name.size() < sizeof field->m_name && namehash::areEqual(field->m_name, name.data(), name.size()) &&
           field->m_name[name.size()] == '\0';
}

bool ChildTable::comesBefore(const Entry& left, const Entry& right) {
    return std::strcmp(keyOf(left), keyOf(right)) < 0;
}

inline std::size_t ChildTable::slotOf(std::string_view name, std::uint32_t hash) const {
    const std::size_t mask = m_slots.size() - 1;
    for (std::size_t slot = hash & mask;; slot = (slot + 1) & mask) {
        const Slot& candidate = m_slots[slot];
        if (candidate.position == none || (candidate.hash == hash && isNamed(m_entries[candidate.position], name)))
            return slot;
    }
}

inline std::uint32_t ChildTable::positionOf(std::string_view name, std::uint32_t hash) const {
    if (!m_slots.empty())
        return m_slots[slotOf(name, hash)].position;
    for (std::size_t position = m_first; position < m_entries.size(); ++position)
        if (m_entries[position] && isNamed(m_entries[position], name))
            return static_cast<std::uint32_t>(position);
    return none;
}

std::size_t ChildTable::slotOf(std::uint32_t position) const {
    const std::string_view key = keyOf(m_entries[position]);
    std::size_t slot = slotOf(key, namehash::of(key));
    // The name is the field's own buffer, and whoever asked for it can write there.
    for (std::size_t left = m_slots.size(); m_slots[slot].position != position && left > 0; --left)
        slot = left - 1;
    return slot;
}

std::uint32_t ChildTable::positionOf(const DataField& field) const {
    const Entry entry = Entry::ofFirst(const_cast<DataField*>(&field));
    const std::uint32_t position = positionOf(const_cast<DataField&>(field).getName());
    if (position != none && m_entries[position] == entry)
        return position;
    const auto found = std::find(m_entries.begin(), m_entries.end(), entry);
    return static_cast<std::uint32_t>(found - m_entries.begin());
}

std::uint32_t ChildTable::positionOf(std::string_view name) const {
    return positionOf(name, m_slots.empty() ? 0 : namehash::of(name));
}

bool ChildTable::contains(std::string_view name) const {
    return positionOf(name) != none;
}

std::optional<DataField*> ChildTable::look(std::string_view name, std::uint32_t hash) const {
    const std::uint32_t position = positionOf(name, hash);
    return position == none ? std::nullopt : std::optional(fieldOf(m_entries[position]));
}

DataField* ChildTable::find(std::string_view name) const {
    return look(name, m_slots.empty() ? 0 : namehash::of(name)).value_or(nullptr);
}

bool ChildTable::insert(DataField& field) {
    if (field.m_listedIn == this)
        return false;
    const std::string_view name = field.getName();
    const std::uint32_t hash = namehash::of(name);
    const std::uint32_t taken = positionOf(name, hash);
    if (taken != none && fieldOf(m_entries[taken]))
        return false;
    makeRoom();
    const Entry entry = entryFor(field);
    if (taken != none)
        eraseAt(taken);
    append(field, entry, hash);
    return true;
}

void ChildTable::insertNew(DataField& field, std::uint32_t hash) {
    makeRoom();
    append(field, Entry::ofFirst(&field), hash);
}

ChildTable::Entry ChildTable::entryFor(DataField& field) {
    // A field that another table lists by its name can be renamed without this one being told.
    return field.m_listedIn ? Entry::ofSecond(new Renamed{FieldRef(&field), field.getName()}) : Entry::ofFirst(&field);
}

/// There is room.
inline void ChildTable::append(DataField& field, Entry entry, std::uint32_t hash) {
    const auto position = static_cast<std::uint32_t>(m_entries.size());
    if (m_ordered == position && (position == 0 || comesBefore(m_entries.back(), entry)))
        ++m_ordered;
    m_entries.push_back(entry);
    if (entry.first())
        field.m_listedIn = this;
    if (!m_slots.empty())
        putIntoSlot({hash, position});
    ++m_live;
    ++m_shape;
}

inline bool ChildTable::hasFreeSlot() const {
    const std::size_t wanted = m_entries.size() + 1;
    return wanted <= fewChildren || wanted * 4 <= m_slots.size() * 3;
}

void ChildTable::makeRoom() {
    if (m_entries.size() == m_entries.capacity() || !hasFreeSlot())
        grow();
}

void ChildTable::grow() {
    if (m_entries.size() == m_entries.capacity())
        m_entries.reserve(std::max<std::size_t>(8, m_entries.size() * 2));
    if (hasFreeSlot())
        return;
    // Small tables grow faster: most structures have some dozens of children, and then it is done in two steps.
    std::vector<Slot> slots(m_slots.empty() ? 16 : m_slots.size() * (m_slots.size() < 256 ? 4 : 2));
    slots.swap(m_slots);
    if (slots.empty())
        fillSlots();
    for (const Slot& slot : slots)
        if (slot.position != none)
            putIntoSlot(slot);
}

void ChildTable::fillSlots() {
    std::fill(m_slots.begin(), m_slots.end(), Slot());
    if (m_slots.empty())
        return;
    for (std::size_t position = m_first; position < m_entries.size(); ++position)
        if (m_entries[position])
            putIntoSlot({namehash::of(keyOf(m_entries[position])), static_cast<std::uint32_t>(position)});
}

void ChildTable::putIntoSlot(Slot filled) {
    const std::size_t mask = m_slots.size() - 1;
    std::size_t slot = filled.hash & mask;
    while (m_slots[slot].position != none)
        slot = (slot + 1) & mask;
    m_slots[slot] = filled;
}

/// Closes the gap, so that what was put behind it by a collision is still found.
void ChildTable::freeSlot(std::size_t slot) {
    const std::size_t mask = m_slots.size() - 1;
    for (std::size_t next = (slot + 1) & mask; m_slots[next].position != none; next = (next + 1) & mask) {
        const std::size_t wanted = m_slots[next].hash & mask;
        if (((next - wanted) & mask) < ((next - slot) & mask))
            continue;
        m_slots[slot] = m_slots[next];
        slot = next;
    }
    m_slots[slot] = Slot();
}

DataField* ChildTable::erase(std::string_view name) {
    const std::uint32_t position = positionOf(name);
    return position == none ? nullptr : eraseAt(position);
}

DataField* ChildTable::eraseAt(std::uint32_t position) {
    treeState.paths.drop();
    const Entry entry = m_entries[position];
    if (!m_slots.empty())
        freeSlot(slotOf(position));
    m_entries[position] = {};
    DataField* field = released(entry);
    --m_live;
    while (!m_entries.empty() && !m_entries.back())
        m_entries.pop_back();
    while (m_first < m_entries.size() && !m_entries[m_first])
        ++m_first;
    m_ordered = std::min(m_ordered, m_entries.size());
    m_first = std::min(m_first, m_entries.size());
    if (m_entries.size() > 2 * m_live + 16) {
        dropHoles();
        fillSlots();
    }
    return field;
}

/// The child of an entry that is in the table no more.
DataField* ChildTable::released(const Entry& entry) {
    DataField* field = fieldOf(entry);
    if (entry.first())
        field->m_listedIn = nullptr;
    delete entry.second();
    return field;
}

/// What was in it, in order.
std::vector<ChildTable::Entry> ChildTable::takeEntries() {
    treeState.paths.drop();
    putInOrder();
    m_slots.clear();
    m_live = m_ordered = m_first = 0;
    ++m_shape;
    return std::exchange(m_entries, {});
}

DataField* ChildTable::takeFirst() {
    if (m_live == 0)
        return nullptr;
    putInOrder();
    return eraseAt(static_cast<std::uint32_t>(m_first));
}

DataField* ChildTable::at(std::size_t index) {
    if (index >= m_live)
        return nullptr;
    putInOrder();
    if (m_entries.size() - m_first == m_live)
        return fieldOf(m_entries[m_first + index]);
    std::size_t position = m_first;
    for (; index > 0 || !m_entries[position]; ++position)
        if (m_entries[position])
            --index;
    return fieldOf(m_entries[position]);
}

void ChildTable::dropHoles() {
    const auto isHole = [](const Entry& entry) { return !entry; };
    const auto behind = m_entries.begin() + static_cast<std::ptrdiff_t>(m_ordered);
    m_ordered -= static_cast<std::size_t>(std::count_if(m_entries.begin(), behind, isHole));
    m_entries.erase(std::remove_if(m_entries.begin(), m_entries.end(), isHole), m_entries.end());
    m_first = 0;
    ++m_shape;
}

void ChildTable::putInOrder() {
    if (m_ordered == m_entries.size())
        return;
    dropHoles();
    const auto behind = m_entries.begin() + static_cast<std::ptrdiff_t>(m_ordered);
    sortByName(behind, m_entries.end());
    std::inplace_merge(m_entries.begin(), behind, m_entries.end(), comesBefore);
    m_ordered = m_entries.size();
    fillSlots();
}

/// An entry and what is compared of its name before all of it: siblings often differ in a number at the end alone.
struct ChildTable::Sorted {
    std::uint64_t number;
    Entry entry;

    bool operator<(const Sorted& other) const {
        return number == other.number ? comesBefore(entry, other.entry) : number < other.number;
    }
};

/// Reads each name once and sorts what stands side by side, instead of comparing names that lie far apart. Without
/// memory for that it compares them.
void ChildTable::sortByName(std::vector<Entry>::iterator first, std::vector<Entry>::iterator last) {
    const auto size = static_cast<std::size_t>(last - first);
    const std::unique_ptr<Sorted[]> sorted(size > 1 ? new (std::nothrow) Sorted[size] : nullptr);
    if (!sorted) {
        std::sort(first, last, comesBefore);
        return;
    }
    // Names are brought near many at a time.
    for (auto entry = first; entry != last; ++entry)
        if (const DataField* field = entry->first())
            __builtin_prefetch(field->m_name);
    const char* const name = keyOf(*first);
    std::size_t common = std::strlen(name);
    for (auto entry = first; entry != last; ++entry)
        common = nameorder::commonStart(name, keyOf(*entry), common);
    std::transform(first, last, sorted.get(), [common](const Entry& entry) {
        return Sorted{nameorder::numberOf(keyOf(entry) + common), entry};
    });
    std::sort(sorted.get(), sorted.get() + size);
    std::transform(sorted.get(), sorted.get() + size, first, [](const Sorted& each) { return each.entry; });
}

std::size_t ChildTable::upperBound(const char* name) const {
    std::size_t from = m_first;
    std::size_t to = m_entries.size();
    while (from < to) {
        const std::size_t middle = from + (to - from) / 2;
        std::size_t alive = middle;
        while (alive < to && !m_entries[alive])
            ++alive;
        if (alive < to && std::strcmp(keyOf(m_entries[alive]), name) <= 0)
            from = alive + 1;
        else
            to = middle;
    }
    return from;
}

void ChildTable::keepKey(DataField& field) {
    const std::uint32_t position = positionOf(field);
    m_entries[position] = Entry::ofSecond(new Renamed{FieldRef(&field), field.getName()});
    field.m_listedIn = nullptr;
}

void ChildTable::forget(DataField& field) {
    treeState.paths.drop();
    const std::uint32_t position = positionOf(field);
    try {
        m_entries[position] = Entry::ofSecond(new Renamed{FieldRef(), field.getName()});
    } catch (...) {
        eraseAt(position);
    }
}

DataField* ChildTable::Cursor::next() {
    m_table->putInOrder();
    if (m_shape != m_table->m_shape) {
        m_next = m_shape == 0 ? 0 : m_table->upperBound(m_name.c_str());
        m_shape = m_table->m_shape;
    }
    while (m_next < m_table->m_entries.size()) {
        const Entry entry = m_table->m_entries[m_next++];
        if (DataField* field = entry ? fieldOf(entry) : nullptr) {
            m_name = keyOf(entry);
            return field;
        }
    }
    return nullptr;
}
