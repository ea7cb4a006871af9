#include <orbel/tree/FieldHandlers.h>

#include "HandlerList.h"
#include "TreeState.h"

#include <memory>

FieldHandlers::~FieldHandlers() {
    dropList();
}

void FieldHandlers::dropList() {
    treeState.disturb();
    HandlerList* held = list();
    if (held && --held->owners == 0)
        delete held;
    m_word = 0;
}

int FieldHandlers::listSize() const {
    return list()->size();
}

const char* FieldHandlers::nameAt(int index) const {
    const HandlerList* held = list();
    const DataHandler* handler = held ? held->made(index) : index == (hasMarkerInFront() ? 1 : 0) ? single() : nullptr;
    return handler ? handler->writtenName() : HandlerList::markerName;
}

DataHandler* FieldHandlers::at(DataField& field, int index) {
    if (!list()) {
        if (DataHandler* handler = single(); handler && index == (hasMarkerInFront() ? 1 : 0))
            return handler;
    }
    return makeList(field).at(field, index);
}

bool FieldHandlers::contains(const DataHandler& handler) const {
    const HandlerList* held = list();
    return held ? handler.isOn(HandlerPlace::ofSecond(const_cast<HandlerList*>(held))) : single() == &handler;
}

void FieldHandlers::makeRoom(DataField& field) {
    if (list() || single())
        makeList(field).makeRoom();
}

void FieldHandlers::append(DataField& field, DataHandler* handler) {
    if (!list() && !single()) {
        handler->joined(HandlerPlace::ofFirst(&field));
        m_word |= reinterpret_cast<std::uintptr_t>(handler);
        return;
    }
    makeList(field).append(handler);
}

void FieldHandlers::appendMarker(DataField& field) {
    if (m_word == 0)
        m_word = isMarked;
    else
        makeList(field).appendMarker(field);
}

bool FieldHandlers::remove(DataField& field, DataHandler* handler) {
    if (HandlerList* held = list())
        return held->remove(handler);
    if (!handler || single() != handler)
        return false;
    m_word &= isMarked;
    handler->left(HandlerPlace::ofFirst(&field));
    return true;
}

void FieldHandlers::removeAll(DataField& field) {
    if (HandlerList* held = list()) {
        held->removeAll();
        return;
    }
    if (DataHandler* handler = single()) {
        handler->left(HandlerPlace::ofFirst(&field));
        handler->setField(nullptr);
    }
    m_word = 0;
}

void FieldHandlers::recount() {
    if (HandlerList* held = list()) {
        held->recount();
        return;
    }
    const DataHandler* handler = single();
    m_word = (m_word & ~isAsking) | (handler && handler->asks() ? isAsking : 0);
}

void FieldHandlers::share(FieldHandlers& other, DataField& otherField) {
    HandlerList& shared = other.makeList(otherField);
    ++shared.owners;
    dropList();
    m_word = reinterpret_cast<std::uintptr_t>(&shared) | isList;
}

HandlerList& FieldHandlers::makeList(DataField& field) {
    if (HandlerList* held = list())
        return *held;
    auto made = std::make_unique<HandlerList>();
    made->takeOver(field, hasMarkerInFront(), single(), notifyCount());
    ++made->owners;
    m_word = reinterpret_cast<std::uintptr_t>(made.get()) | isList;
    return *made.release();
}
