// Files and folders that go while the library reads them: the host, or an operator, acts between two files.

#include <orbel/orbel.h>
#include <orbel/tables/ConversionTables.h>

#include <support/Environment.h>
#include <support/Text.h>
#include <support/WorkingFolder.h>

#include <gtest/gtest.h>

#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <iostream>
#include <streambuf>
#include <string>
#include <system_error>
#include <utility>

namespace {

constexpr char allLetters[] = "abcde";

/// Which files the library said that it reads and that it could not read, a letter for each; what is done then.
struct Announced {
    std::string files;
    std::string lost;
    std::function<void()> act;
};
Announced announced;

void announce(char letter) {
    announced.files += letter;
    if (announced.act)
        announced.act();
}

/// Told before a type file is opened, and when it could not be.
int hearOfTypes(const char* format, va_list args) {
    char message[1'000];
    const int length = std::vsnprintf(message, sizeof message, format, args);
    const std::string text = message;
    const std::size_t end = text.find(".qx");
    if (end == std::string::npos)
        return length;
    if (text.find("Couldn't") == std::string::npos)
        announce(text[end - 1]);
    else
        announced.lost += text[end - 1];
    return length;
}

/// Told when a table has been opened, before it is read.
class TableOutput : public std::streambuf {
public:
    TableOutput() : m_before(std::cout.rdbuf(this)) {}
    TableOutput(const TableOutput&) = delete;
    TableOutput& operator=(const TableOutput&) = delete;
    ~TableOutput() override { std::cout.rdbuf(m_before); }

protected:
    int overflow(int character) override {
        m_text += static_cast<char>(character);
        if (m_text.size() > 4 && m_text.substr(m_text.size() - 4) == ".csv")
            announce(m_text[m_text.size() - 5]);
        return character;
    }

private:
    std::string m_text;
    std::streambuf* m_before;
};

class VanishingFiles : public testing::Test {
protected:
    VanishingFiles() {
        clearTypeVariables();
        announced = {};
        DataSetVPrintfFunction(hearOfTypes);
        DataObject::set_ConfigFolder(Text("loaded"));
        folder.makeFolder("elsewhere");
    }
    VanishingFiles(const VanishingFiles&) = delete;
    VanishingFiles& operator=(const VanishingFiles&) = delete;
    ~VanishingFiles() override { DataSetVPrintfFunction(nullptr); }

    static std::string typeFile(char letter) { return std::string("loaded/") + letter + ".qx"; }
    static std::string tableFile(char letter) { return std::string("loaded/QX_ConvTables_") + letter + ".csv"; }

    void write(const std::function<std::string(char letter)>& pathOf) {
        removeFolder();
        std::filesystem::create_directory("loaded");
        for (const char* letter = allLetters; *letter; ++letter) {
            const std::string name(1, *letter);
            const bool isType = pathOf('x') == typeFile('x');
            folder.write(pathOf(*letter), isType
                                              ? "First_" + name + " = {string x;};\nLast_" + name + " = {string y;};\n"
                                              : "__TABLE__," + name + ",\nfirst,1\nlast,2\n");
        }
    }

    /// What is in use stays on some systems, and the folder then.
    static void removeFolder() {
        std::error_code inUse;
        for (const char* letter = allLetters; *letter; ++letter) {
            std::filesystem::remove_all(typeFile(*letter), inUse);
            std::filesystem::remove_all(tableFile(*letter), inUse);
        }
        std::filesystem::remove(std::filesystem::path("loaded"), inUse);
    }

    /// Reads the types while `act` is done at the file with this number; gives the letters of those that were read.
    std::string readTypes(std::size_t number, const std::function<void()>& act) {
        write(typeFile);
        actAt(number, act);
        DataObject::readConfigFiles();
        std::string found;
        for (const char* letter = allLetters; *letter; ++letter) {
            const bool hasFirst = isType(std::string("First_") + *letter);
            EXPECT_EQ(hasFirst, isType(std::string("Last_") + *letter)) << *letter;
            found += hasFirst ? std::string(1, *letter) : "";
        }
        EXPECT_EQ(DataObject::getTypesTable()->getNumTypes(), static_cast<int>(2 * found.size()));
        return found;
    }

    std::string readTables(std::size_t number, const std::function<void()>& act) {
        write(tableFile);
        actAt(number, act);
        const TableOutput output;
        const ConversionTables tables("loaded");
        std::string found;
        for (const char* letter = allLetters; *letter; ++letter) {
            const std::string_view first = tables.lookup(std::string(1, *letter), "first");
            EXPECT_EQ(tables.lookup(std::string(1, *letter), "last"), first == "1" ? "2" : "") << *letter;
            found += first == "1" ? std::string(1, *letter) : "";
        }
        return found;
    }

    WorkingFolder folder;

private:
    static void actAt(std::size_t number, const std::function<void()>& act) {
        announced = {};
        announced.act = [number, act] {
            if (announced.files.size() == number)
                act();
        };
    }

    static bool isType(const std::string& name) {
        return DataObject::getTypesTable()->getTypeByName(Text(name)) != nullptr;
    }
};

/// The letters in alphabetical order, as they are found.
std::string sorted(std::string letters) {
    std::string found;
    for (const char* letter = allLetters; *letter; ++letter)
        if (letters.find(*letter) != std::string::npos)
            found += *letter;
    return found;
}

std::string without(const std::string& letters, char letter) {
    const std::size_t at = letters.find(letter);
    return letters.substr(0, at) + letters.substr(at + 1);
}

} // namespace

TEST_F(VanishingFiles, ATypeFileThatGoesWhenItsTurnComesIsToldAndLeftOut) {
    const std::string order = (readTypes(0, {}), announced.files);
    ASSERT_EQ(sorted(order), allLetters);
    for (std::size_t number = 1; number <= order.size(); ++number) {
        const char gone = order[number - 1];
        EXPECT_EQ(readTypes(number, [gone] { std::filesystem::remove(typeFile(gone)); }), without(allLetters, gone));
        EXPECT_EQ(announced.files, order);
        EXPECT_EQ(announced.lost, std::string(1, gone));
    }
}

TEST_F(VanishingFiles, TypeFilesBehindTheOneThatRemovesTheFolderAreToldAndLeftOut) {
    const std::string order = (readTypes(0, {}), announced.files);
    for (std::size_t number = 1; number <= order.size(); ++number) {
        EXPECT_EQ(readTypes(number,
                            [] {
                                removeFolder();
                                EXPECT_FALSE(std::filesystem::exists("loaded"));
                            }),
                  sorted(order.substr(0, number - 1)));
        EXPECT_EQ(announced.files, order);
        EXPECT_EQ(announced.lost, order.substr(number - 1));
    }
    EXPECT_EQ(readTypes(0, {}), allLetters);
}

TEST_F(VanishingFiles, FoldersOfTypesBehindTheOneThatGoesAreRead) {
    write(typeFile);
    folder.write("elsewhere/other.qx", "Other = {string z;};");
    DataObject::set_ConfigFolder(Text("loaded;elsewhere"));
    announced.act = removeFolder;
    DataObject::readConfigFiles();
    EXPECT_EQ(DataObject::getTypesTable()->getNumTypes(), 1);
    EXPECT_NE(DataObject::getTypesTable()->getTypeByName(Text("Other")), nullptr);
    EXPECT_EQ(sorted(announced.lost), allLetters);
}

TEST_F(VanishingFiles, ATypeFileThatBecomesAFolderIsToldAndLeftOut) {
    const std::string order = (readTypes(0, {}), announced.files);
    for (std::size_t number = 1; number < order.size(); ++number) {
        const char changed = order[number];
        EXPECT_EQ(readTypes(number,
                            [changed] {
                                std::filesystem::remove(typeFile(changed));
                                std::filesystem::create_directory(typeFile(changed));
                            }),
                  without(allLetters, changed));
        EXPECT_EQ(announced.lost, std::string(1, changed));
    }
}

TEST_F(VanishingFiles, AFolderThatIsRenamedTakesTheFilesNotYetReadAlong) {
    const std::string order = (readTypes(0, {}), announced.files);
    for (std::size_t number = 1; number <= order.size(); ++number) {
        EXPECT_EQ(readTypes(number, [] { std::filesystem::rename("loaded", "elsewhere/loaded"); }),
                  sorted(order.substr(0, number - 1)));
        std::filesystem::remove_all("elsewhere/loaded");
    }
}

TEST_F(VanishingFiles, TablesBehindTheOneThatRemovesTheFolderAreLeftOut) {
    const std::string order = (readTables(0, {}), announced.files);
    ASSERT_EQ(sorted(order), allLetters);
    for (std::size_t number = 1; number <= order.size(); ++number) {
        // The one at hand is open, and is read to its end.
        EXPECT_EQ(readTables(number, removeFolder), sorted(order.substr(0, number)));
        EXPECT_EQ(announced.files, order.substr(0, number));
    }
    EXPECT_EQ(readTables(0, {}), allLetters);
}

TEST_F(VanishingFiles, ATableThatGoesOrBecomesAFolderIsLeftOut) {
    const std::string order = (readTables(0, {}), announced.files);
    for (std::size_t number = 1; number < order.size(); ++number)
        for (const bool becomesFolder : {false, true}) {
            const char gone = order[number];
            EXPECT_EQ(readTables(number,
                                 [=] {
                                     std::filesystem::remove(tableFile(gone));
                                     if (becomesFolder)
                                         std::filesystem::create_directory(tableFile(gone));
                                 }),
                      without(allLetters, gone));
            EXPECT_EQ(announced.files, without(order, gone));
        }
}
