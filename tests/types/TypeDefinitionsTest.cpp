#include <support/Schema.h>

#include <gtest/gtest.h>

#include <string>

/// The language of type files, from the text to the types.

TEST(TypeDefinitions, CreateAndExtendTypes) {
    Schema schema;
    EXPECT_TRUE(schema.parse("Point = {string x=0; string y=0;};\n"
                             "# a label with a position\n"
                             "Label = {string text=Hello; Point pos; string tags[4];};\n"
                             "Label = {string colour=white;};\n"
                             "Broken = {number n;};\n"));
    EXPECT_EQ(schema.console.takeMessages(), "\t\tCreating type: Point\n"
                                             "\t\tCreating type: Label\n"
                                             "\t\tExisting type: Label\n"
                                             "\t\tCreating type: Broken\n");
    EXPECT_EQ(schema.console.takeOutput(), "\nThe line below will be ignored. Probably the variable type is not "
                                           "defined. \nline : \"number n;\"\n");
    EXPECT_EQ(schema.names(), "Point, Label, Broken");
    EXPECT_EQ(schema.fields("Point"), "string:x[1]=0, string:y[1]=0");
    EXPECT_EQ(schema.fields("Label"), "string:text[1]=Hello, Point:pos[1]=, string:tags[4]=, string:colour[1]=white");
    EXPECT_EQ(schema.fields("Broken"), "");
}

TEST(TypeDefinitions, AnEmptyTextDefinesNothing) {
    Schema schema;
    EXPECT_TRUE(schema.parse(""));
    EXPECT_TRUE(schema.parse(" \t\r\n"));
    EXPECT_TRUE(schema.parse(";;; ;"));
    EXPECT_TRUE(schema.table.parse(nullptr));
    EXPECT_EQ(schema.names(), "");
    EXPECT_EQ(schema.console.takeMessages(), "");
    EXPECT_EQ(schema.console.takeOutput(), "");
}

TEST(TypeDefinitions, TheLastSemicolonMayBeMissing) {
    for (const char* text : {"T = {string x}", "T = {string x;}", "T = {string x};", "T = {string x;};",
                             "T = {string x;};\n", "T = {string x", "T = {string x;"}) {
        Schema schema(text);
        EXPECT_EQ(schema.fields("T"), "string:x[1]=") << text;
        EXPECT_EQ(schema.console.takeOutput(), "") << text;
    }
}

TEST(TypeDefinitions, WindowsLineEndsAreBlanks) {
    Schema schema("\r\n# note\r\nA = {string x=0;\r\n  string y=1;\r\n};\r\n\r\nB = {A a;\r\n};\r\n");
    EXPECT_EQ(schema.names(), "A, B");
    EXPECT_EQ(schema.fields("A"), "string:x[1]=0, string:y[1]=1");
    EXPECT_EQ(schema.fields("B"), "A:a[1]=");
}

TEST(TypeDefinitions, ACarriageReturnIsKeptWhereBlanksAre) {
    Schema schema("A\r\n= {string x = 1 \r\n; string y\r\n; string z[2\r\n]=2\r\n};");
    EXPECT_EQ(schema.names(), "A\r\n");
    EXPECT_EQ(schema.fields("A\r\n"), "string:x [1]=1 \r\n, string:y\r\n[1]=, string:z[2]=2\r\n");
    EXPECT_EQ(schema.console.takeOutput(), "");
}

TEST(TypeDefinitions, ACarriageReturnAloneEndsNoComment) {
    EXPECT_EQ(Schema("A = {};\r# note\rB = {};\rC = {};").names(), "A");
    EXPECT_EQ(Schema("A = {};\rB = {};\r").names(), "A, B");
    Schema schema("A = {string x;\r# note\rstring y;\r};");
    EXPECT_EQ(schema.fields("A"), "string:x[1]=");
}

TEST(TypeDefinitions, CommentsInWindowsFilesEndWithTheirLine) {
    Schema schema("# one\r\n# two\r\nA = {# three\r\nstring x;\r\n  # four; }\r\n};\r\n# five");
    EXPECT_EQ(schema.names(), "A");
    EXPECT_EQ(schema.fields("A"), "string:x[1]=");
    Schema hidden("A = {\r\n# note\r\nstring x;\r\n};\r\n");
    EXPECT_EQ(hidden.fields("A"), "");
    EXPECT_EQ(hidden.console.takeOutput(), ignoredLine("\r\n# note\r\nstring x"));
}

TEST(TypeDefinitions, TypeNamesAreTrimmed) {
    Schema schema(" \t\r\nA \t= {}; Two words={}; B\n={}; ={};");
    EXPECT_EQ(schema.names(), "A, Two words, B\n, ");
}

