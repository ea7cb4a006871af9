#include "HandlerList.h"

#include <algorithm>

HandlerList::~HandlerList() {
    for (DataHandler* handler : m_handlers)
        handler->left(this);
}

bool HandlerList::contains(const DataHandler* handler) const {
    return std::find(m_handlers.begin(), m_handlers.end(), handler) != m_handlers.end();
}

void HandlerList::append(DataHandler* handler) {
    m_handlers.push_back(handler);
    handler->joined(this);
}

void HandlerList::removeAll(DataHandler* handler) {
    m_handlers.erase(std::remove(m_handlers.begin(), m_handlers.end(), handler), m_handlers.end());
    handler->left(this);
}

void HandlerList::recount() {
    m_notifyCount = static_cast<int>(std::count_if(m_handlers.begin(), m_handlers.end(), [](DataHandler* handler) {
        return handler->getNotifyOnValueChange() != 0;
    }));
}

DataHandler* HandlerList::marker() {
    if (!m_marker) {
        char name[] = "DUMMY";
        m_marker = std::make_unique<Marker>(name);
    }
    return m_marker.get();
}
