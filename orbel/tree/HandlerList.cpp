#include "HandlerList.h"

#include "TreeState.h"

#include <algorithm>
#include <string>
#include <string_view>

HandlerList::~HandlerList() {
    removeAll();
}

void HandlerList::takeOver(DataField& field, bool marked, DataHandler* handler, int notifyCount) {
    treeState.disturb();
    m_handlers.reserve(2);
    if (marked) {
        m_unmade = 0;
        m_handlers.push_back(nullptr);
    }
    if (handler) {
        handler->moved(HandlerPlace::ofFirst(&field), place());
        m_handlers.push_back(handler);
        m_asking = handler->asks() ? 1 : 0;
    }
    m_notifyCount = notifyCount;
}

DataHandler* HandlerList::at(DataField& field, int index) {
    treeState.disturb();
    DataHandler*& handler = m_handlers[static_cast<std::size_t>(index)];
    if (!handler) {
        m_markers.push_back(std::make_unique<Marker>(std::string(markerName).data()));
        handler = m_markers.back().get();
        m_unmade = nowhere;
        handler->joined(place());
        handler->setField(&field);
    }
    return handler;
}

void HandlerList::makeRoom() {
    if (m_handlers.size() == m_handlers.capacity()) {
        treeState.disturb();
        m_handlers.reserve(m_handlers.size() * 2 + 1);
    }
}

void HandlerList::append(DataHandler* handler) {
    treeState.disturb();
    m_handlers.push_back(handler);
    try {
        handler->joined(place());
    } catch (...) {
        m_handlers.pop_back();
        throw;
    }
    m_asking += handler->asks() ? 1 : 0;
}

void HandlerList::appendMarker(DataField& field) {
    treeState.disturb();
    for (const auto& marker : m_markers)
        if (!marker->m_place && std::string_view(marker->writtenName()) == markerName) {
            append(marker.get());
            marker->setField(&field);
            return;
        }
    m_handlers.push_back(nullptr);
    m_unmade = m_handlers.size() - 1;
}

bool HandlerList::remove(DataHandler* handler) {
    treeState.disturb();
    const auto found = std::find(m_handlers.begin(), m_handlers.end(), handler);
    if (found == m_handlers.end())
        return false;
    if (m_unmade != nowhere && found - m_handlers.begin() < static_cast<std::ptrdiff_t>(m_unmade))
        --m_unmade;
    m_handlers.erase(found);
    handler->left(place());
    m_asking -= handler->asks() ? 1 : 0;
    return true;
}

void HandlerList::removeAll() {
    treeState.disturb();
    for (DataHandler* handler : m_handlers)
        if (handler) {
            handler->left(place());
            handler->m_field = nullptr;
        }
    m_handlers.clear();
    m_unmade = nowhere;
    m_asking = 0;
}