TEST(TypeDefinitions, AStatementWithoutAnEqualsSignIsIgnoredSilently) {
    Schema schema("Point {string x;}; A = {}; note; {string y};");
    EXPECT_EQ(schema.names(), "A");
    EXPECT_EQ(schema.console.takeOutput(), "");
}

TEST(TypeDefinitions, AStatementIsCutAtItsFirstEqualsSign) {
    Schema schema("Point {string x=0; string y;};");
    EXPECT_EQ(schema.names(), "Point {string x");
    EXPECT_EQ(schema.fields("Point {string x"), "");
    EXPECT_EQ(schema.console.takeOutput(), "");
}

TEST(TypeDefinitions, ABodyWithoutABraceMakesAnEmptyType) {
    Schema schema("A = ; B = string x; C =");
    EXPECT_EQ(schema.names(), "A, B, C");
    EXPECT_EQ(schema.fields("B"), "");
    EXPECT_EQ(schema.console.takeOutput(), "");
}

TEST(TypeDefinitions, ATypeKnowsEarlierTypesOnly) {
    Schema schema("A = {A self; B later; string x;}; B = {A a;};");
    EXPECT_EQ(schema.fields("A"), "string:x[1]=");
    EXPECT_EQ(schema.fields("B"), "A:a[1]=");
    EXPECT_EQ(schema.console.takeOutput(), ignoredLine("A self") + ignoredLine("B later"));
}

TEST(TypeDefinitions, AnExtensionKnowsTheTypeItExtends) {
    Schema schema("A = {string x;}; A = {A self;};");
    EXPECT_EQ(schema.fields("A"), "string:x[1]=, A:self[1]=");
}

TEST(TypeDefinitions, LaterTextsKnowTheTypesOfEarlierOnes) {
    Schema schema("Point = {string x;};");
    schema.parse("Label = {Point pos;}; Point = {string y;};");
    EXPECT_EQ(schema.fields("Label"), "Point:pos[1]=");
    EXPECT_EQ(schema.fields("Point"), "string:x[1]=, string:y[1]=");
}

TEST(TypeDefinitions, ATypeMayBeNamedLikeTheTextType) {
    Schema schema("string = {string x;}; T = {string s;};");
    EXPECT_EQ(schema.names(), "string, T");
    EXPECT_EQ(schema.fields("T"), "string:s[1]=");
}

TEST(TypeDefinitions, ACommentEndsAtTheNextLineEnd) {
    Schema schema("# A = {};\nB = {}; # C = {};\nD = {};");
    EXPECT_EQ(schema.names(), "B, D");
}

TEST(TypeDefinitions, AnUnfinishedCommentDropsTheRest) {
    EXPECT_EQ(Schema("A = {}; # B = {}; C = {};").names(), "A");
}

TEST(TypeDefinitions, ACommentEndsAtALineEndOutsideBraces) {
    EXPECT_EQ(Schema("# like {\nA = {};\n} this\nB = {};").names(), "B");
    EXPECT_EQ(Schema("# like { this }\nA = {};").names(), "A");
    EXPECT_EQ(Schema("# a \"\" quoted\nline \"\" of it\nA = {};").names(), "A");
}

TEST(TypeDefinitions, BlanksBehindACommentLineHideTheNextComment) {
    EXPECT_EQ(Schema("# one\n # two\nA = {}; B = {};").names(), "# two\nA, B");
    EXPECT_EQ(Schema("# one\n# two\nA = {}; B = {};").names(), "A, B");
}

TEST(TypeDefinitions, ACommentStandsAtTheStartOfAStatementOnly) {
    EXPECT_EQ(Schema("A # note = {};").names(), "A # note");
}

TEST(TypeDefinitions, SemicolonsInsideBracesDoNotEndATypeStatement) {
    Schema schema("A = {string x; string y={1;2;}; B = {};");
    EXPECT_EQ(schema.names(), "A");
}

TEST(TypeDefinitions, DoubledQuotesProtectATypeStatement) {
    Schema schema("A = {string x=\"\"};\"\"; string y;}; B = {};");
    EXPECT_EQ(schema.names(), "A, B");
    EXPECT_EQ(schema.fields("A"), "string:x[1]=\"\"");
    EXPECT_EQ(schema.console.takeOutput(), "");
}

TEST(TypeDefinitions, ALoneQuoteProtectsNothing) {
    Schema schema("A = {string x=\"1;}; B = {string y=\"2\";};");
    EXPECT_EQ(schema.names(), "A, B");
    EXPECT_EQ(schema.fields("A"), "string:x[1]=\"1");
    EXPECT_EQ(schema.fields("B"), "string:y[1]=\"2\"");
}

TEST(TypeDefinitions, ThreeQuotesCountAsOnePair) {
    EXPECT_EQ(Schema("A = {}\"\"\"; B = {}\"\"; C = {};").names(), "A, C");
    EXPECT_EQ(Schema("A = {}\"\"\"\"; B = {};").names(), "A, B");
}

