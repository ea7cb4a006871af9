#ifndef ORBEL_TREE_DATASTRUCTURE_H
#define ORBEL_TREE_DATASTRUCTURE_H

#include <orbel/tree/DataNode.h>

#include <memory>
#include <string_view>

class DataValue;
struct PathCacheEntry;
struct PathPlace;

/// A node whose children are named fields, ordered by name in byte order. Destroying it leaves the children alive and
/// without a parent.
///
/// Fields are reached by path, at most 511 characters:
///
///     scene/title          child title of child scene
///     points[2]/x          x of element 2 of an array
///     cities[Oslo]/x       x of the entry with this key in a hash table
///     ../title             title of the parent
///     string:title         the value title, created when missing
///     node:scene           the structure scene, created when missing
///     DataHashTable:c:City the hash table c of City entries, created when missing
///     */x                  every child: null here, commands broadcast
///
/// Nothing is created more than 1,000 levels deep.
class ORBEL_API DataStructure : public DataNode {
public:
    static DataType* classType;
    static void init();
    static DataType* getClassType();

    explicit DataStructure(char* name);
    /// A copy shares handlers, link targets and children with its origin; the children keep their parent. Assigning
    /// lets go of the children that were there.
    DataStructure(const DataStructure& other);
    DataStructure& operator=(const DataStructure& other);
    ~DataStructure() override;

    using DataNode::dump;
    using DataNode::getData;
    using DataNode::registerHandler;
    using DataNode::unregisterHandler;

    const char* getTypeName() override;
    void dump(std::ostream& os, int first, int last, int withName) override;
    void dumpXML(std::ostream& os) override;
    void ClearLinks() override;
    /// Always 1.
    int getSize() override;
    /// A structure of clones of the children; handlers, links and references of the structure itself are not copied.
    DataField* clone() override;
    /// Runs the commands between the braces of `text`. With an index text, `text` is a list of brace groups, one for
    /// each index.
    void parse(char* indexSpec, char* text) override;
    bool getData(char** value, int index) override;
    void clearData() override;
    /// Copies into the children that both have, except those whose name begins with "#". The numbers are ignored.
    bool copyData(DataField* source, int sourceIndex, int targetIndex, int count) override;

    /// Takes one reference on `field` and becomes its parent. False when the name is taken: the child of that name
    /// stays, yet the reference and the parent are set; hosts rely on it.
    bool addField(DataField* field, int instance) override;
    void getFieldsVector(std::vector<DataField*>* out) override;
    /// The field at `path`, null when there is none. `index` selects the element when an array is asked. With `flag` 0
    /// a path that ends in a key gives the hash table instead of the entry.
    DataField* getField(char* path, int index, int flag) override;
    /// Takes a child out and releases its reference; does not delete it.
    void removeField(char* name, int index) override;
    void removeChildren() override;
    /// Takes all children out and deletes those that nobody else refers to and no handler observes.
    void deleteChildren() override;
    int getNumFields() override;
    /// In order of names; the first for any index below 1, null past the end.
    DataField* getFieldByIndex(int index) override;
    void dump() override;
    /// Moves the handler to the field at `path`, which is created directly under this structure, named with the whole
    /// path text, when the path names none. False only for a null handler, or when a handler destroys this structure.
    bool registerHandler(char* path, DataHandler* handler, int index) override;
    /// Takes the handler off its field. A field that nobody observes any more is removed from its parent, and deleted
    /// when nobody refers to it. False when the handler is on no field.
    bool unregisterHandler(DataHandler* handler) override;
    bool setFieldSize(char* path, int size) override;
    bool getFieldSize(char* path, int* size) override;
    bool setFieldData(char* path, std::string* value) override;
    bool setFieldData(char* path, char* value) override;
    bool setFieldData(char* path, char* value, int index) override;
    bool setFieldData(char* path, std::vector<char*>* values, int from, int to) override;
    /// False also when the field holds no text.
    bool getFieldData(char* path, std::string* value) override;
    bool getFieldData(char* path, char** value) override;
    bool getFieldData(char* path, std::vector<char*>* out, int from, int to) override;

    /// Only empties the vector.
    void clearFieldsVector(std::vector<DataField*>* out);

    /// Makes the field at `targetPath` follow the one at `sourcePath`. False when either is missing; true also when
    /// the link was refused.
    bool addLink(char* sourcePath, char* targetPath);
    /// Ends the link of the field at `targetPath` to its source. False when there is no such field.
    bool removeLink(char* targetPath);
    /// Replaces all links of the whole tree by those of a list of link commands; null changes nothing.
    void parseLinkCommand(char* text);
    /// Runs one link command: "target = source" links and copies once, "~target" ends a link.
    void executeLinkCommand(char* command);

    /// Prints one child per line, each behind a label that tells its type.
    void dumpInternal(std::ostream& os, int first, int last);
    /// Writes the names of the children to standard output. Contract: they run together without a separator.
    void dumpListOfFields();

protected:
    /// The child of exactly this name, else null.
    DataField* findChild(std::string_view name);
    /// After this, registering one more handler on the field does not fail, unless it is on others too.
    static void makeRoomForHandler(DataField& field);

private:
    friend class NewField;

    class Resolution;

    DataStructure(DataType* type, std::string_view name);
    PathCacheEntry* knownEntry(char* path);
    DataValue* knownValue(char* path);
    bool setFoundData(char* path, char* value);
    bool linkKnownValues(char* targetPath, char* sourcePath);
    bool getFoundData(char* path, char** value);
    DataField* resolve(char* path, std::size_t length, int index, int flag);
    static bool goAgain(const PathPlace& place);
    bool takeInAgain(DataField& child, int instance);
    void takeInQuietly(DataField& field);
    bool takeIn(DataField& field, int instance);
    DataField* resolveQuietly(std::string_view segment);
    DataField* findOrCreateQuietly(std::string_view kind, std::string_view name);
    DataField* findOrCreate(std::string_view kind, std::string_view name);
    bool mayGoDeeper() const;
    static std::unique_ptr<DataField> createPlain(std::string_view kind, std::string_view name);
    static void setObjectTypeOf(DataField& child, std::string_view kind);
    static void disposeIfUnused(DataField* field);
    void makeRoomForChild();
    DataField* makeFor(DataHandler& handler, char* path, int index);

    SharedPart<ChildTable> m_children;
};

#endif
