#ifndef ORBEL_TREE_DATAHASHTABLE_H
#define ORBEL_TREE_DATAHASHTABLE_H

#include <orbel/tree/DataArray.h>

#include <functional>
#include <string_view>
#include <unordered_map>

/// An array whose elements are addressed by a text key. Grows only through newObject.
class ORBEL_API DataHashTable : public DataArray {
public:
    static DataType* classType;
    static void init();
    static DataType* getClassType();

    explicit DataHashTable(char* name);
    ~DataHashTable() override;

    using DataArray::dump;

    const char* getTypeName() override;
    void dump(std::ostream& os, int first, int last, int withName) override;
    /// Does nothing.
    void setSize(int n) override;
    /// Hands the values between the braces of `text` to the entries of a list of keys; a key without an entry uses up
    /// its value. Contract: keys are not trimmed here.
    void parse(char* keys, char* text) override;
    void removeChildren() override;
    /// Appends the entries of a list of keys, null for a key without one. Keys are trimmed.
    void getFieldsByRange(char* keys, std::vector<DataField*>* out) override;

    /// The entries in the order of their keys in the table; the first for a negative index, null past the end. Keys
    /// are not sorted, and which entry comes when is the table's own business.
    virtual DataObject* getObject(int index);
    /// The entry of exactly this key, else null.
    virtual DataObject* getObject(char* key);

    /// The key of the entry that getObject(int) gives; valid as long as the entry exists.
    char* getObjectKey(int index);
    /// The entry of this key, created when missing. Null only when a handler has destroyed it meanwhile.
    DataObject* newObject(char* key);

    /// Hands `data` to the setData(char*, int) of the entry of this key. Contract: objects leave that empty; it is
    /// there for entries of classes that types make themselves.
    void setObjectData(char* data, char* key);

    /// Prints the entries of a list of keys separated by ",", all for null; without their names when `withName` is 0.
    void dumpKeys(std::ostream& os, char* keys, int withName);

private:
    /// Keys are looked up as they stand in a path, without a string of their own.
    struct KeyHash {
        using is_transparent = void;
        std::size_t operator()(std::string_view key) const { return std::hash<std::string_view>()(key); }
    };
    using Entries = std::unordered_map<std::string, DataObject*, KeyHash, std::equal_to<>>;

    Entries::value_type* entryAt(int index);
    DataObject* entryOf(std::string_view key);

    Entries m_entries;
    /// In the order in which the keys came, so that dumps look the same everywhere and an index costs nothing.
    std::vector<Entries::value_type*> m_order;
};

#endif
