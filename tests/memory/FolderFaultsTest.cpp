// How the system fails while a folder is listed or a file is opened. The linker leads what the library asks of it
// through the functions below, which not every linker can.
#ifdef __linux__

#include <orbel/foundation/platform/Files.h>
#include <orbel/foundation/text/LineReader.h>
#include <orbel/orbel.h>
#include <orbel/tables/ConversionTables.h>
#include <orbel/types/TypeFiles.h>

#include <support/Console.h>
#include <support/Environment.h>
#include <support/Text.h>
#include <support/WorkingFolder.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <filesystem>
#include <functional>
#include <iterator>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <vector>

#include <dirent.h>
#include <sys/stat.h>

namespace {

/// What is wrong with the system at the moment.
struct SystemFault {
    /// The error of opening a folder, of asking what was opened; 0 for none.
    int openError = 0;
    int statusError = 0;
    /// Happens instead of giving the entry of this number, counted from 0 on; negative for never. Without an error the
    /// entry is given behind it.
    int entry = -1;
    int entryError = 0;
    std::function<void()> atEntry;
    int entriesGiven = 0;
};
SystemFault systemFault;

/// The fault lasts as long as this.
class During {
public:
    explicit During(SystemFault lasting) { systemFault = std::move(lasting); }
    During(const During&) = delete;
    During& operator=(const During&) = delete;
    ~During() { systemFault = {}; }
};

} // namespace

extern "C" {
DIR* __real_opendir(const char* path);
dirent* __real_readdir(DIR* folder);
int __real_fstat(int descriptor, struct stat* status);

DIR* __wrap_opendir(const char* path) {
    if (systemFault.openError == 0)
        return __real_opendir(path);
    errno = systemFault.openError;
    return nullptr;
}

dirent* __wrap_readdir(DIR* folder) {
    if (systemFault.entry >= 0 && systemFault.entriesGiven++ == systemFault.entry) {
        if (systemFault.atEntry)
            systemFault.atEntry();
        errno = systemFault.entryError;
        if (systemFault.entryError != 0)
            return nullptr;
    }
    return __real_readdir(folder);
}

int __wrap_fstat(int descriptor, struct stat* status) {
    if (systemFault.statusError == 0)
        return __real_fstat(descriptor, status);
    errno = systemFault.statusError;
    return -1;
}
}

namespace {

using FileNames = std::vector<std::string>;

/// The names of a folder in the order in which the system gives them, "." and ".." among them.
FileNames entriesOf(const char* path) {
    const std::unique_ptr<DIR, int (*)(DIR*)> folder(__real_opendir(path), closedir);
    FileNames names;
    while (const dirent* entry = __real_readdir(folder.get()))
        names.emplace_back(entry->d_name);
    return names;
}

std::ptrdiff_t openDescriptors() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

class FolderFaults : public testing::Test {
protected:
    FolderFaults() {
        clearTypeVariables();
        DataObject::set_ConfigFolder(Text("types"));
        for (const char* name : {"types", "tables"})
            workingFolder.makeFolder(name);
        writeAll();
    }
    FolderFaults(const FolderFaults&) = delete;
    FolderFaults& operator=(const FolderFaults&) = delete;
    ~FolderFaults() override { EXPECT_EQ(openDescriptors(), m_descriptors); }

    void writeAll() {
        for (const char* name : {"types", "tables"})
            std::filesystem::create_directory(name);
        for (const std::string letter : {"a", "b", "c", "d", "e"}) {
            workingFolder.write("types/" + letter + ".qx",
                                "First_" + letter + " = {string x;};\nLast_" + letter + " = {string y;};\n");
            workingFolder.write("types/" + letter + ".txt", "");
            workingFolder.write("tables/QX_ConvTables_" + letter + ".csv",
                                "__TABLE__," + letter + ",\nfirst,1\nlast,2\n");
        }
    }

    /// The files of this ending among the first entries of a folder, in alphabetical order.
    static FileNames filesBefore(const char* path, std::size_t entry, const std::string& ending) {
        FileNames names;
        const FileNames entries = entriesOf(path);
        for (std::size_t at = 0; at < std::min(entry, entries.size()); ++at)
            if (std::filesystem::path(entries[at]).extension() == ending)
                names.push_back(entries[at]);
        std::sort(names.begin(), names.end());
        return names;
    }

