#include <support/Schema.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <sstream>
#include <string>
#include <vector>

/// Texts that nobody would write by hand: they may define nothing, but must neither crash nor hang.

namespace {

std::string numbered(const std::string& name, int number) {
    return name + std::to_string(number);
}

std::string repeated(const std::string& text, int times) {
    std::string all;
    for (int time = 0; time < times; ++time)
        all += text;
    return all;
}

} // namespace

TEST(UnusualTypeTexts, ThousandsOfNestedBraces) {
    Schema schema("A = " + repeated("{", 10'000) + repeated("}", 10'000) + "; B = {};");
    EXPECT_EQ(schema.names(), "A, B");
    EXPECT_EQ(schema.console.takeOutput(), ignoredLine(repeated("{", 9'999)));
}

TEST(UnusualTypeTexts, ThousandsOfUnbalancedBraces) {
    EXPECT_EQ(Schema("A = " + repeated("{", 10'000) + "; B = {};").names(), "A");
    EXPECT_EQ(Schema("A = " + repeated("}", 10'000) + "; B = {};").names(), "A");
    EXPECT_EQ(Schema(repeated("{=", 100'000)).names(), "{");
    EXPECT_EQ(Schema(repeated("#{", 100'000)).names(), "");
    EXPECT_EQ(Schema(repeated("#}\n", 100'000)).names(), "");
}

TEST(UnusualTypeTexts, OneLineOfAMegabyte) {
    const std::string longText(1'000'000, 'n');
    Schema schema(longText);
    schema.parse(longText + " = {string " + longText + '=' + longText + ";};");
    ASSERT_EQ(schema.table.getNumTypes(), 1);
    EXPECT_EQ(schema.names(), longText);
    EXPECT_EQ(schema.fields(longText), "string:" + longText + "[1]=" + longText);
    schema.parse("A = {unknown" + longText + "};");
    EXPECT_EQ(schema.console.takeOutput(), ignoredLine("unknown" + longText));
}

TEST(UnusualTypeTexts, ALongRunOfEachSeparator) {
    for (const char* separator : {";", "=", "\"", "#", "\n", "[", "]", "#\n", "=;", " "}) {
        const std::string run = repeated(separator, 200'000);
        Schema schema;
        EXPECT_TRUE(schema.parse(run));
        EXPECT_LE(schema.table.getNumTypes(), 1) << separator;
        EXPECT_TRUE(schema.parse("A = {string x;" + run + "};"));
        EXPECT_EQ(schema.fields("A"), "string:x[1]=") << separator;
    }
}

TEST(UnusualTypeTexts, BytesThatAreNoUtf8AreKept) {
    Schema schema("\xFF\xFE = {string \xC3\x28[2]=\xA0\xA1;}; T = {\xFF\xFE x;};");
    EXPECT_EQ(schema.fields("\xFF\xFE"), "string:\xC3\x28[2]=\xA0\xA1");
    EXPECT_EQ(schema.fields("T"), "\xFF\xFE:x[1]=");
}

TEST(UnusualTypeTexts, AByteOrderMarkBelongsToTheFirstName) {
    EXPECT_EQ(Schema("\xEF\xBB\xBF"
                     "A = {}; B = {};")
                  .names(),
              "\xEF\xBB\xBF"
              "A, B");
}

TEST(UnusualTypeTexts, RandomBytes) {
    std::mt19937 random(1);
    const std::string alphabet("{};=#\"[]\n \rstring xA0\xFF", 22);
    std::uniform_int_distribution<std::size_t> anyCharacter(0, alphabet.size() - 1);
    for (int round = 0; round < 200; ++round) {
        std::string text = "string ";
        for (int count = 0; count < 500; ++count)
            text += alphabet[anyCharacter(random)];
        Schema schema;
        EXPECT_TRUE(schema.parse(text));
        EXPECT_TRUE(schema.parse("A = {" + text));
        std::ostringstream os;
        schema.table.dumpSpec(os);
        EXPECT_NE(os.str(), "");
    }
}

TEST(UnusualTypeTexts, ATypeOfManyFields) {
    constexpr int count = 100'000;
    std::string body;
    for (int number = 0; number < count; ++number)
        body += "string " + numbered("field", number) + ";\n";
    Schema schema("T = {" + body + "};");
    DataObjectType* type = schema.type("T");
    std::vector<char*> names;
    std::vector<DataObjectField*> fields;
    type->getFieldsList(names);
    type->getFieldsList(fields);
    ASSERT_EQ(names.size(), static_cast<std::size_t>(count));
    EXPECT_STREQ(names.back(), "field99999");
    for (std::size_t index = 0; index < names.size(); ++index)
        ASSERT_EQ(type->getField(names[index]), fields[index]);
    std::vector<char> description(body.size() + 10 * count);
    type->getFieldsDescription(description.data());
    EXPECT_EQ(std::string(description.data(), 40), "string \t field0;\nstring \t field1;\nstring");
    for (DataObjectField* field : fields)
        delete field;
    EXPECT_EQ(fieldsOf(type), "");
}

TEST(UnusualTypeTexts, ManyTypes) {
    constexpr int count = 100'000;
    std::string text;
    for (int number = count; number > 0; --number)
        text += numbered("Type", number) + " = {string x;};\n";
    Schema schema(text);
    schema.parse(text);
    ASSERT_EQ(schema.table.getNumTypes(), count);
    schema.table.sortTypes();
    EXPECT_STREQ(schema.table.getTypeByIndex(0)->getName(), "Type1");
    EXPECT_STREQ(schema.table.getTypeByIndex(count - 1)->getName(), "Type99999");
    for (int number = count; number > 0; --number)
        ASSERT_STREQ(schema.type(numbered("Type", number))->getName(), numbered("Type", number).c_str());
    EXPECT_EQ(schema.fields("Type500"), "string:x[1]=, string:x[1]=");
}

TEST(UnusualTypeTexts, ManyFieldsThatAreIgnored) {
    Schema schema("A = {" + repeated("number n;", 10'000) + "};");
    EXPECT_EQ(schema.console.takeOutput(), repeated(ignoredLine("number n"), 10'000));
}

TEST(UnusualTypeTexts, AChainOfManyTypes) {
    constexpr int last = 100'000;
    std::string text = "T0 = {string x;};";
    for (int number = 1; number <= last; ++number)
        text += numbered("T", number) + " = {" + numbered("T", number - 1) + " previous;};";
    Schema schema(text);
    ASSERT_EQ(schema.table.getNumTypes(), last + 1);
    EXPECT_EQ(schema.fields("T100000"), "T99999:previous[1]=");
    std::ostringstream os;
    schema.type("T100000")->dumpSpec(os, &schema.table, -1);
    const std::string spec = os.str();
    EXPECT_EQ(std::count(spec.begin(), spec.end(), '\n'), 200);
}

// Forty such levels stand for five million million lines.
TEST(UnusualTypeTexts, TypesThatDoubleFromLevelToLevel) {
    std::string text = "T0 = {string x;};";
    for (int number = 1; number <= 40; ++number) {
        const std::string before = numbered("T", number - 1);
        text += numbered("T", number) + " = {" + before + " a; " + before + " b;};";
    }
    Schema schema(text);
    const auto linesOf = [&](const char* name) {
        std::ostringstream os;
        schema.type(name)->dumpSpec(os, &schema.table, -1);
        const std::string spec = os.str();
        return std::count(spec.begin(), spec.end(), '\n');
    };
    EXPECT_EQ(linesOf("T10"), 5 * 1'024 - 4);
    EXPECT_LT(linesOf("T40"), 300'000);
    EXPECT_EQ(linesOf("T10"), 5 * 1'024 - 4);
}

TEST(UnusualTypeTexts, ManyTypesInACircle) {
    constexpr int count = 1'000;
    std::string text;
    for (int number = 0; number < count; ++number)
        text += numbered("T", number) + " = {string x;};";
    for (int number = 0; number < count; ++number)
        text += numbered("T", number) + " = {" + numbered("T", (number + 1) % count) + " next;};";
    Schema schema(text);
    std::ostringstream os;
    schema.table.dumpSpec(os);
    const std::string spec = os.str();
    EXPECT_EQ(std::count(spec.begin(), spec.end(), '\n'), count * (2 + 300));
}
