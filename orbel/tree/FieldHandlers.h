#ifndef ORBEL_TREE_FIELDHANDLERS_H
#define ORBEL_TREE_FIELDHANDLERS_H

#include <cstdint>

class DataField;
class DataHandler;
class HandlerList;

/// The observers of one field, in order of registration, in one word. A single handler, with or without the marker in
/// front of it, stands in the word itself and takes no memory; others are on a list, which a field and its clones
/// share.
///
/// The marker is the handler "DUMMY" that keeps a field created by path from being removed with its last observer. It
/// only becomes an object when somebody asks for it.
class FieldHandlers {
public:
    FieldHandlers() = default;
    FieldHandlers(const FieldHandlers&) = delete;
    FieldHandlers& operator=(const FieldHandlers&) = delete;
    ~FieldHandlers();

    bool empty() const { return m_word == 0; }
    /// How many there are, the marker included.
    int size() const { return list() ? listSize() : sizeInWord(); }
    /// Makes the marker when it stands there.
    DataHandler* at(DataField& field, int index);
    const char* nameAt(int index) const;
    bool contains(const DataHandler& handler) const;

    /// After this, appending a handler that is on no other field does not fail.
    void makeRoom(DataField& field);
    void append(DataField& field, DataHandler* handler);
    /// It must not be there already.
    void appendMarker(DataField& field);
    /// False when it is not there; then it may even be dead.
    bool remove(DataField& field, DataHandler* handler);
    /// The handlers then name no field.
    void removeAll(DataField& field);

    /// How many handlers asked for real changes at the last recount.
    int notifyCount() const;
    void recount();

    /// Whether there is at most one besides the marker, and it wants to hear of every store.
    bool isSimple() const { return (m_word & (isList | isAsking)) == 0; }
    /// Equal as long as the observers in the word are the same.
    std::uintptr_t state() const { return m_word; }
    /// Null when the word does not hold the observers itself, or holds none but the marker.
    DataHandler* single() const {
        return (m_word & isList) == 0 ? reinterpret_cast<DataHandler*>(m_word & ~flags) : nullptr;
    }
    bool hasMarkerInFront() const { return (m_word & (isList | isMarked)) == isMarked; }
    HandlerList* list() const {
        return (m_word & isList) != 0 ? reinterpret_cast<HandlerList*>(m_word & ~flags) : nullptr;
    }

    /// What takes memory of sharing them later.
    void prepareToShare(DataField& field) { makeList(field); }
    /// From now on both have the same observers; `field` must have none of its own.
    void share(FieldHandlers& other, DataField& otherField);

private:
    static constexpr std::uintptr_t isList = 1;
    static constexpr std::uintptr_t isMarked = 2;
    static constexpr std::uintptr_t isAsking = 4;
    static constexpr std::uintptr_t flags = isList | isMarked | isAsking;

    int sizeInWord() const { return (single() ? 1 : 0) + (hasMarkerInFront() ? 1 : 0); }
    int listSize() const;
    HandlerList& makeList(DataField& field);
    void dropList();

    std::uintptr_t m_word = 0;
};

#endif
