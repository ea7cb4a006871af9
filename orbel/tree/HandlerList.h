#ifndef ORBEL_TREE_HANDLERLIST_H
#define ORBEL_TREE_HANDLERLIST_H

#include <orbel/tree/DataHandler.h>
#include <orbel/tree/FieldHandlers.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

/// The observers of a field and of its clones, where they are more than one word holds. Handlers know the lists they
/// are on, so neither side is ever left with a pointer to something dead.
class HandlerList {
public:
    static constexpr char markerName[] = "DUMMY";

    int owners = 0;

    HandlerList() = default;
    HandlerList(const HandlerList&) = delete;
    HandlerList& operator=(const HandlerList&) = delete;
    ~HandlerList();

    /// Takes the observers of a field that had no list.
    void takeOver(DataField& field, bool marked, DataHandler* handler, int notifyCount);

    int size() const { return static_cast<int>(m_handlers.size()); }
    /// Null where the marker stands that nobody has asked for.
    const std::vector<DataHandler*>& handlers() const { return m_handlers; }
    DataHandler* made(int index) const { return m_handlers[static_cast<std::size_t>(index)]; }
    /// Where the marker stands that nobody has asked for, the only null; the size without one.
    std::size_t unmadeMarker() const { return std::min(m_unmade, m_handlers.size()); }
    /// The marker is made, for this field, when it stands there.
    DataHandler* at(DataField& field, int index);

    /// After this, appending a handler that is on no other field does not fail.
    void makeRoom();
    void append(DataHandler* handler);
    void appendMarker(DataField& field);
    bool remove(DataHandler* handler);
    /// The handlers then name no field.
    void removeAll();

    /// How many handlers asked for real changes at the last recount.
    int notifyCount() const { return m_notifyCount; }
    void recount() { m_notifyCount = m_asking; }
    /// A handler on the list asks from now on, or asks no more.
    void asks(bool asks) { m_asking += asks ? 1 : -1; }

    /// The field a handler is registered on. Copies of a handler name a field, which may be dead, but are on none.
    static DataField* fieldOf(const DataHandler& handler) { return handler.m_place ? handler.m_field : nullptr; }

private:
    // Handlers have no virtual destructor: only a final class may be deleted through its own pointer.
    class Marker final : public DataHandler {
        using DataHandler::DataHandler;
    };

    HandlerPlace place() { return HandlerPlace::ofSecond(this); }

    static constexpr std::size_t nowhere = SIZE_MAX;

    std::vector<DataHandler*> m_handlers;
    std::size_t m_unmade = nowhere;
    int m_asking = 0;
    int m_notifyCount = 0;
    // Nobody else could know when they are done with. There is more than one when a client has renamed the first or
    // taken it elsewhere.
    std::vector<std::unique_ptr<Marker>> m_markers;
};

inline int FieldHandlers::notifyCount() const {
    const HandlerList* held = list();
    return held ? held->notifyCount() : (m_word & isAsking) != 0 ? 1 : 0;
}

#endif
