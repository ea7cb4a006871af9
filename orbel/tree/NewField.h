#ifndef ORBEL_TREE_NEWFIELD_H
#define ORBEL_TREE_NEWFIELD_H

#include "FieldWatch.h"

class DataNode;

/// A field that was made and that nobody owns yet; lives on the stack. When it is not released, because memory has run
/// out on the way, it goes with everything below it, whoever refers to that.
class NewField {
public:
    explicit NewField(DataField& field) : m_field(&field), m_watch(field) {}
    NewField(const NewField&) = delete;
    NewField& operator=(const NewField&) = delete;
    ~NewField() {
        if (m_field && !m_watch.ended())
            discard(*m_field);
    }

    DataField* get() const { return m_field; }
    void release() { m_field = nullptr; }

    /// Take no memory.
    static void discard(DataField& field);
    static void discardChildren(DataField& field);

private:
    DataField* m_field;
    FieldWatch m_watch;
};

#endif
