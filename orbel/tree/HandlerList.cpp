#include "HandlerList.h"

#include "TreeState.h"

#include <algorithm>
#include <string>

HandlerList::~HandlerList() {
    removeAll();
}

void HandlerList::takeOver(DataField& field, bool marked, DataHandler* handler, int notifyCount) {
    ++treeState.disturbances;
    m_handlers.reserve(2);
    if (marked)
        m_handlers.push_back(nullptr);
    if (handler) {
        handler->moved(HandlerPlace::ofFirst(&field), place());
        m_handlers.push_back(handler);
        m_asking = handler->asks() ? 1 : 0;
    }
    m_notifyCount = notifyCount;
}

DataHandler* HandlerList::at(DataField& field, int index) {
    ++treeState.disturbances;
    DataHandler*& handler = m_handlers[static_cast<std::size_t>(index)];
    if (!handler) {
        m_marker = std::make_unique<Marker>(std::string(markerName).data());
        m_marker->joined(place());
        m_marker->setField(&field);
        handler = m_marker.get();
    }
    return handler;
}

void HandlerList::append(DataHandler* handler) {
    ++treeState.disturbances;
    m_handlers.push_back(handler);
    handler->joined(place());
    m_asking += handler->asks() ? 1 : 0;
}

void HandlerList::appendMarker(DataField& field) {
    ++treeState.disturbances;
    if (!m_marker) {
        m_handlers.push_back(nullptr);
        return;
    }
    m_marker->setField(&field);
    append(m_marker.get());
}

bool HandlerList::remove(DataHandler* handler) {
    ++treeState.disturbances;
    if (!handler)
        return false;
    const auto found = std::find(m_handlers.begin(), m_handlers.end(), handler);
    if (found == m_handlers.end())
        return false;
    m_handlers.erase(found);
    handler->left(place());
    m_asking -= handler->asks() ? 1 : 0;
    return true;
}

void HandlerList::removeAll() {
    ++treeState.disturbances;
    for (DataHandler* handler : m_handlers)
        if (handler) {
            handler->left(place());
            handler->m_field = nullptr;
        }
    m_handlers.clear();
    m_asking = 0;
}
