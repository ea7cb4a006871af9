#ifndef ORBEL_TREE_CHILDTABLE_H
#define ORBEL_TREE_CHILDTABLE_H

#include <orbel/tree/DataField.h>
#include <orbel/tree/EitherPointer.h>
#include <orbel/tree/FieldRef.h>
#include <orbel/tree/SharedPart.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The children of a structure and of its copies: found by name through a hash index, listed in the byte order of
/// their names. The order is made when somebody asks for it, so that a tree is built without sorting; what leaves is
/// a hole until there are many.
///
/// A child stands here under the name that it had when it came in. As long as it keeps that name the table reads it in
/// the field itself; the field tells when it is renamed or destroyed. A child that is destroyed while it stands here
/// keeps its place and its name, for a field leaves its parent alone, until another comes under that name.
class ChildTable {
public:
    int owners = 0;

    ChildTable();
    ChildTable(const ChildTable&) = delete;
    ChildTable& operator=(const ChildTable&) = delete;
    ~ChildTable();

    std::size_t size() const { return m_live; }
    /// Whether no other structure shares these children: walks over them are owners too.
    bool hasOneStructure() const { return owners - m_cursors == 1; }

    bool contains(std::string_view name) const;
    /// Null also for a child that was destroyed.
    DataField* find(std::string_view name) const;
    /// For whoever has hashed the name already, see namehash::of; no value when the name is free.
    std::optional<DataField*> look(std::string_view name, std::uint32_t hash) const;
    /// Under the field's present name; false when the name is taken by a child that is alive.
    bool insert(DataField& field);
    /// The name is not taken, and no other table lists the field.
    void insertNew(DataField& field, std::uint32_t hash);
    /// After this, adding an entry does not fail half-way.
    void makeRoom();
    /// Null when there is no such name.
    DataField* erase(std::string_view name);
    /// The first in order, which leaves; null also when it was destroyed.
    DataField* takeFirst();
    /// All leave: `call(field, index)` in order, where the index counts those that were destroyed too. The table must
    /// stay as it is meanwhile.
    template <class Call>
    void takeAll(Call call) {
        std::size_t index = 0;
        for (const Entry& entry : takeEntries()) {
            if (!entry)
                continue;
            if (DataField* field = released(entry))
                call(*field, index);
            ++index;
        }
    }
    /// In order; null past the end and for a child that was destroyed.
    DataField* at(std::size_t index);

    /// A listed field is about to be renamed, or is being destroyed.
    void keepKey(DataField& field);
    void forget(DataField& field);

    /// Calls `call(name, field)` on each child in order.
    template <class Call>
    void forEach(Call call) {
        putInOrder();
        for (std::size_t at = 0; at < m_entries.size(); ++at)
            if (const Entry entry = m_entries[at]; entry && fieldOf(entry))
                call(keyOf(entry), *fieldOf(entry));
    }

    /// Goes over the children in order while they may come and go: goes on behind the name of the last, not behind
    /// its place. The structure may be given other children meanwhile.
    class Cursor {
    public:
        explicit Cursor(const SharedPart<ChildTable>& table) : m_table(table) { ++m_table->m_cursors; }
        Cursor(const Cursor&) = delete;
        Cursor& operator=(const Cursor&) = delete;
        ~Cursor() { --m_table->m_cursors; }
        /// Null behind the last.
        DataField* next();
        /// The name under which the last stands, or stood.
        char* name() { return m_name.data(); }

    private:
        SharedPart<ChildTable> m_table;
        std::string m_name;
        std::size_t m_next = 0;
        std::uint64_t m_shape = 0;
    };

private:
    /// A child that the table is not told of any more.
    struct Renamed {
        FieldRef field;
        std::string key;
    };
    using Entry = EitherPointer<DataField, Renamed>;

    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t position = none;
    };
    static constexpr std::uint32_t none = UINT32_MAX;
    /// So few are looked through faster than hashed.
    static constexpr std::size_t fewChildren = 6;

    static DataField* fieldOf(const Entry& entry) {
        return entry.second() ? entry.second()->field.get() : entry.first();
    }
    struct Sorted;

    static const char* keyOf(const Entry& entry);
    static bool isNamed(const Entry& entry, std::string_view name);
    static bool comesBefore(const Entry& left, const Entry& right);

    std::size_t slotOf(std::string_view name, std::uint32_t hash) const;
    std::size_t slotOf(std::uint32_t position) const;
    std::uint32_t positionOf(std::string_view name) const;
    std::uint32_t positionOf(std::string_view name, std::uint32_t hash) const;
    std::uint32_t positionOf(const DataField& field) const;
    DataField* eraseAt(std::uint32_t position);
    static DataField* released(const Entry& entry);
    std::vector<Entry> takeEntries();
    void freeSlot(std::size_t slot);
    void putIntoSlot(Slot filled);
    static Entry entryFor(DataField& field);
    void append(DataField& field, Entry entry, std::uint32_t hash);
    bool hasFreeSlot() const;
    void grow();
    void fillSlots();
    void dropHoles();
    void putInOrder();
    static void sortByName(std::vector<Entry>::iterator first, std::vector<Entry>::iterator last);
    std::size_t upperBound(const char* name) const;

    std::vector<Entry> m_entries;
    /// Empty while there are few children, else a power of two.
    std::vector<Slot> m_slots;
    std::size_t m_live = 0;
    /// How many entries at the front are in order.
    std::size_t m_ordered = 0;
    /// No entry before this one is alive.
    std::size_t m_first = 0;
    /// Counts what moves entries or adds one.
    std::uint64_t m_shape = 0;
    int m_cursors = 0;
};

#endif
