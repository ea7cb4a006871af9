#ifndef ORBEL_FOUNDATION_DATATYPE_H
#define ORBEL_FOUNDATION_DATATYPE_H

#include <orbel/foundation/Export.h>

class DataBaseType;

/// The run-time type record of a tree class: its name, a small id, the record of its base class, and a factory of its
/// items. Records are made on first use of their class and live as long as the library. Ids follow the order of
/// first use: do not store them.
///
/// The order of virtual operations is binary contract.
class ORBEL_API DataType {
public:
    /// The id of the next record: the number of records made so far.
    static int lastId;

    /// `name` is a class name of at most 19 characters; what is beyond is not kept.
    DataType(DataType* parent, char* name);
    /// A copy has the same id.
    DataType(const DataType&) = default;
    DataType& operator=(const DataType&) = default;

    virtual ~DataType();

    /// A new item of the record's class under this name, owned by the caller. The number is ignored.
    virtual DataBaseType* alloc(char* name, int ignored) = 0;

    /// Does nothing when the name has more than 19 characters.
    void setName(char* name);
    /// The record's own buffer.
    char* getName();
    /// Replaces the id that the constructor gave.
    void setID(int id);
    /// Unless it was set, how many records were made before this one.
    int getID();

    /// 1 when `type` is this record or one of its ancestors, else 0.
    int isDerivedFrom(DataType* type);

private:
    int m_id;
    char m_name[20];
    DataType* m_parent;
};

#endif