    /// The names of the files whose types are there.
    static FileNames filesOfTypes() {
        FileNames names;
        DataObjectTypesTable* const types = DataObject::getTypesTable();
        for (const std::string letter : {"a", "b", "c", "d", "e"}) {
            const bool hasFirst = types->getTypeByName(Text("First_" + letter)) != nullptr;
            EXPECT_EQ(types->getTypeByName(Text("Last_" + letter)) != nullptr, hasFirst) << letter;
            if (hasFirst)
                names.push_back(letter + ".qx");
        }
        EXPECT_EQ(types->getNumTypes(), static_cast<int>(2 * names.size()));
        return names;
    }

    static FileNames filesOfTables(const ConversionTables& tables) {
        FileNames names;
        for (const std::string letter : {"a", "b", "c", "d", "e"}) {
            const bool hasFirst = tables.lookup(letter, "first") == "1";
            EXPECT_EQ(tables.lookup(letter, "last"), hasFirst ? "2" : "") << letter;
            if (hasFirst)
                names.push_back("QX_ConvTables_" + letter + ".csv");
        }
        return names;
    }

    Console console;
    WorkingFolder workingFolder;

private:
    std::ptrdiff_t m_descriptors = openDescriptors();
};

const FileNames allTypeFiles = {"a.qx", "b.qx", "c.qx", "d.qx", "e.qx"};

SystemFault failsAt(std::size_t entry, int error) {
    SystemFault wrong;
    wrong.entry = static_cast<int>(entry);
    wrong.entryError = error;
    return wrong;
}

SystemFault removesAt(std::size_t entry, const char* folder) {
    SystemFault wrong;
    wrong.entry = static_cast<int>(entry);
    wrong.atEntry = [folder] { std::filesystem::remove_all(folder); };
    return wrong;
}

SystemFault cannotOpen(int error) {
    SystemFault wrong;
    wrong.openError = error;
    return wrong;
}

SystemFault cannotAsk(int error) {
    SystemFault wrong;
    wrong.statusError = error;
    return wrong;
}

} // namespace

TEST_F(FolderFaults, AListingThatFailsHasTheFilesBeforeTheFault) {
    const std::size_t count = entriesOf("types").size();
    ASSERT_EQ(count, 12U);
    for (const int error : {EIO, ENOENT, EBADF, EOVERFLOW, ENOMEM})
        for (std::size_t entry = 0; entry <= count; ++entry) {
            const During failing(failsAt(entry, error));
            EXPECT_EQ(files::listFolder("types", "", ".qx"), filesBefore("types", entry, ".qx"))
                << error << ' ' << entry;
        }
    EXPECT_EQ(files::listFolder("types", "", ".qx"), allTypeFiles);
}

TEST_F(FolderFaults, AFolderThatGoesWhileItIsListedHasTheFilesBefore) {
    const std::size_t count = entriesOf("types").size();
    for (std::size_t entry = 0; entry <= count; ++entry) {
        const FileNames before = filesBefore("types", entry, ".qx");
        const During removing(removesAt(entry, "types"));
        EXPECT_EQ(files::listFolder("types", "", ".qx"), before) << entry;
        EXPECT_EQ(files::listFolder("types", "", ".qx"), FileNames());
        writeAll();
    }
}

TEST_F(FolderFaults, AFolderThatCannotBeOpenedHasNoFiles) {
    for (const int error : {EACCES, EMFILE, ENFILE, ENOENT, ENOTDIR, ELOOP, EIO}) {
        const During failing(cannotOpen(error));
        EXPECT_EQ(files::listFolder("types", "", ".qx"), FileNames()) << error;
    }
}

TEST_F(FolderFaults, AFolderThatTakesMoreMemoryThanThereIsThrows) {
    const During failing(cannotOpen(ENOMEM));
    EXPECT_THROW(files::listFolder("types", "", ".qx"), std::bad_alloc);
}

