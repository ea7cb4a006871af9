#ifndef ORBEL_TREE_DATABASETYPE_H
#define ORBEL_TREE_DATABASETYPE_H

#include <orbel/foundation/DataType.h>
#include <orbel/foundation/Export.h>
#include <orbel/tree/OwnerSet.h>

#include <iosfwd>
#include <string_view>

class ChildTable;
class DataField;

/// A named, typed, reference-counted item. Everything in a tree derives from it through DataField.
///
/// Ownership is counted by owner: a node takes one reference on each child, and only deletes children that nobody
/// else refers to. Contract: the destructor is not virtual here; delete items as DataField or below.
///
/// The order of virtual operations, here and in the classes below, is binary contract.
class ORBEL_API DataBaseType {
public:
    /// The nesting level that renderings share, in tabs. May be negative, which writes none.
    static int indentation;
    static DataType* classType;

    /// Does nothing: the record of this class is there from the moment the library is loaded.
    static void init();
    static DataType* getClassType();

    /// Set `indentation`.
    static void setIndent(int level);
    /// Gives `indentation`.
    static int getIndent();
    /// One level deeper; gives the new level.
    static int incrIndent();
    /// One level less deep; gives the new level.
    static int decrIndent();

    /// Writes `indentation` tabs. Contract: the stream's fill character stays a tab.
    static void indent(std::ostream& os);

    /// `name` is cut to its first 99 characters.
    explicit DataBaseType(char* name);
    /// A copy has the same name and type, and owners of its own.
    DataBaseType(const DataBaseType& other);
    DataBaseType& operator=(const DataBaseType& other);
    ~DataBaseType();

    /// The class name, a constant.
    virtual const char* getTypeName();
    /// Writes the item as text for people, behind its name unless `withName` is 0. Of several values or elements only
    /// those from `first` to `last`: all for a negative `first`, `first` alone for a negative `last`.
    virtual void dump(std::ostream& os, int first, int last, int withName);
    /// Writes the item in tags of its name. Contract: what is below it stands there as dump writes it.
    virtual void dumpXML(std::ostream& os);

    /// Cut to the first 99 characters.
    void setName(char* name);
    /// The item's own buffer; valid as long as the item, changed by setName.
    char* getName();

    /// The record that isOfType and isExactType answer by; constructors set it.
    void setType(DataType* type);
    /// 1 when the item's class is `type` or derives from it, else 0.
    int isOfType(DataType* type);
    /// 1 when the item's class is exactly `type`, else 0.
    int isExactType(DataType* type);

    /// Adds one anonymous reference; returns the new count.
    int ref();
    /// Removes one anonymous reference; returns the new count, never below 0.
    int unref();

    /// Adds the reference of `owner`; returns the count of distinct owners. Further calls of the same owner only count
    /// in getRefCalls().
    int ref(void* owner, DataField* referrer);
    /// Removes the reference of `owner`; returns the count of distinct owners.
    int unref(void* owner, DataField* referrer);

    /// The references of distinct owners and anonymous ones together.
    int getRef();
    /// Calls of ref by owners minus matching unref calls, never below 0.
    int getRefCalls();
    /// Sets the count to 0 and leaves the owners known.
    void clearRef();

protected:
    /// What setType was given last.
    DataType* type();

private:
    friend class ChildTable;
    friend class DataField;
    friend class DataStructure;

    DataBaseType(DataType* type, std::string_view name);
    void aboutToRename(const char* name);

    DataType* m_type;
    OwnerSet m_owners;
    /// The table that lists the item under its name, if there is one.
    ChildTable* m_listedIn = nullptr;
    int m_referenceCount = 0;
    int m_referenceCalls = 0;
    char m_name[100];
};

#endif
