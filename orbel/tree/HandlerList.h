#ifndef ORBEL_TREE_HANDLERLIST_H
#define ORBEL_TREE_HANDLERLIST_H

#include "FieldWatch.h"

#include <orbel/tree/DataHandler.h>

#include <memory>
#include <vector>

/// The observers of a field and of its clones, in order of registration. Handlers know the lists they are on, so
/// neither side is ever left with a pointer to something dead.
class HandlerList {
public:
    int owners = 0;

    HandlerList() = default;
    HandlerList(const HandlerList&) = delete;
    HandlerList& operator=(const HandlerList&) = delete;
    ~HandlerList();

    int size() const { return static_cast<int>(m_handlers.size()); }
    DataHandler* at(int index) const { return m_handlers[static_cast<std::size_t>(index)]; }

    bool contains(const DataHandler& handler) const { return handler.isOn(this); }
    void append(DataHandler* handler);
    /// False when it is not on the list; then it may even be dead.
    bool remove(DataHandler* handler);
    /// The handlers then name no field.
    void removeAll();

    /// The field a handler is registered on. Copies of a handler name a field, which may be dead, but are on no list.
    static DataField* fieldOf(const DataHandler& handler) { return handler.m_list ? handler.m_field : nullptr; }

    /// How many handlers asked for real changes at the last recount.
    int notifyCount() const { return m_notifyCount; }
    void recount() { m_notifyCount = m_asking; }
    /// A handler on the list asks from now on, or asks no more.
    void asks(bool asks) { m_asking += asks ? 1 : -1; }

    /// The handler "DUMMY" that keeps a field created by path from being removed with its last observer. The list
    /// owns it, for nobody else could know when it is done with.
    DataHandler* marker();

    /// Calls `call` on each handler by position, re-reading the size: the list may change meanwhile. `field` is the
    /// field that notifies; when it dies the walk ends. The caller keeps the list alive.
    template <class Call>
    void walk(DataField& field, Call call) const {
        const FieldWatch watch(field);
        for (std::size_t at = 0; !watch.ended() && at < m_handlers.size(); ++at)
            call(*m_handlers[at]);
    }

private:
    // Handlers have no virtual destructor: only a final class may be deleted through its own pointer.
    class Marker final : public DataHandler {
        using DataHandler::DataHandler;
    };

    std::vector<DataHandler*> m_handlers;
    int m_asking = 0;
    int m_notifyCount = 0;
    std::unique_ptr<Marker> m_marker;
};

#endif
