#include <support/DeclaredTypes.h>
#include <support/Platform.h>
#include <support/Schema.h>
#include <support/Shape.h>
#include <support/TemporaryFolder.h>
#include <support/TreeCleanup.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

/// Where the types of the process come from.

namespace {

/// The folders "a" and "b" with a type file each, and a single file beside them.
class Configuration : public testing::Test {
protected:
    Configuration() {
        clearTypeVariables();
        for (const char* name : {"a", "b"})
            std::filesystem::create_directory(folder.path(name));
        folder.write("a/one.qx", "InA = {string a=1;};\n");
        folder.write("b/one.qx", "InB = {string b=1;};\n");
        single = folder.write("single.txt", "Single = {string s=1;};\n");
    }

    std::string names() {
        std::vector<char*> list;
        DataObject::getTypeNames(&list);
        std::string all;
        for (const char* name : list)
            all += (all.empty() ? "" : " ") + std::string(name);
        return all;
    }

    /// The types that are read anew.
    std::string readNames() {
        DataObject::readConfigFiles();
        return names();
    }

    std::string readMessages() {
        console.takeMessages();
        DataObject::readConfigFiles();
        return console.takeMessages();
    }

    static std::string inFolder(const std::string& path, const std::string& name) {
        return path + (onWindows ? '\\' : '/') + name;
    }

    static std::string reading(const std::string& path) {
        return "DataObject: Reading configuration file: " + path + '\n';
    }

    static std::string unreadable(const std::string& path) {
        return "DataObject: Couldn't read objects configuration file: " + path + '\n';
    }

    static std::string deleting(int count) {
        return "DataObjectTYpesTable::~DataObjectTypesTable(): deleting " + std::to_string(count) + " types.\n";
    }

    Console console;
    TemporaryFolder folder;
    std::string a = folder.path("a");
    std::string b = folder.path("b");
    std::string single;
};

} // namespace

TEST_F(Configuration, StartsWithNothing) {
    EXPECT_EQ(DataObject::getTypesTable(), nullptr);
    EXPECT_STREQ(DataObject::s_sTypesFileName, "");
    EXPECT_STREQ(DataObject::get_ConfigFolder(), "");
    EXPECT_EQ(DataObject::get_NofExtraTypes(), 0);
    EXPECT_FALSE(DataObject::get_OnTheFlyQXFile());
    EXPECT_EQ(readMessages(), "");
    EXPECT_EQ(names(), "");
    EXPECT_NE(DataObject::getTypesTable(), nullptr);
    EXPECT_EQ(console.takeOutput(), "");
}

