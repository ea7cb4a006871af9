#ifndef ORBEL_TREE_DATAHANDLER_H
#define ORBEL_TREE_DATAHANDLER_H

#include <orbel/foundation/Export.h>
#include <orbel/tree/EitherPointer.h>

#include <memory>
#include <vector>

class DataField;
class DataType;
class HandlerList;

/// Where a handler is registered: on a field that has no other, or on a list.
using HandlerPlace = EitherPointer<DataField, HandlerList>;

/// An observer of fields. Derive from it, override onChange, register it on a field or by path through a node.
///
/// Whoever creates a handler owns it. It takes itself off its field when it is destroyed, and is taken off when the
/// field is destroyed first. Contract: the destructor is not virtual; delete a handler as the class it was made as.
///
/// What may happen inside a callback: anything. A handler may set values, register and unregister itself and others,
/// destroy handlers, and delete the field that is notifying. The pass goes by position through the live list: when
/// a handler removes itself or an earlier one, the next in line is skipped in that pass; a later one that is removed is
/// not reached; handlers appended during a pass are reached by it; when the field dies the pass ends. The table in
/// docs/plugins.md tells what is heard in each case.
class ORBEL_API DataHandler {
public:
    DataHandler();
    /// `name` is cut to its first 99 characters.
    explicit DataHandler(char* name);
    /// A copy names the same field but is registered nowhere. Assigning takes the target off its fields first.
    DataHandler(const DataHandler& other);
    DataHandler& operator=(const DataHandler& other);
    ~DataHandler();

    /// Writes the handler's and its field's name to standard output.
    virtual void dump();
    /// The field was stored to. `changed` is false when a handler of the field asked for change detection and all
    /// texts stayed as they were, and on the notice that a handler has joined.
    virtual void onChange(DataField& field, bool changed);
    /// The same for a field of several values: `from` to `to` is the range of indices, both included.
    virtual void onChange(DataField& field, bool changed, int from, int to);
    /// The field has been given another type.
    virtual void onTypeChange(DataField& field, char* typeName);
    /// The class of field to create when the handler is registered by a path that names none.
    virtual DataType* getFieldType();

    /// The handler's own buffer.
    char* getName();
    /// Cut to the first 99 characters.
    void setName(char* name);
    /// A number for the handler's owner; the tree does not use it.
    int getOffset();
    /// See getOffset.
    void setOffset(int offset);
    /// Whether the field compares texts to tell real changes. Takes effect at the field's next registration or
    /// unregistration.
    int getNotifyOnValueChange();
    /// See getNotifyOnValueChange.
    void setNotifyOnValueChange(int notify);
    /// Whether values are to be converted; the tree does not use it.
    int getUseConvTable();
    /// See getUseConvTable.
    void setUseConvTable(int use);
    /// Empty until it is set.
    char* getConvTableName();
    /// `name` is cut to its first 99 characters.
    void setConvTableName(char* name);

    /// The field the handler is registered on, or null.
    DataField* getField();

protected:
    /// Only notes the field; DataField::registerHandler registers.
    void setField(DataField* field);

private:
    friend class DataField;
    friend class FieldHandlers;
    friend class HandlerList;

    bool asks() const { return m_notifyOnValueChange != 0; }
    bool isOn(HandlerPlace place) const;
    void joined(HandlerPlace place);
    void left(HandlerPlace place);
    void moved(HandlerPlace from, HandlerPlace to);
    void leaveAllPlaces();

    struct Details {
        char name[100] = {};
        char convTableName[100] = {};
        /// Besides m_place.
        std::vector<HandlerPlace> furtherPlaces;
    };

    Details& details();
    const char* writtenName() const { return m_details ? m_details->name : ""; }

    // Made on first need: sets meet one handler after the other, and what they do not look at would only spread the
    // handlers over more pages.
    std::unique_ptr<Details> m_details;
    DataField* m_field = nullptr;
    int m_offset = 0;
    int m_notifyOnValueChange = 0;
    int m_useConvTable = 0;

protected:
    /// For the plug-in side; the tree never reads it.
    int m_flags = 0;

private:
    HandlerPlace m_place;
};

#endif
