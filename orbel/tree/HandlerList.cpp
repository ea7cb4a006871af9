#include "HandlerList.h"

#include <algorithm>

HandlerList::~HandlerList() {
    removeAll();
}

void HandlerList::append(DataHandler* handler) {
    m_handlers.push_back(handler);
    handler->joined(this);
    m_asking += handler->asks() ? 1 : 0;
}

bool HandlerList::remove(DataHandler* handler) {
    const auto found = std::find(m_handlers.begin(), m_handlers.end(), handler);
    if (found == m_handlers.end())
        return false;
    m_handlers.erase(found);
    handler->left(this);
    m_asking -= handler->asks() ? 1 : 0;
    return true;
}

void HandlerList::removeAll() {
    for (DataHandler* handler : m_handlers) {
        handler->left(this);
        handler->m_field = nullptr;
    }
    m_handlers.clear();
    m_asking = 0;
}

DataHandler* HandlerList::marker() {
    if (!m_marker) {
        char name[] = "DUMMY";
        m_marker = std::make_unique<Marker>(name);
    }
    return m_marker.get();
}