TEST_F(Configuration, KeepsItsSwitches) {
    DataObject::set_NofExtraTypes(-7);
    DataObject::set_OnTheFlyQXFile(true);
    DataObject::set_ConfigFolder(Text("folder"));
    EXPECT_EQ(DataObject::get_NofExtraTypes(), -7);
    EXPECT_EQ(DataObject::i_NofExtraTypes, -7);
    EXPECT_TRUE(DataObject::get_OnTheFlyQXFile());
    EXPECT_TRUE(DataObject::b_EnableOnTheFlyQXFile);
    EXPECT_STREQ(DataObject::get_ConfigFolder(), "folder");
    EXPECT_STREQ(DataObject::m_sConfigQXFolder, "folder");
    DataObject::set_ConfigFolder(Text(std::string(5'000, 'f')));
    EXPECT_EQ(DataObject::get_ConfigFolder(), std::string(4'095, 'f'));
}

TEST_F(Configuration, IsReadWhenTheFirstObjectIsMade) {
    DataObject::set_ConfigFolder(Text(a));
    { DataStructure structure(Text("s")); }
    EXPECT_EQ(console.takeMessages(), "");
    { DataObject object(Text("o")); }
    EXPECT_EQ(console.takeMessages(), reading(inFolder(a, "one.qx")) + "\t\tCreating type: InA\n");
    { DataObject object(Text("o")); }
    EXPECT_EQ(console.takeMessages(), "");
    EXPECT_EQ(names(), "InA");
}

TEST_F(Configuration, IsReadWhenATypeIsLookedFor) {
    DataObject::set_ConfigFolder(Text(a));
    EXPECT_NE(DataObject::getObjectTypeByName(Text("InA")), nullptr);
}

TEST_F(Configuration, AFileWinsOverFolders) {
    DataObject::set_ConfigFolder(Text(a));
    const Variable file("QX_OBJECTS_FILE", single);
    const Variable dir("QX_OBJECTS_DIR", b);
    const Variable path("QX_OBJECTS_PATH", a);
    EXPECT_EQ(readMessages(), reading(single) + "\t\tCreating type: Single\n");
    EXPECT_EQ(names(), "Single");
    EXPECT_EQ(DataObject::s_sTypesFileName, single);
}

TEST_F(Configuration, AFolderWinsOverAPath) {
    DataObject::set_ConfigFolder(Text(a));
    const Variable dir("QX_OBJECTS_DIR", b);
    const Variable path("QX_OBJECTS_PATH", a);
    EXPECT_EQ(readNames(), "InB");
    EXPECT_EQ(DataObject::s_sTypesFileName, b);
}

TEST_F(Configuration, AFolderVariableIsNoList) {
    const Variable dir("QX_OBJECTS_DIR", a + ';' + b);
    EXPECT_EQ(readMessages(), "");
    EXPECT_EQ(names(), "");
}

TEST_F(Configuration, ConfiguredFoldersLoseAllWhiteSpaceAroundThem) {
    DataObject::set_ConfigFolder(Text("\v\f" + a + "\r\n;\r\n" + b + " \f\v"));
    EXPECT_EQ(readNames(), "InA InB");
}

TEST_F(Configuration, ConfiguredFoldersAreAList) {
    DataObject::set_ConfigFolder(Text(" " + a + " ; ;" + folder.path("missing") + ";\t" + b + "\t;"));
    EXPECT_EQ(readMessages(), reading(inFolder(a, "one.qx")) + "\t\tCreating type: InA\n" +
                                  reading(inFolder(b, "one.qx")) + "\t\tCreating type: InB\n");
    EXPECT_EQ(names(), "InA InB");
}

// Hosts rely on it: the variable selects the branch, what was read before says where.
TEST_F(Configuration, APathVariableReadsWhatWasReadBefore) {
    const Variable path("QX_OBJECTS_PATH", a);
    EXPECT_EQ(readNames(), "");
    EXPECT_STREQ(DataObject::s_sTypesFileName, "");
    {
        const Variable dir("QX_OBJECTS_DIR", b);
        EXPECT_EQ(readNames(), "InB");
    }
    EXPECT_EQ(readNames(), "InB");
    EXPECT_EQ(DataObject::s_sTypesFileName, b);
}

TEST_F(Configuration, APathVariableWinsOverConfiguredFolders) {
    DataObject::set_ConfigFolder(Text(a));
    {
        const Variable path("QX_OBJECTS_PATH", b);
        EXPECT_EQ(readNames(), "");
    }
    EXPECT_EQ(readNames(), "InA");
    const Variable path("QX_OBJECTS_PATH", b);
    EXPECT_EQ(readNames(), "InA");
}

TEST_F(Configuration, AnEmptyVariableIsSet) {
    if (onWindows)
        GTEST_SKIP() << "Windows has no empty variables";
    DataObject::set_ConfigFolder(Text(a));
    const Variable file("QX_OBJECTS_FILE", "");
    EXPECT_EQ(readMessages(), reading("") + unreadable(""));
    EXPECT_EQ(names(), "");
}

TEST_F(Configuration, NamesLongerThanItsBufferAreCut) {
    const Variable file("QX_OBJECTS_FILE", std::string(5'000, 'f'));
    const std::string kept(4'095, 'f');
    EXPECT_EQ(readMessages(), reading(kept) + unreadable(kept));
    EXPECT_EQ(DataObject::s_sTypesFileName, kept);
}

TEST_F(Configuration, AFileVariableMayNameAnything) {
    for (const std::string& path : {a, folder.path("missing"), folder.path("single.txt/inner")}) {
        const Variable file("QX_OBJECTS_FILE", path);
        console.takeMessages();
        DataObject::readConfigFiles();
        const std::string messages = console.takeMessages();
        EXPECT_EQ(messages.substr(messages.find("DataObject: ")), reading(path) + unreadable(path));
        EXPECT_EQ(names(), "");
    }
    const Variable dir("QX_OBJECTS_DIR", single);
    EXPECT_EQ(readMessages(), deleting(0));
}

TEST_F(Configuration, NamesOfAnyLengthCanBeAskedFor) {
    const std::string longName(100'000, 'n');
    EXPECT_FALSE(DataObject::readTypesTable(Text(longName)));
    EXPECT_EQ(console.takeMessages(), reading(longName) + unreadable(longName));
    DataObject::readConfigFilesDir(Text(longName));
    DataObject::readConfigFilesPath(Text(longName + ';' + longName + ';' + a));
    EXPECT_EQ(console.takeMessages(), reading(inFolder(a, "one.qx")) + "\t\tCreating type: InA\n");
    const Variable dir("QX_OBJECTS_DIR", a + std::string(5'000, '/'));
    DataObject::readConfigFiles();
    EXPECT_EQ(DataObject::s_sTypesFileName, (a + std::string(5'000, '/')).substr(0, 4'095));
}

TEST_F(Configuration, NullIsNoFolder) {
    DataObject::set_ConfigFolder(Text(a));
    DataObject::set_ConfigFolder(nullptr);
    EXPECT_STREQ(DataObject::get_ConfigFolder(), "");
    EXPECT_EQ(readNames(), "");
}

TEST_F(Configuration, FoldersMayEndWithASeparator) {
    DataObject::set_ConfigFolder(Text(a + '/'));
    EXPECT_EQ(readMessages(), reading(inFolder(a + '/', "one.qx")) + "\t\tCreating type: InA\n");
}

TEST_F(Configuration, AFolderWithBlanksIsReadByVariableAndTrimmedInAList) {
    if (onWindows)
        GTEST_SKIP() << "names cannot end in blanks";
    const std::string blank = folder.path(" c ");
    std::filesystem::create_directory(blank);
    folder.write(" c /c.qx", "InC = {};");
    DataObject::set_ConfigFolder(Text(blank));
    EXPECT_EQ(readNames(), "");
    const Variable dir("QX_OBJECTS_DIR", blank);
    EXPECT_EQ(readNames(), "InC");
}

TEST_F(Configuration, PrintsLogAndSchemaOnRequest) {
    folder.write("a/two.qx", "Before = {InA in; string n[2];};");
    const std::string schema = "Type Before {\n\tInA in{\n\t\tValue a;\n\t};\n\tArray<Value> n[2];\n};\n"
                               "Type InA {\n\tValue a;\n};\n\n";
    const std::string files = reading(inFolder(a, "one.qx")) + "\t\tCreating type: InA\n" +
                              reading(inFolder(a, "two.qx")) + "\t\tCreating type: Before\n";
    const Variable dump("QX_DUMP_CONFIG", "0");
    DataObject::set_ConfigFolder(Text(a));
    EXPECT_EQ(readMessages(), files + "\nReading config files in folder : " + a + "\n\n" + schema);
    {
        const Variable path("QX_OBJECTS_PATH", b);
        EXPECT_EQ(readMessages(), deleting(2) + files + "\nReading config files in path : " + a + "\n\n" + schema);
        const Variable dir("QX_OBJECTS_DIR", a);
        EXPECT_EQ(readMessages(), deleting(2) + files + "\nReading config files in folder : " + a + "\n\n" + schema);
        const Variable file("QX_OBJECTS_FILE", single);
        EXPECT_EQ(readMessages(), deleting(2) + reading(single) + "\t\tCreating type: Single\n" +
                                      "\nReading config file : " + single + "\n\nType Single {\n\tValue s;\n};\n\n");
    }
    EXPECT_EQ(console.takeOutput(), "");
}

TEST_F(Configuration, SortsTypesByName) {
    folder.write("a/one.qx", "b = {}; a = {}; B = {}; A2 = {}; A10 = {}; A = {};");
    DataObject::set_ConfigFolder(Text(a));
    EXPECT_EQ(readNames(), "A A10 A2 B a b");
}

TEST_F(Configuration, FilesMayUseTheTypesOfEarlierFiles) {
    folder.write("a/a_shapes.qx", "Point = {string x=0;}; Wrong = {Label l;};");
    folder.write("a/b_labels.qx", "Label = {Point p;}; Point = {string y=0;};");
    DataObject::set_ConfigFolder(Text(a));
    EXPECT_EQ(readMessages(),
              reading(inFolder(a, "a_shapes.qx")) + "\t\tCreating type: Point\n\t\tCreating type: Wrong\n" +
                  reading(inFolder(a, "b_labels.qx")) + "\t\tCreating type: Label\n\t\tExisting type: Point\n" +
                  reading(inFolder(a, "one.qx")) + "\t\tCreating type: InA\n");
    EXPECT_EQ(console.takeOutput(), ignoredLine("Label l"));
    const Tree<DataObject> label(DataObject::createObject(Text("Label"), Text("l")));
    EXPECT_EQ(shapeOf(*label), "l{p{x=0,y=0}}");
}

TEST_F(Configuration, LooksAtFilesWithTheEndingOnly) {
    for (const char* name : {"two.qx.txt", "three.q", "fourqx", "five.qxx"})
        folder.write(std::string("a/") + name, "Wrong = {};");
    folder.write("a/.qx", "Hidden = {};");
    std::filesystem::create_directory(folder.path("a/x.qx"));
    folder.write("a/x.qx/inner.qx", "Wrong = {};");
    DataObject::set_ConfigFolder(Text(a));
    EXPECT_EQ(readMessages(), reading(inFolder(a, ".qx")) + "\t\tCreating type: Hidden\n" +
                                  reading(inFolder(a, "one.qx")) + "\t\tCreating type: InA\n");
}

TEST_F(Configuration, TellsOfFilesThatCannotBeRead) {
    DataObject::readConfigFiles();
    for (const std::string& path : {folder.path("missing.qx"), a}) {
        EXPECT_FALSE(DataObject::readTypesTable(Text(path)));
        EXPECT_EQ(console.takeMessages(), reading(path) + unreadable(path));
    }
    EXPECT_FALSE(DataObject::readTypesTable(nullptr));
    EXPECT_EQ(names(), "");
}

TEST_F(Configuration, GoesOnBehindAnUnreadableFile) {
    if (onWindows)
        GTEST_SKIP() << "permissions work differently";
    using std::filesystem::perms;
    const std::string locked = folder.write("a/locked.qx", "Locked = {};");
    folder.write("a/more.qx", "More = {};");
    std::filesystem::permissions(locked, perms::none);
    const bool readable = std::ifstream(locked).good();
    if (readable)
        GTEST_SKIP() << "this user may read everything";
    DataObject::readConfigFilesDir(Text(a));
    EXPECT_EQ(console.takeMessages(), reading(inFolder(a, "locked.qx")) + unreadable(inFolder(a, "locked.qx")) +
                                          reading(inFolder(a, "more.qx")) + "\t\tCreating type: More\n" +
                                          reading(inFolder(a, "one.qx")) + "\t\tCreating type: InA\n");
}

TEST_F(Configuration, OneFileMakesTheTableWhenThereIsNone) {
    EXPECT_TRUE(DataObject::readTypesTable(Text(single)));
    EXPECT_EQ(names(), "Single");
    EXPECT_TRUE(DataObject::readTypesTable(Text(inFolder(a, "one.qx"))));
    EXPECT_EQ(names(), "Single InA");
}

TEST_F(Configuration, AMissingFileMakesATableToo) {
    EXPECT_FALSE(DataObject::readTypesTable(Text(folder.path("missing"))));
    EXPECT_NE(DataObject::getTypesTable(), nullptr);
}

TEST_F(Configuration, AFolderWithoutFilesMakesNoTable) {
    std::filesystem::create_directory(folder.path("empty"));
    for (const std::string& path : {folder.path("empty"), folder.path("missing"), std::string()}) {
        DataObject::readConfigFilesDir(Text(path));
        DataObject::readConfigFilesPath(Text(path));
    }
    DataObject::readConfigFilesDir(nullptr);
    DataObject::readConfigFilesPath(nullptr);
    EXPECT_EQ(DataObject::getTypesTable(), nullptr);
    EXPECT_EQ(console.takeMessages(), "");
    DataObject::readConfigFilesPath(Text(folder.path("empty") + ';' + b));
    EXPECT_EQ(names(), "InB");
}

TEST_F(Configuration, ReadingMoreKeepsWhatIsThere) {
    DataObject::readConfigFilesPath(Text(b + ';' + a));
    EXPECT_EQ(names(), "InB InA");
    DataObject::readConfigFilesDir(Text(a));
    EXPECT_EQ(names(), "InB InA");
    std::vector<char*> fields;
    DataObject::getTypeFieldNames(Text("InA"), &fields);
    EXPECT_EQ(fields.size(), 2u);
}

TEST_F(Configuration, CommentsAreDroppedBeforeTheTypesAreRead) {
    folder.write("a/one.qx", "// T = {};\r\nT = {string x=0; // the x; y}\r\nstring y=1;}; // end");
    DataObject::readConfigFilesDir(Text(a));
    EXPECT_EQ(fieldsOf(DataObject::getObjectTypeByName(Text("T"))), "string:x[1]=0, string:y[1]=1");
}

TEST_F(Configuration, TwoSlashesInADefaultCutTheRestOfTheLine) {
    folder.write("a/one.qx", "T = {string before=0;\n\tstring link=a//b;\n\tstring next=1; string last=2;};\n");
    DataObject::readConfigFilesDir(Text(a));
    DataObjectType* type = DataObject::getObjectTypeByName(Text("T"));
    EXPECT_EQ(fieldsOf(type), "string:before[1]=0, string:link[1]=a\n\tstring next=1, string:last[1]=2");
}

TEST_F(Configuration, AFileWithoutTypesIsRead) {
    folder.write("a/one.qx", "");
    folder.write("a/two.qx", std::string("T = {};\0Wrong = {};", 19));
    folder.write("a/zero.qx", std::string("\0\xff\xfe{{{", 6));
    DataObject::readConfigFilesDir(Text(a));
    EXPECT_EQ(names(), "T");
}

TEST_F(Configuration, ReadingAnewReplacesAllTypes) {
    DataObject::set_ConfigFolder(Text(a));
    EXPECT_EQ(readMessages(), reading(inFolder(a, "one.qx")) + "\t\tCreating type: InA\n");
    DataObjectTypesTable* before = DataObject::getTypesTable();
    folder.write("a/one.qx", "New = {InA a; string s;};");
    EXPECT_EQ(readMessages(), deleting(1) + reading(inFolder(a, "one.qx")) + "\t\tCreating type: New\n");
    EXPECT_EQ(console.takeOutput(), ignoredLine("InA a"));
    EXPECT_NE(DataObject::getTypesTable(), before);
    EXPECT_EQ(names(), "New");
}

TEST_F(Configuration, ObjectsKeepTheirTypesWhenAllAreReadAnew) {
    DataObject::set_ConfigFolder(Text(a));
    DataObject::readConfigFiles();
    DataObject object(Text("o"));
    const SubtreeCleanup belowObject{object};
    object.setObjectType(Text("InA"));
    DataArray array(Text("a"));
    const SubtreeCleanup belowArray{array};
    array.setObjectType(object.getObjectType());
    DataObjectType* before = object.getObjectType();
    DataObject::readConfigFiles();
    DataObject::readConfigFiles();
    EXPECT_EQ(object.getObjectType(), before);
    EXPECT_STREQ(object.getObjectTypeName(), "InA");
    array.setSize(2);
    EXPECT_EQ(shapeOf(array), "a[InA-#0{a=1},InA-#1{a=1}]");
    object.getField(Text("a"), 0, 0)->setData("5");
    object.setObjectType(Text("InA"));
    EXPECT_NE(object.getObjectType(), before);
    EXPECT_EQ(shapeOf(object), "o{a=1}");
}

// Old declarations look for the types of their fields among the new types.
TEST_F(Configuration, OldTypesLackFieldsOfTypesThatAreGone) {
    folder.write("a/one.qx", "Point = {string x=0;}; Label = {Point p; string t=1;};");
    DataObject::set_ConfigFolder(Text(a));
    DataObject::readConfigFiles();
    DataObjectType* label = DataObject::getObjectTypeByName(Text("Label"));
    folder.write("a/one.qx", "");
    DataObject::readConfigFiles();
    const Tree<DataObject> object(DataObject::createObject(label, Text("o")));
    EXPECT_EQ(shapeOf(*object), "o{t=1}");
}
