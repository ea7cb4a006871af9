#include <orbel/foundation/platform/Files.h>

#include <support/Platform.h>
#include <support/TemporaryFolder.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

namespace {

using Names = std::vector<std::string>;

Names sorted(Names names) {
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace

TEST(Files, AreOpenedForBinaryReading) {
    const TemporaryFolder folder;
    const files::File file = files::openForReading(folder
                                                       .write("a.txt", "1\r\n2\x1A"
                                                                       "3")
                                                       .c_str());
    ASSERT_NE(file, nullptr);
    char bytes[10] = {};
    EXPECT_EQ(std::fread(bytes, 1, sizeof bytes, file.get()), 6U);
    EXPECT_STREQ(bytes, "1\r\n2\x1A"
                        "3");
}

TEST(Files, ThatAreMissingOrFoldersAreNotOpened) {
    const TemporaryFolder folder;
    EXPECT_EQ(files::openForReading(folder.path("missing").c_str()), nullptr);
    EXPECT_EQ(files::openForReading(folder.path().c_str()), nullptr);
    EXPECT_EQ(files::openForReading(""), nullptr);
    EXPECT_EQ(files::openForReading(nullptr), nullptr);
}

TEST(Files, ThatAreMissingOrFoldersAreNotOpenedAsTexts) {
    const TemporaryFolder folder;
    EXPECT_NE(files::openText(folder.write("a.txt", "").c_str()), nullptr);
    EXPECT_EQ(files::openText(folder.path("missing").c_str()), nullptr);
    EXPECT_EQ(files::openText(folder.path().c_str()), nullptr);
    EXPECT_EQ(files::openText(""), nullptr);
    EXPECT_EQ(files::openText(nullptr), nullptr);
}

TEST(Files, OfAFolderAreListedByTheirBeginAndEnd) {
    const TemporaryFolder folder;
    for (const char* name : {"b.qx", "a.qx", "a.qx2", "qx", ".qx", "a.txt", "Table1.csv", "Table22.csv", "Tab.csv"})
        folder.write(name, "");
    EXPECT_EQ(sorted(files::listFolder(folder.path(), "", ".qx")), (Names{".qx", "a.qx", "b.qx"}));
    EXPECT_EQ(sorted(files::listFolder(folder.path(), "Table", ".csv")), (Names{"Table1.csv", "Table22.csv"}));
    EXPECT_EQ(files::listFolder(folder.path(), "", ".none"), Names{});
}

TEST(Files, NeedRoomForBeginAndEnd) {
    const TemporaryFolder folder;
    folder.write("aba", "");
    folder.write("ababa", "");
    EXPECT_EQ(files::listFolder(folder.path(), "aba", "ba"), Names{"ababa"});
}

TEST(Files, AreListedWithoutFolders) {
    const TemporaryFolder folder;
    folder.write("file.qx", "");
    std::filesystem::create_directory(folder.path("folder.qx"));
    EXPECT_EQ(files::listFolder(folder.path(), "", ".qx"), Names{"file.qx"});
}

TEST(Files, OfNoFolderAreNone) {
    const TemporaryFolder folder;
    EXPECT_EQ(files::listFolder("", "", ""), Names{});
    EXPECT_EQ(files::listFolder(folder.path("missing"), "", ""), Names{});
    EXPECT_EQ(files::listFolder(folder.write("file", ""), "", ""), Names{});
    EXPECT_EQ(files::listFolder(folder.path(), "", ""), Names{"file"});
}

TEST(Files, AreListedInByteOrderWhereCaseCounts) {
    if (onWindows)
        GTEST_SKIP() << "the file system decides";
    const TemporaryFolder folder;
    for (const char* name : {"b.qx", "a.qx", "B.qx", "\xC3\xA4.qx", "a.QX", "aa.qx", "10.qx", "9.qx"})
        folder.write(name, "");
    EXPECT_EQ(files::listFolder(folder.path(), "", ".qx"),
              (Names{"10.qx", "9.qx", "B.qx", "a.qx", "aa.qx", "b.qx", "\xC3\xA4.qx"}));
}

TEST(Files, AreListedWithoutRegardToCaseOnWindows) {
    if (!onWindows)
        GTEST_SKIP() << "case counts here";
    const TemporaryFolder folder;
    folder.write("a.QX", "");
    folder.write("b.qx", "");
    EXPECT_EQ(sorted(files::listFolder(folder.path(), "", ".qx")), (Names{"a.QX", "b.qx"}));
    EXPECT_EQ(files::listFolder(folder.path(), "A", ".qx"), Names{"a.QX"});
}

TEST(Files, AreListedBehindSymbolicLinks) {
    if (onWindows)
        GTEST_SKIP() << "links take a privilege";
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.path("target"));
    std::filesystem::create_symlink(folder.write("file", ""), folder.path("a.qx"));
    std::filesystem::create_symlink(folder.path("target"), folder.path("b.qx"));
    std::filesystem::create_symlink(folder.path("missing"), folder.path("c.qx"));
    EXPECT_EQ(files::listFolder(folder.path(), "", ".qx"), Names{"a.qx"});
}

TEST(Files, AreJoinedToTheirFolderWithTheSeparatorOfThePlatform) {
    EXPECT_EQ(files::joinPath("folder", "a.qx"), onWindows ? "folder\\a.qx" : "folder/a.qx");
    EXPECT_EQ(files::joinPath("folder/", "a.qx"), onWindows ? "folder/\\a.qx" : "folder//a.qx");
}
