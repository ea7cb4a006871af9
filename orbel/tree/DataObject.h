#ifndef ORBEL_TREE_DATAOBJECT_H
#define ORBEL_TREE_DATAOBJECT_H

#include <orbel/tree/DataStructure.h>

class DataArray;
class DataObjectField;
class DataObjectType;
class DataObjectTypesTable;

/// A structure whose children an object type declares; also an element of arrays and hash tables. Never creates
/// fields for a handler itself.
///
/// The class keeps the types of the process. They are read when the first object is made, from where the environment
/// variables QX_OBJECTS_FILE, QX_OBJECTS_DIR and QX_OBJECTS_PATH say, the first that is set deciding, or else from
/// the configured folders. Types live as long as the process, also after they were read anew.
class ORBEL_API DataObject : public DataStructure {
public:
    /// Null until types are first read.
    static DataObjectTypesTable* s_tTypes;
    /// The file, folder or folders last read, cut to 4,095 characters.
    static char* s_sTypesFileName;
    /// For hosts; the library does not use it.
    static int i_NofExtraTypes;
    /// For hosts; the library does not use it.
    static bool b_EnableOnTheFlyQXFile;
    /// See set_ConfigFolder.
    static char m_sConfigQXFolder[4096];
    static DataType* classType;
    /// Also reads the types, the first time.
    static void init();
    static DataType* getClassType();

    explicit DataObject(char* name);
    /// A copy shares handlers, link targets and children with its origin and is of the same type.
    DataObject(const DataObject& other);
    DataObject& operator=(const DataObject& other);
    ~DataObject() override;

    using DataStructure::registerHandler;
    using DataStructure::unregisterHandler;

    const char* getTypeName() override;
    /// Runs the commands between the braces of `text`; the index text is ignored.
    void parse(char* indexSpec, char* text) override;
    /// Registers on the field at `path` in this object, else through the nearest ancestor that has the path or is an
    /// Orbel. False when there is neither; the handler is then on no field.
    bool registerHandler(char* path, DataHandler* handler, int index) override;
    /// Removes and deletes no field. False when the handler is on no field.
    bool unregisterHandler(DataHandler* handler) override;

    /// Replaces the children by those that the type declares, with their default values, and tells the handlers of
    /// this object: at most 262,144 fields and elements at every depth together beside the type's own fields, 100 types
    /// inside each other, and no type inside itself; what is beyond is left out. Null leaves the object empty and tells
    /// nobody. Nothing happens when the type stays the same.
    void setObjectType(DataObjectType* type);
    /// The same by name; nothing happens for an unknown one. Contract: handlers hear of it twice.
    void setObjectType(char* typeName);
    /// Null when untyped.
    DataObjectType* getObjectType();
    /// Null when untyped.
    char* getObjectTypeName();

    /// What the type's own function makes, as it is, else a new object of this name and type. Owned by the caller;
    /// null for a null or unknown type.
    static DataObject* createObject(DataObjectType* type, char* name);
    static DataObject* createObject(char* typeName, char* name);
    /// A new array of `size` elements. Contract: it carries one anonymous reference, unlike a new object.
    static DataArray* createArray(char* typeName, char* name, int size);

    /// Null until types are first read.
    static DataObjectTypesTable* getTypesTable();
    /// Reads the types first when there are none yet. Null when unknown.
    static DataObjectType* getObjectTypeByName(char* name);
    /// Replaces the content of `names` by the names of all types, which belong to the types.
    static void getTypeNames(std::vector<char*>* names);
    /// Replaces the content of `names` by the names of the fields of a type; empty for an unknown type.
    static void getTypeFieldNames(char* typeName, std::vector<char*>* names);
    /// Writes one line for each field. Contract: `out` must have room for them; untouched for an unknown type.
    static void getTypeFieldsDescription(char* typeName, char* out);
    /// Writes all types with their fields.
    static void dumpAllTypes(std::ostream& os);

    /// Reads all types anew. Objects made before keep their old types. With QX_DUMP_CONFIG set, prints what was read.
    static void readConfigFiles();
    /// Adds the types of one file. False when it cannot be read.
    static bool readTypesTable(char* fileName);
    /// Adds the types of all files "*.qx" of a folder.
    static void readConfigFilesDir(char* folder);
    /// The same for a list of folders separated by ";".
    static void readConfigFilesPath(char* folderList);

    /// The folders, separated by ";", that are read when no environment variable says otherwise.
    static void set_ConfigFolder(char* folder);
    /// The text itself, which set_ConfigFolder changes.
    static char* get_ConfigFolder();
    /// For hosts; the library does not use it.
    static void set_NofExtraTypes(int count);
    /// See set_NofExtraTypes.
    static int get_NofExtraTypes();
    /// For hosts; the library does not use it.
    static void set_OnTheFlyQXFile(bool enable);
    /// See set_OnTheFlyQXFile.
    static bool get_OnTheFlyQXFile();

private:
    void createStructure();
    DataField* createField(DataObjectField* declaration);
    DataField* createNestedObject(DataObjectType& type, char* name);
    bool hasChild(char* name);
    void take(DataField* field);

    DataObjectType* m_objectType = nullptr;
};

#endif
