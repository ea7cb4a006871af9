#ifndef ORBEL_TREE_DATANODE_H
#define ORBEL_TREE_DATANODE_H

#include <orbel/tree/DataField.h>

#include <string_view>

/// A field with children. Declares the child interface with answers that do nothing; DataStructure, DataArray and
/// DataHashTable supply them. Texts given as `char*` are not changed unless the operation says so.
class ORBEL_API DataNode : public DataField {
public:
    static DataType* classType;
    static void init();
    static DataType* getClassType();

    explicit DataNode(char* name);
    /// Copies share the handlers and the link targets of `other`.
    DataNode(const DataNode& other);
    DataNode& operator=(const DataNode& other);
    ~DataNode() override;

    using DataField::dump;
    using DataField::registerHandler;
    using DataField::setData;
    using DataField::unregisterHandler;

    const char* getTypeName() override;

    /// Takes `field` in as a child. False when it cannot.
    virtual bool addField(DataField* field, int instance);
    /// Replaces the content of `out` by the children.
    virtual void getFieldsVector(std::vector<DataField*>* out);
    /// The field at a path; null when there is none. DataStructure tells what paths are.
    virtual DataField* getField(char* path, int index, int flag);
    /// Takes a child out without deleting it.
    virtual void removeField(char* name, int index);
    /// Takes all children out.
    virtual void removeChildren();
    /// Takes all children out, and deletes those that nobody else needs.
    virtual void deleteChildren();
    /// How many children there are.
    virtual int getNumFields();
    /// The child at a position, from 0; null when there is none.
    virtual DataField* getFieldByIndex(int index);
    /// Prints the item with everything below it to standard output.
    virtual void dump();
    /// Prints each item of a list of paths separated by ";".
    virtual void dumpData(char* paths, int ignored, std::ostream& os);
    /// Prints the item at a path; a range in brackets selects values, elements or keys.
    virtual void dumpField(char* path, std::ostream& os);
    /// Moves the handler to the field at a path. False when it cannot.
    virtual bool registerHandler(char* path, DataHandler* handler, int index);
    /// Takes the handler off its field. False when it is on none.
    virtual bool unregisterHandler(DataHandler* handler);
    /// DataField::setSize of the field at a path. False when there is none.
    virtual bool setFieldSize(char* path, int size);
    /// DataField::getSize of the field at a path. False, and `size` untouched, when there is none.
    virtual bool getFieldSize(char* path, int* size);
    /// DataField::setData of the field at a path. False when there is none.
    virtual bool setFieldData(char* path, std::string* value);
    virtual bool setFieldData(char* path, char* value);
    virtual bool setFieldData(char* path, char* value, int index);
    virtual bool setFieldData(char* path, std::vector<char*>* values, int from, int to);
    /// DataField::getData of the field at a path. False when there is none.
    virtual bool getFieldData(char* path, std::string* value);
    virtual bool getFieldData(char* path, char** value);
    virtual bool getFieldData(char* path, std::vector<char*>* out, int from, int to);
    /// Runs one command "path = value", cutting the text up in place; first repeated, each time with a copy, on every
    /// node that follows this one by a link. "*" in the path stands for every child. Commands inside commands have an
    /// effect up to 64 levels deep, and one command up to 1,048,576 times by "*" and by links, fewer when it is longer
    /// than 256 characters.
    virtual void executeCommand(char* command, int index);
    /// Runs a list of commands separated by ";" outside braces and doubled quotes.
    virtual void parseCommand(char* text, int index);
    /// Replaces the content of `out` by this node.
    virtual void getFieldsByRange(char* range, std::vector<DataField*>* out);
    /// Runs one command "target = source", with ranges in brackets on either side.
    virtual void executeCopyCommand(char* command);
    /// Runs a list of copy commands separated by ";".
    virtual void parseCopyCommand(char* text);
    /// Clears the field at a path, or the whole tree for "Orbel" in any letter case.
    virtual void executeClearField(char* path);
    /// Clears each path of a list separated by ";"; an empty text clears the whole tree, null nothing.
    virtual void executeClearCommand(char* text);
    /// Nothing here and in the classes below; for those that types make themselves.
    virtual void setData(char* value, int index);
    virtual void setData(char* value);

protected:
    /// The nearest Orbel, this node included; null when there is none.
    DataNode* findRoot();

private:
    friend class DataStructure;

    DataNode(DataType* type, std::string_view name);
    void runCommand(char* command, std::size_t length, int index);
    void runCommands(std::string_view list, int index);
    bool setKnownValue(std::string_view command);
    static void broadcast(DataNode& node, std::string_view rest, std::string_view value, int index);
};

#endif
