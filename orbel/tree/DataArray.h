#ifndef ORBEL_TREE_DATAARRAY_H
#define ORBEL_TREE_DATAARRAY_H

#include <orbel/tree/DataObject.h>

/// A growable list of objects that usually share one type. Each element is a child of the array; its instance is its
/// position.
class ORBEL_API DataArray : public DataNode {
public:
    static DataType* classType;
    static void init();
    static DataType* getClassType();

    explicit DataArray(char* name);
    DataArray(const DataArray&) = delete;
    DataArray& operator=(const DataArray&) = delete;
    /// Leaves the elements alive and without a parent, as a structure does with its children.
    ~DataArray() override;

    using DataNode::dump;
    using DataNode::registerHandler;
    using DataNode::unregisterHandler;

    const char* getTypeName() override;
    void dump(std::ostream& os, int first, int last, int withName) override;
    void dumpXML(std::ostream& os) override;
    void ClearLinks() override;
    /// Adds objects up to `n` elements: untyped ones named "Item-#0", "Item-#1", ..., in a typed array ones of its type
    /// named "Point-#0", ... or whatever the type's own function makes. Never shrinks. A size above 16,777,216 changes
    /// nothing; the array stops growing when elements and their fields together come to as many.
    void setSize(int n) override;
    /// How many elements there are.
    int getSize() override;
    /// Hands the values between the braces of `text` to the elements, or to those that the range selects.
    void parse(char* range, char* text) override;
    void clearData() override;
    /// Copies element by element from another array, all that both have for a negative count.
    bool copyData(DataField* source, int sourceFirst, int targetFirst, int count) override;

    /// What element `index` has at `path`; null when there is no such element.
    DataField* getField(char* path, int index, int flag) override;
    /// Destroys the elements that nobody else refers to.
    void removeChildren() override;
    /// How many fields the first element has; 0 without one.
    int getNumFields() override;
    bool registerHandler(char* path, DataHandler* handler, int index) override;
    bool unregisterHandler(DataHandler* handler) override;

    /// The array answers for its first element; false when it is empty.
    bool getFieldSize(char* path, int* size) override;
    /// Contract: the setters reach the elements' own setData(char*, int), which objects leave empty.
    bool setFieldData(char* path, std::string* value) override;
    bool setFieldData(char* path, char* value) override;
    bool setFieldData(char* path, char* value, int index) override;
    /// One value for each element from `from` on; -1 as `to` stops with the values, else the last one repeats. False
    /// when there is no element `from`; an empty list stores nothing.
    bool setFieldData(char* path, std::vector<char*>* values, int from, int to) override;
    bool getFieldData(char* path, std::string* value) override;
    bool getFieldData(char* path, char** value) override;
    /// Fills `out`, which the caller has sized, with the text of one element each.
    bool getFieldData(char* path, std::vector<char*>* out, int from, int to) override;

    /// Appends the elements that a range text selects, null for those that do not exist, of which there are at most
    /// 65,536 altogether; at most 16,777,216 entries in all.
    void getFieldsByRange(char* range, std::vector<DataField*>* out) override;

    /// Null when out of range.
    DataObject* getObject(int index);

    /// Gives every element this type, keeps it for elements to come, and tells the handlers of the array. Null leaves
    /// the elements empty and tells nobody. Nothing happens when the type stays the same.
    void setObjectType(DataObjectType* type);
    /// Contract: gives the type of this name to the elements that are there, each of whose handlers hears of it
    /// twice, and leaves the array's own type alone.
    void setObjectType(char* typeName);
    /// Null when untyped.
    DataObjectType* getObjectType();
    /// Null when untyped.
    char* getObjectTypeName();

protected:
    /// Makes and takes one more element. Null when a handler has destroyed this array meanwhile.
    DataObject* appendElement();
    /// There must be one; it is destroyed when nobody else refers to it.
    void removeLastElement();

private:
    DataObject* makeElement(int index);

    std::vector<DataObject*> m_elements;
    DataObjectType* m_objectType = nullptr;
};

#endif
