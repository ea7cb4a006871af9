#include <orbel/types/DataObjectField.h>
#include <orbel/types/DataObjectType.h>
#include <orbel/types/DataObjectTypesTable.h>
#include <orbel/types/TypeParseListener.h>
#include <orbel/types/TypeParser.h>

#include <support/Console.h>

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace {

/// Notes every report with its position in the text: "created A @0".
class Report : public TypeParseListener {
public:
    explicit Report(std::string_view text) : m_start(text.data()) {}

    std::string notes;

    void onTypeCreated(std::string_view name) override { note("created", name); }
    void onTypeExtended(std::string_view name) override { note("extended", name); }
    void onStatementIgnored(std::string_view statement) override { note("statement", statement); }
    void onFieldIgnored(std::string_view statement) override { note("field", statement); }
    void onBodyTextIgnored(std::string_view text) override { note("body", text); }

protected:
    void note(const std::string& what, std::string_view text) {
        notes +=
            (notes.empty() ? "" : ", ") + what + ' ' + std::string(text) + " @" + std::to_string(text.data() - m_start);
    }

private:
    const char* m_start;
};

/// Notes what takes effect as well, and comments.
class FullReport : public Report {
public:
    using Report::Report;

    void onCommentSkipped(std::string_view comment) override { note("comment", comment); }
    void onFieldAdded(std::string_view statement, DataObjectField& field) override {
        note(std::string("field ") + field.getName() + " by", statement);
    }
    void onTypeRead(std::string_view statement, DataObjectType& type) override {
        note(std::string("type ") + type.getName() + " by", statement);
    }
};

std::string reportOf(std::string_view text) {
    DataObjectTypesTable table;
    Report report(text);
    TypeParser(report).parseTypes(text, table);
    return report.notes;
}

} // namespace

TEST(TypeParser, ReportsTypesWithTheirPlace) {
    EXPECT_EQ(reportOf("A = {string x;};\n# note\nB = {A a;}; A = {B b;};"),
              "created A @0, created B @24, extended A @36");
}

TEST(TypeParser, ReportsWhatTakesEffectAndComments) {
    const std::string_view text = "# a\nA = {# b\nstring x=1;string y}; A = {string z;}";
    DataObjectTypesTable table;
    FullReport report(text);
    TypeParser(report).parseTypes(text, table);
    EXPECT_EQ(report.notes, "comment # a @0, created A @4, comment # b @9, field x by string x=1 @13, "
                            "field y by string y @24, type A by A = {# b\nstring x=1;string y} @4, "
                            "extended A @35, field z by string z @40, type A by A = {string z;} @35");
}

TEST(TypeParser, ReportsWhatHasNoEffect) {
    EXPECT_EQ(reportOf("note; A = {};"), "statement note @0, created A @6");
    EXPECT_EQ(reportOf("A = {number n; string x;};"), "created A @0, field number n @5");
    EXPECT_EQ(reportOf("A = {string x={1}; string y;};"), "created A @0, body ; string y;} @17");
    EXPECT_EQ(reportOf("A = some {string x;} text ;"), "created A @0, body some @4, body text @21");
    EXPECT_EQ(reportOf("A = string x;"), "created A @0, body string x @4");
}

TEST(TypeParser, ReportsNothingForEmptyFieldStatements) {
    EXPECT_EQ(reportOf("A = {;;};"), "created A @0");
}

TEST(TypeParser, PrintsNothingItself) {
    Console console;
    reportOf("A = {number n;}; A = {};");
    EXPECT_EQ(console.takeOutput(), "");
    EXPECT_EQ(console.takeMessages(), "DataObjectTYpesTable::~DataObjectTypesTable(): deleting 1 types.\n");
}

TEST(TypeParser, ReadsTextsThatHaveNoTerminator) {
    const std::string_view text = std::string_view("A = {string x=12;};").substr(0, 15);
    DataObjectTypesTable table;
    Report report(text);
    TypeParser(report).parseTypes(text, table);
    std::vector<DataObjectField*> fields;
    table.getTypeByName("A")->getFieldsList(fields);
    ASSERT_EQ(fields.size(), 1U);
    EXPECT_STREQ(fields[0]->getDefaultValue(), "1");
}
