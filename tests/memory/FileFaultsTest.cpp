// How files fail, which only some systems can show: streams that break off, and files that open and cannot be read.
#ifdef __linux__

#include <orbel/foundation/text/LineReader.h>
#include <orbel/orbel.h>
#include <orbel/tables/AllPluginPreSets.h>
#include <orbel/tables/CaseTable.h>
#include <orbel/tables/ConversionTables.h>
#include <orbel/types/TypeFiles.h>

#include <support/Console.h>
#include <support/Environment.h>
#include <support/Text.h>
#include <support/WorkingFolder.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

namespace {

enum class Ending { fails, ends };

/// What a stream gives, and how it stops.
struct Source {
    std::string bytes;
    Ending ending;
    std::size_t read = 0;
};

ssize_t readFrom(void* cookie, char* buffer, std::size_t size) {
    auto& source = *static_cast<Source*>(cookie);
    if (source.read == source.bytes.size() && source.ending == Ending::fails) {
        errno = EIO;
        return -1;
    }
    const std::size_t taken = source.bytes.copy(buffer, size, source.read);
    source.read += taken;
    return static_cast<ssize_t>(taken);
}

files::File open(Source& source) {
    return files::File(fopencookie(&source, "r", {readFrom, nullptr, nullptr, nullptr}));
}

std::vector<std::string> linesOf(Source source) {
    text::LineReader reader(open(source), 1'023);
    std::vector<std::string> lines;
    while (const auto line = reader.next())
        lines.emplace_back(*line);
    return lines;
}

constexpr char unreadable[] = "/proc/self/mem";

class FileFaults : public testing::Test {
protected:
    FileFaults() { clearTypeVariables(); }

    void putUnreadable(const std::string& name) { std::filesystem::create_symlink(unreadable, name); }

    Console console;
    WorkingFolder folder;
};

} // namespace

TEST(BrokenLines, AreNoneWhereReadingFails) {
    const std::string text = "first line\nsecond\n\nthe last";
    for (std::size_t size = 0; size <= text.size(); ++size) {
        const std::string given = text.substr(0, size);
        std::string whole;
        for (const std::string& line : linesOf({given, Ending::fails}))
            whole += line;
        EXPECT_EQ(whole, given.substr(0, given.rfind('\n') + 1)) << size;
    }
}

TEST(BrokenLines, CountWhereTheFileEnds) {
    const std::string text = "first line\nsecond\n\nthe last";
    for (std::size_t size = 0; size <= text.size(); ++size) {
        std::string whole;
        for (const std::string& line : linesOf({text.substr(0, size), Ending::ends}))
            whole += line;
        EXPECT_EQ(whole, text.substr(0, size)) << size;
    }
}

TEST(BrokenLines, MayBreakOffAtEveryBlock) {
    const std::string line(99, 'x');
    std::string text;
    while (text.size() < 100'000)
        text += line + '\n';
    for (const std::size_t size : {4'095U, 4'096U, 4'097U, 16'383U, 16'384U, 16'385U, 17'407U, 32'768U, 65'536U}) {
        EXPECT_EQ(linesOf({text.substr(0, size), Ending::fails}).size(), size / 100) << size;
        EXPECT_EQ(linesOf({text.substr(0, size), Ending::ends}).size(), (size + 99) / 100) << size;
    }
}

TEST(BrokenTypeFiles, AreLeftOutAsAWhole) {
    const std::string text(200'000, 'x');
    for (const std::size_t size : {0U, 1U, 4'096U, 65'535U, 65'536U, 65'537U, 131'072U, 200'000U}) {
        Source source{text.substr(0, size), Ending::fails};
        const TypeFile file = readTypeFile(open(source));
        EXPECT_EQ(file.result, TypeFileResult::readError) << size;
        EXPECT_EQ(file.text, "") << size;
    }
}

TEST(BrokenTypeFiles, CountAsFarAsTheyGoWhenTheyEnd) {
    const std::string text = "A = {string x;};\nB = {string y;};\n";
    for (std::size_t size = 0; size <= text.size(); ++size) {
        Source source{text.substr(0, size), Ending::ends};
        EXPECT_EQ(readTypeFile(open(source)).text, text.substr(0, size)) << size;
    }
}

TEST_F(FileFaults, SettingsThatCannotBeReadLeaveTheDefaults) {
    putUnreadable("Orbel.ini");
    IDataHandlerImpl::init();
    EXPECT_EQ(IDataHandlerImpl::IsMultiOrbel(), 0);
    EXPECT_TRUE(IDataHandlerImpl::IsRefreshAlways());
    EXPECT_STREQ(DataObject::get_ConfigFolder(), ".");
}

TEST_F(FileFaults, SettingsThatAreAFolderLeaveTheDefaults) {
    folder.makeFolder("Orbel.ini");
    IDataHandlerImpl::init();
    EXPECT_EQ(IDataHandlerImpl::IsMultiOrbel(), 0);
}

TEST_F(FileFaults, TablesThatCannotBeReadAreLeftOut) {
    putUnreadable("QX_ConvTables_a.csv");
    folder.makeFolder("QX_ConvTables_b.csv");
    folder.write("QX_ConvTables_c.csv", "__VERSION__,1\n__TABLE__,colours,\nred,#F00\n");
    const ConversionTables tables(".");
    EXPECT_EQ(tables.lookup("colours", "red"), "#F00");
}

TEST_F(FileFaults, PresetsThatCannotBeReadAreNone) {
    putUnreadable("QX_PreSets.csv");
    EXPECT_EQ(AllPluginPreSets(".").find("Bar"), nullptr);
}

TEST_F(FileFaults, PresetsThatAreAFolderAreNone) {
    folder.makeFolder("QX_PreSets.csv");
    EXPECT_EQ(AllPluginPreSets(".").find("Bar"), nullptr);
}

TEST_F(FileFaults, CasePairsThatCannotBeReadAreNone) {
    folder.makeFolder("folder.txt");
    for (const char* path : {unreadable, "./folder.txt"}) {
        wchar_t letter = L'a';
        EXPECT_FALSE(CaseTable(path).toUpper(letter)) << path;
    }
}

TEST_F(FileFaults, TypeFilesThatCannotBeReadAreLeftOut) {
    putUnreadable("a.qx");
    folder.makeFolder("b.qx");
    folder.write("c.qx", "Point = {string x;};");
    DataObject::set_ConfigFolder(Text("."));
    DataObject::readConfigFiles();
    EXPECT_EQ(DataObject::getTypesTable()->getNumTypes(), 1);
    EXPECT_FALSE(DataObject::readTypesTable(Text("a.qx")));
    EXPECT_FALSE(DataObject::readTypesTable(Text("b.qx")));
}

#endif