TEST(TypeDefinitions, AnUnfinishedQuoteTakesTheRestAsOneStatement) {
    EXPECT_EQ(Schema("A = {string x;}\"\"; B = {}; C = {};").names(), "A");
}

TEST(TypeDefinitions, AnUnbalancedBraceTakesTheRestAsOneStatement) {
    for (const char* text : {"A = {string x={; }; B = {};", "A = {string x={;}}}; B = {};"}) {
        Schema schema(text);
        EXPECT_EQ(schema.names(), "A") << text;
        EXPECT_EQ(schema.fields("A"), "string:x[1]={") << text;
    }
}

TEST(TypeDefinitions, ABodyEndsAtItsFirstClosingBrace) {
    Schema schema("A = {string x={1}; string y;}; B = {};");
    EXPECT_EQ(schema.names(), "A, B");
    EXPECT_EQ(schema.fields("A"), "string:x[1]={1");
    EXPECT_EQ(schema.console.takeOutput(), "");
}

TEST(TypeDefinitions, ADefaultEndsAtItsFirstSemicolonOrClosingBrace) {
    Schema schema("A = {string x=\"\"a;b\"\"; string y=c}d;};");
    EXPECT_EQ(schema.fields("A"), "string:x[1]=\"\"a, string:y[1]=c");
    EXPECT_EQ(schema.console.takeOutput(), ignoredLine("b\"\""));
}

TEST(TypeDefinitions, TextAroundTheBracesOfABodyIsIgnored) {
    Schema schema("A = note {string x;} string y;");
    EXPECT_EQ(schema.fields("A"), "string:x[1]=");
    EXPECT_EQ(schema.console.takeOutput(), "");
}

TEST(TypeDefinitions, SpacesInFrontOfAnEqualsSignBelongToTheFieldName) {
    Schema schema("A = {string title = x; string title=x;};");
    EXPECT_EQ(schema.fields("A"), "string:title [1]=x, string:title[1]=x");
}

TEST(TypeDefinitions, SizeAndDefaultGoTogether) {
    EXPECT_EQ(Schema("T = {string a[3]=x;};").fields("T"), "string:a[3]=x");
    EXPECT_EQ(Schema("T = {string a[0];};").fields("T"), "string:a[0]=");
}

TEST(TypeDefinitions, ACommentInABodyEndsAtTheNextLineEnd) {
    Schema schema("A = {# first\nstring x; # second; string y;\nstring z; # last\n};");
    EXPECT_EQ(schema.fields("A"), "string:x[1]=, string:z[1]=");
    EXPECT_EQ(schema.console.takeOutput(), "");
}

TEST(TypeDefinitions, AnUnfinishedCommentInABodyDropsItsRest) {
    Schema schema("A = {string x; # second; string y;};");
    EXPECT_EQ(schema.fields("A"), "string:x[1]=");
    EXPECT_EQ(schema.console.takeOutput(), "");
}

TEST(TypeDefinitions, BlanksAtTheStartOfABodyHideAComment) {
    Schema schema("A = {\n  # note\n  string x;\n  string y;\n};");
    EXPECT_EQ(schema.fields("A"), "string:y[1]=");
    EXPECT_EQ(schema.console.takeOutput(), ignoredLine("\n  # note\n  string x"));
}

TEST(TypeDefinitions, BlanksBehindACommentInABodyHideTheNextComment) {
    Schema schema("A = {# one\n  # two\n  string x;\n  # three\n# four\n  string y;\n};");
    EXPECT_EQ(schema.fields("A"), "string:y[1]=");
    EXPECT_EQ(schema.console.takeOutput(), ignoredLine("  # two\n  string x"));
}

TEST(TypeDefinitions, BlankBodiesAreIgnoredAloud) {
    Schema schema("A = {}; B = { }; C = {\n}; D = {# note\n }; E = {;;}; F = {string x; \n};");
    EXPECT_EQ(schema.console.takeOutput(), ignoredLine(" ") + ignoredLine("\n") + ignoredLine(" "));
    EXPECT_EQ(schema.names(), "A, B, C, D, E, F");
}

TEST(TypeDefinitions, ADroppedFieldLeavesNoTraceInTheNext) {
    Schema schema("A = {number n[7]=9; string x;};");
    EXPECT_EQ(schema.fields("A"), "string:x[1]=");
}

TEST(TypeDefinitions, TheTextEndsAtItsFirstNul) {
    Schema schema(std::string("A = {string x;\0string y;}; B = {};", 35));
    EXPECT_EQ(schema.names(), "A");
    EXPECT_EQ(schema.fields("A"), "string:x[1]=");
}