TEST_F(FolderFaults, TypesOfTheFilesBeforeTheFaultAreReadAsAWhole) {
    const std::size_t count = entriesOf("types").size();
    for (std::size_t entry = 0; entry <= count; ++entry) {
        {
            const During failing(failsAt(entry, EIO));
            DataObject::readConfigFiles();
        }
        EXPECT_EQ(filesOfTypes(), filesBefore("types", entry, ".qx")) << entry;
        DataObject::readConfigFiles();
        EXPECT_EQ(filesOfTypes(), allTypeFiles);
    }
}

TEST_F(FolderFaults, TypesOfAFolderThatGoesWhileItIsListedAreNone) {
    const std::size_t count = entriesOf("types").size();
    DataObject::readConfigFiles();
    for (std::size_t entry = 0; entry <= count; ++entry) {
        std::string messages = "DataObjectTYpesTable::~DataObjectTypesTable(): deleting 10 types.\n";
        for (const std::string& name : filesBefore("types", entry, ".qx"))
            messages += "DataObject: Reading configuration file: types/" + name +
                        "\nDataObject: Couldn't read objects configuration file: types/" + name + '\n';
        console.takeMessages();
        {
            const During removing(removesAt(entry, "types"));
            DataObject::readConfigFiles();
        }
        EXPECT_EQ(console.takeMessages(), messages);
        EXPECT_EQ(filesOfTypes(), FileNames());
        writeAll();
        DataObject::readConfigFiles();
        EXPECT_EQ(filesOfTypes(), allTypeFiles);
    }
}

TEST_F(FolderFaults, TypesAreReadAgainOnceThereIsMemoryForTheirFolder) {
    DataObject::readConfigFiles();
    {
        const During failing(cannotOpen(ENOMEM));
        EXPECT_THROW(DataObject::readConfigFiles(), std::bad_alloc);
    }
    EXPECT_EQ(filesOfTypes(), FileNames());
    DataObject::readConfigFiles();
    EXPECT_EQ(filesOfTypes(), allTypeFiles);
}

TEST_F(FolderFaults, TablesOfTheFilesBeforeTheFaultAreReadAsAWhole) {
    const std::size_t count = entriesOf("tables").size();
    ASSERT_EQ(count, 7U);
    for (std::size_t entry = 0; entry <= count; ++entry) {
        std::optional<ConversionTables> tables;
        {
            const During failing(failsAt(entry, EIO));
            tables.emplace("tables");
        }
        EXPECT_EQ(filesOfTables(*tables), filesBefore("tables", entry, ".csv")) << entry;
    }
}

TEST_F(FolderFaults, TablesOfAFolderThatGoesWhileItIsListedAreNone) {
    const std::size_t count = entriesOf("tables").size();
    for (std::size_t entry = 0; entry <= count; ++entry) {
        const During removing(removesAt(entry, "tables"));
        EXPECT_EQ(filesOfTables(ConversionTables("tables")), FileNames()) << entry;
        writeAll();
    }
}

TEST_F(FolderFaults, TablesStayWhenThereIsNoMemoryForTheirFolder) {
    workingFolder.write("QX_ConvTables_own.csv", "__TABLE__,own,\nred,#F00\n");
    IDataHandlerImpl::init();
    const std::string before = console.takeOutput();
    EXPECT_NE(before.find("QX_ConvTables_own.csv"), std::string::npos);
    {
        const During failing(cannotOpen(ENOMEM));
        EXPECT_THROW(IDataHandlerImpl::RefreshConvTables(), std::bad_alloc);
    }
    IDataHandlerImpl::RefreshConvTables();
    EXPECT_NE(console.takeOutput().find("QX_ConvTables_own.csv"), std::string::npos);
}

// Whether it is a folder shows when it is read then.
TEST_F(FolderFaults, AFileThatCannotBeAskedWhatItIsIsReadAsAFile) {
    const During failing(cannotAsk(EIO));
    const TypeFile file = readTypeFile("types/a.qx");
    EXPECT_EQ(file.result, TypeFileResult::text);
    EXPECT_EQ(file.text, "First_a = {string x;};\nLast_a = {string y;};\n");
    EXPECT_EQ(readTypeFile("types").result, TypeFileResult::readError);
    text::LineReader lines(files::openText("types"), 1'023);
    EXPECT_TRUE(lines.isOpen());
    EXPECT_EQ(lines.next(), std::nullopt);
}

#endif
