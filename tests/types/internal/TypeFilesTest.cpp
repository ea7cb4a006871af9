#include <orbel/types/TypeFiles.h>

#include <support/Platform.h>
#include <support/TemporaryFolder.h>

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace {

/// What is read from a file of these bytes.
std::string readBack(std::string_view bytes) {
    const TemporaryFolder folder;
    const TypeFile file = readTypeFile(folder.write("types.qx", bytes).c_str());
    EXPECT_EQ(file.result, TypeFileResult::text);
    return withoutComments(file.text);
}

} // namespace

TEST(TypeFiles, AreReadAsTheyAre) {
    for (const std::string text : {"", "\n", "A = {};", "A = {};\n", "A = {\r\n};\r\n", "\xFF\x1A\xC3\x28 / x"})
        EXPECT_EQ(readBack(text), text);
}

TEST(TypeFiles, OfAnySizeAreReadWhole) {
    for (const std::size_t size : {65'535U, 65'536U, 65'537U, 131'072U, 3'000'000U})
        EXPECT_EQ(readBack(std::string(size, 'x')), std::string(size, 'x')) << size;
}

TEST(TypeFiles, EndAtTheirFirstNul) {
    using namespace std::string_view_literals;
    EXPECT_EQ(readBack("A = {};\0B = {};"sv), "A = {};");
    EXPECT_EQ(readBack("A // note\0\nB"sv), "A ");
    EXPECT_EQ(readBack(std::string(70'000, 'x') + '\0' + std::string(70'000, 'y')), std::string(70'000, 'x'));
}

TEST(TypeFiles, AreHandedOutWithTheirComments) {
    const TemporaryFolder folder;
    EXPECT_EQ(readTypeFile(folder.write("types.qx", "A // note\n").c_str()).text, "A // note\n");
}

TEST(TypeFiles, LoseTheirComments) {
    EXPECT_EQ(readBack("// head\nA = {string x;}; // tail\n// last\n"), "\nA = {string x;}; \n\n");
}

TEST(TypeFiles, LoseCommentsThatLieAcrossBlocks) {
    const std::string blanks(65'535, ' ');
    EXPECT_EQ(readBack(blanks + "// note\nA"), blanks + "\nA");
}

TEST(TypeFiles, CannotBeOpenedWhenMissing) {
    const TemporaryFolder folder;
    EXPECT_EQ(readTypeFile(folder.path("missing.qx").c_str()).result, TypeFileResult::cannotOpen);
    EXPECT_EQ(readTypeFile("").result, TypeFileResult::cannotOpen);
    EXPECT_EQ(readTypeFile(nullptr).result, TypeFileResult::cannotOpen);
}

TEST(TypeFiles, CannotBeOpenedWhenTheyAreFolders) {
    const TemporaryFolder folder;
    EXPECT_EQ(readTypeFile(folder.path().c_str()).result, TypeFileResult::cannotOpen);
}

TEST(TypeFiles, ThatFailInReadingAreTold) {
    if (onWindows)
        GTEST_SKIP() << "there is no file that opens and cannot be read";
    const TypeFile file = readTypeFile("/proc/self/mem");
    EXPECT_EQ(file.result, TypeFileResult::readError);
    EXPECT_EQ(file.text, "");
}

TEST(TypeComments, AreToldWithTheirPlaceInWhatIsKept) {
    std::vector<DroppedComment> dropped;
    EXPECT_EQ(withoutComments("a // b\nc//\n////", &dropped), "a \nc\n");
    ASSERT_EQ(dropped.size(), 3U);
    EXPECT_EQ(dropped[0].at, 2U);
    EXPECT_EQ(dropped[0].size, 4U);
    EXPECT_EQ(dropped[1].at, 4U);
    EXPECT_EQ(dropped[1].size, 2U);
    EXPECT_EQ(dropped[2].at, 5U);
    EXPECT_EQ(dropped[2].size, 4U);
}

TEST(TypeComments, RunToTheLineEnd) {
    EXPECT_EQ(withoutComments("a // b\nc"), "a \nc");
    EXPECT_EQ(withoutComments("// a\n// b\nc//d\n"), "\n\nc\n");
    EXPECT_EQ(withoutComments("//\n//\n"), "\n\n");
    EXPECT_EQ(withoutComments("a // b\r\nc"), "a \nc");
}

TEST(TypeComments, MayEndWithTheText) {
    EXPECT_EQ(withoutComments("a // b"), "a ");
    EXPECT_EQ(withoutComments("a //"), "a ");
    EXPECT_EQ(withoutComments("//"), "");
    EXPECT_EQ(withoutComments(""), "");
}

TEST(TypeComments, NeedTwoSlashesInARow) {
    EXPECT_EQ(withoutComments("a / b /"), "a / b /");
    EXPECT_EQ(withoutComments("/\n/"), "/\n/");
    EXPECT_EQ(withoutComments("a/// b\nc"), "a\nc");
    EXPECT_EQ(withoutComments("/* a */"), "/* a */");
}

TEST(TypeComments, AreNotStoppedByQuotesOrBraces) {
    EXPECT_EQ(withoutComments("{string link=\"\"http://host\"\";\nstring x;}"), "{string link=\"\"http:\nstring x;}");
}

TEST(TypeComments, OfAnyNumberAreDropped) {
    std::string text;
    for (int line = 0; line < 100'000; ++line)
        text += "x//y\n";
    EXPECT_EQ(withoutComments(text).size(), 200'000U);
    EXPECT_EQ(withoutComments(std::string(1'000'000, '/')), "");
}
