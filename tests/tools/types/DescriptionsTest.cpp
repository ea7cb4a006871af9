#include <tools/types/Schema.h>

#include <support/TemporaryFolder.h>

#include <orbel/types/DataObjectTypesTable.h>

#include <gtest/gtest.h>

#include <string>

namespace {

/// The descriptions in a type file, as "Type: text" and "Type.field: text" in lines.
std::string descriptionsOf(const std::string& text) {
    const TemporaryFolder folder;
    DataObjectTypesTable table;
    const Schema schema = readSchema({folder.write("types.qx", text)}, table, [](const std::string&) {});
    std::string lines;
    for (const Schema::Type& type : schema.types) {
        if (!type.description.empty())
            lines += type.name + ": " + type.description + '\n';
        for (const Schema::Field& field : type.fields)
            if (!field.description.empty())
                lines += type.name + '.' + field.name + ": " + field.description + '\n';
    }
    return lines;
}

} // namespace

TEST(Descriptions, StandAboveTypesAndFields) {
    EXPECT_EQ(descriptionsOf("//! A place.\nPoint = {\n    //! To the right.\n    string x;\n    string y;\n};\n"),
              "Point: A place.\nPoint.x: To the right.\n");
}

TEST(Descriptions, StandBehindFieldsAndBraces) {
    EXPECT_EQ(descriptionsOf("Point = { //! A place.\n    string x; //! right\n    string y=0;//!down\n};\n"),
              "Point: A place.\nPoint.x: right\nPoint.y: down\n");
}

TEST(Descriptions, Join) {
    EXPECT_EQ(descriptionsOf("//! A place,\n//! in pixels.\nPoint = {\n    string x; //! to the\n"
                             "              //! right\n    //! down\n    string y; //! from the top\n};\n"),
              "Point: A place, in pixels.\nPoint.x: to the right\nPoint.y: down from the top\n");
}

TEST(Descriptions, JoinWhereATypeGoesOn) {
    EXPECT_EQ(descriptionsOf("//! A place.\nPoint = {string x;};\n//! Also with y.\nPoint = {string y;}; //! no\n"),
              "Point: A place. Also with y.\n");
}

TEST(Descriptions, StandAboveOtherComments) {
    EXPECT_EQ(descriptionsOf("//! A place.\n# not for readers\nPoint = {string x;};\n"), "Point: A place.\n");
    EXPECT_EQ(descriptionsOf("# types of the board\n\n//! A place.\nPoint = {string x;};\n"), "Point: A place.\n");
    EXPECT_EQ(descriptionsOf("//! A place.\n// not for readers\nPoint = {string x;};\n"), "Point: A place.\n");
}

TEST(Descriptions, AreNotOtherComments) {
    EXPECT_EQ(descriptionsOf("// A place.\nPoint = {\n    string x; // right\n};\n"), "");
}

TEST(Descriptions, AreAboutNothingAtTheEndOfABody) {
    EXPECT_EQ(descriptionsOf("A = {\n    string x;\n    //! no\n};\nB = {string y;};\n//! no\n"), "");
    EXPECT_EQ(descriptionsOf("A = {\n    //! no\n    number n;\n    string x;\n};\n"), "");
}

TEST(Descriptions, StandBehindTheLastOfSeveralFields) {
    EXPECT_EQ(descriptionsOf("A = {\n    string x; string y; //! both?\n};\n"), "A.y: both?\n");
}

TEST(Descriptions, StandInFilesWithWindowsLineEnds) {
    EXPECT_EQ(descriptionsOf("//! A place.\r\nPoint = {\r\n    string x; //! right\r\n};\r\n"),
              "Point: A place.\nPoint.x: right\n");
}
