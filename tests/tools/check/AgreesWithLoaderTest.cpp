#include <orbel/handlers/Settings.h>
#include <orbel/tables/AllPluginPreSets.h>
#include <orbel/tables/CaseTable.h>
#include <orbel/tables/ConversionTables.h>
#include <orbel/tree/DataObject.h>
#include <orbel/types/DataObjectField.h>
#include <orbel/types/DataObjectType.h>
#include <orbel/types/DataObjectTypesTable.h>
#include <orbel/types/TypeParseListener.h>
#include <orbel/types/TypeParser.h>
#include <tools/SourceText.h>
#include <tools/check/CheckRun.h>

#include <support/Console.h>
#include <support/TemporaryFolder.h>
#include <support/Text.h>
#include <tools/check/RandomText.h>

#include <gtest/gtest.h>

#include <chrono>
#include <cstddef>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

// Check and loader must say the same. Random files are checked, and loaded in part or with blanks in them:
//
// Files of lines. Let S(n) be what a reader has after the first n lines: all that it looks up, and what it keeps for
// the lines that follow (the section, the delimiters, whether the header was read, whether a line may still tell the
// version, whether it goes on at all), which rows and markers behind those lines make visible. Line n has no effect
// when S(n) is S(n-1). Then, and only then, a finding with the effect "none" covers the whole line; but blank lines and
// comments, and lines of a character database without small letter, need no finding. Lines of settings do not depend on
// each other: such a line has no effect when reading it alone changes neither of two settings that differ in
// everything. Of a last line without line end only one half is said, since no line can follow: with an effect that is
// seen it has no such finding.
//
// Type files. (1) With blanks in the place of what a finding with the effect "none" covers, the schema is the same: all
// types, with their fields in order, with types, counts and default texts. Line ends, braces, double quotes and "//"
// comments stay, for they say where statements end. (2) When, in the text with blanks in the place of all of that, the
// schema also stays the same with blanks in the place of a line, a finding touches the line; but not when there are
// only comments, braces, brackets, "=" and ";" in it.
//
// ORBEL_CHECK_SECONDS=60 plays each of them for so long.

namespace {

constexpr unsigned filesOfSuite = 60;

/// Runs as many times as there is time.
class Rounds {
public:
    explicit Rounds(const char* name) : m_name(name) {
        if (const char* seconds = std::getenv("ORBEL_CHECK_SECONDS"))
            m_end = std::chrono::steady_clock::now() + std::chrono::seconds(std::atoi(seconds));
        if (const char* seed = std::getenv("ORBEL_CHECK_SEED"))
            m_seed = static_cast<unsigned>(std::atoi(seed));
    }
    Rounds(const Rounds&) = delete;
    Rounds& operator=(const Rounds&) = delete;
    ~Rounds() {
        if (m_end != Time())
            std::cerr << m_name << ": " << m_played << " files, " << lines << " lines, " << withoutEffect
                      << " without effect\n";
    }

    bool next() {
        ++m_seed;
        ++m_played;
        if (testing::Test::HasFailure())
            return false;
        return m_end == Time() ? m_played <= filesOfSuite : std::chrono::steady_clock::now() < m_end;
    }
    unsigned seed() const { return m_seed; }

    std::size_t lines = 0;
    std::size_t withoutEffect = 0;

private:
    using Time = std::chrono::steady_clock::time_point;

    const char* m_name;
    unsigned m_seed = 0;
    unsigned m_played = 0;
    Time m_end;
};

/// A line as its reader takes it: a piece of one that is too long.
struct Piece {
    std::size_t from;
    std::size_t to;

    std::string_view in(std::string_view text) const { return text.substr(from, to - from); }
    bool isComplete(std::string_view text, std::size_t limit) const {
        return in(text).ends_with('\n') || to - from == limit;
    }
};

std::vector<Piece> piecesOf(std::string_view text, std::size_t limit) {
    std::vector<Piece> pieces;
    for (std::size_t from = 0; from < text.size();) {
        const std::size_t end = text.substr(from, limit).find('\n');
        const std::size_t to = end == std::string_view::npos ? std::min(from + limit, text.size()) : from + end + 1;
        pieces.push_back({from, to});
        from = to;
    }
    return pieces;
}

std::string_view visible(std::string_view piece) {
    return piece.substr(0, piece.find('\0'));
}

bool isBlank(std::string_view text) {
    return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

bool goesOnCharacter(std::string_view text, std::size_t offset) {
    return offset < text.size() && (static_cast<unsigned char>(text[offset]) & 0xC0U) == 0x80U;
}

std::size_t offsetOf(std::string_view text, TextPosition position) {
    std::size_t offset = 0;
    for (std::size_t line = 1; line < position.line; ++line)
        offset = text.find('\n', offset) + 1;
    for (std::size_t column = 1; column < position.column; ++offset)
        column += goesOnCharacter(text, offset) ? 0 : 1;
    return offset;
}

/// Behind the character before the position. Text that is not UTF-8 may go on there.
std::size_t endOffsetOf(std::string_view text, TextPosition position) {
    std::size_t offset = offsetOf(text, position);
    while (goesOnCharacter(text, offset))
        ++offset;
    return offset;
}

struct Span {
    std::size_t from;
    std::size_t to;
    Effect effect;
    std::string rule;
};

std::vector<Span> spansOf(const std::string& path, std::string_view text) {
    std::vector<Span> spans;
    const Findings findings = check({path});
    for (const Finding& finding : findings.sorted())
        spans.push_back({offsetOf(text, finding.from), endOffsetOf(text, finding.to), finding.effect,
                         std::string(finding.rule->id)});
    return spans;
}

/// "Orbel.ini:3" and so on, for failures.
std::string shown(std::string_view text) {
    std::string shown;
    for (const char character : text)
        if (character == '\0')
            shown += "\\0";
        else if (character == '\r')
            shown += "\\r";
        else
            shown += character;
    return shown;
}

/// A format that is read line by line.
struct LineFormat {
    const char* fileName;
    std::size_t longestLine;
    /// What is looked up, after reading a file of these bytes.
    std::function<std::string(std::string_view bytes)> load;
    /// What may follow the lines, to see what is kept for them.
    std::vector<std::string> probes;
    /// Needs no finding.
    std::function<bool(std::string_view line)> isExempt;
};

/// All that is seen of a file, with each of the probes.
std::string stateOf(const LineFormat& format, std::string_view bytes) {
    std::string state;
    for (const std::string& probe : format.probes)
        state += format.load(std::string(bytes) + probe) + "\n====\n";
    return state;
}

bool isReported(const std::vector<Span>& spans, const Piece& piece, std::string_view text) {
    std::size_t end = piece.to;
    while (end > piece.from && (text[end - 1] == '\n' || text[end - 1] == '\r'))
        --end;
    for (const Span& span : spans)
        if (span.effect == Effect::none && span.from <= piece.from && span.to >= end)
            return true;
    return false;
}

void compare(const LineFormat& format, const std::string& path, std::string_view text, Rounds& rounds) {
    const std::vector<Span> spans = spansOf(path, text);
    const std::vector<Piece> pieces = piecesOf(text, format.longestLine);
    std::string before = stateOf(format, "");
    for (const Piece& piece : pieces) {
        const bool isComplete = piece.isComplete(text, format.longestLine);
        if (!isComplete)
            before = format.load(text.substr(0, piece.from));
        const std::string after = isComplete ? stateOf(format, text.substr(0, piece.to)) : format.load(text);
        const bool hasNoEffect = before == after;
        const bool isSaid = isReported(spans, piece, text);
        const std::string_view line = visible(piece.in(text));
        const bool mayBeUnsaid = !isComplete || isBlank(line) || format.isExempt(line);
        ++rounds.lines;
        rounds.withoutEffect += hasNoEffect ? 1 : 0;
        EXPECT_FALSE(isSaid && !hasNoEffect)
            << "seed " << rounds.seed() << ": has an effect: " << shown(line) << "\nin:\n"
            << shown(text);
        EXPECT_FALSE(!isSaid && hasNoEffect && !mayBeUnsaid)
            << "seed " << rounds.seed() << ": is not reported: " << shown(line) << "\nin:\n"
            << shown(text);
        before = after;
    }
}

/// A line of the greatest length, without a version: it ends the reading where a line may still tell the version.
const std::string versionOfCommas = "__VERSION__" + std::string(1'012, ',');

class NoListener : public tables::TableListener {
public:
    void onLine(std::string_view /*line*/, tables::LineUse /*use*/, std::string_view /*what*/) override {}
};

void play(const LineFormat& format, const std::vector<std::string>& lines, const std::string& characters) {
    const TemporaryFolder folder;
    Console console;
    Rounds rounds(format.fileName);
    while (rounds.next()) {
        const std::string text = RandomText(rounds.seed(), lines, characters).next(9);
        compare(format, folder.write(format.fileName, text), text, rounds);
    }
}

std::string quotedPair(const std::string& one, const std::string& other) {
    return '<' + one + "> = <" + other + ">\n";
}

} // namespace

TEST(AgreesWithLoader, InConversionTables) {
    const TemporaryFolder folder;
    const auto load = [&](std::string_view bytes) {
        ConversionTables tables;
        NoListener listener;
        tables.readFile(folder.write("QX_ConvTables.csv", bytes), listener);
        std::string state;
        for (const auto& [name, table] : tables.all()) {
            std::map<std::string, std::string> ordered(table.begin(), table.end());
            state += quotedPair("table", name);
            for (const auto& [key, value] : ordered)
                state += quotedPair(key, value);
        }
        return state;
    };
    const std::string characters = ",;|_ \t\"#/TABLEDIMRVSON0123ab\r";
    std::string rows;
    for (int delimiter = '\t'; delimiter <= '~'; delimiter = delimiter == '\t' ? ' ' : delimiter + 1) {
        // A key of its own, without any character that may be a delimiter.
        for (int bit = 1; bit < 128; bit *= 2)
            rows += (delimiter & bit) != 0 ? '\x05' : '\x04';
        rows += static_cast<char>(delimiter);
        rows += "\x02\n";
    }
    std::vector<std::string> lines = brokenLines("tables");
    for (const char* line :
         {"__VERSION__,1.2", "__VERSION__,,,", "__TABLE__,Sky", "__TABLE__,Wind", "sun,sun.png", "rain,rain.png",
          "__DEFAULT__,none", ",remark", "", "sun;sun.png", "a|b", "__DELIMITER__,;", "__DELIMITER__,|",
          "__DELIMITER__", "__DELIMITER__,", "__TABLE__,", "K,", "N;north;wind"})
        lines.emplace_back(line);
    const LineFormat format{"QX_ConvTables.csv",
                            1'023,
                            load,
                            {rows, "__DELIMITER__,;\n" + rows, "__TABLE__,\x03\n__DELIMITER__\n" + rows,
                             "__TABLE__,\x03\n" + rows, versionOfCommas + "__TABLE__,\x03\n"},
                            [](std::string_view line) { return line.starts_with(','); }};
    play(format, lines, characters);
}

TEST(AgreesWithLoader, InPresets) {
    const TemporaryFolder folder;
    const auto load = [&](std::string_view bytes) {
        AllPluginPreSets presets;
        NoListener listener;
        presets.readFile(folder.write("QX_PreSets.csv", bytes), listener);
        std::set<std::string> names{"", "\x01", "Name"};
        for (const std::string& line : linesOf(bytes))
            for (std::size_t from = 0; from <= line.size();) {
                const std::size_t end = std::min(line.find(',', from), line.size());
                std::string name = line.substr(from, end - from);
                while (name.ends_with('\r'))
                    name.pop_back();
                names.insert(name.c_str());
                from = end + 1;
            }
        std::string state;
        for (const auto& [name, plugin] : presets.all()) {
            state += quotedPair("plugin", name) + std::to_string(plugin->getNameColumn()) + ' ' +
                     std::to_string(plugin->getNumColumns()) + '\n';
            for (const std::string& column : names)
                if (const int index = plugin->getColumn(Text(column)); index >= 0)
                    state += quotedPair(column, std::to_string(index));
            for (int row = 0; row < plugin->getNumRows(); ++row)
                for (const std::string& field : *plugin->getRow(row))
                    state += quotedPair(std::to_string(row), field);
        }
        return state;
    };
    std::vector<std::string> lines = brokenLines("presets");
    for (const char* line :
         {"__VERSION__,1", "__VERSION__,,,", "__PLUGIN__,Clock", "__PLUGIN__,Ticker", "Name,Speed", "Speed,Name",
          "Slow,10", "Fast,20", ",remark", "", "A", "AB", "Short,,white", "__PLUGIN__,"})
        lines.emplace_back(line);
    const LineFormat format{"QX_PreSets.csv",
                            1'023,
                            load,
                            {"Name,\x01\n\x01,\x02\n", versionOfCommas + "__PLUGIN__,\x03\n"},
                            [](std::string_view line) { return line.starts_with(','); }};
    play(format, lines, ",_ \t\"#PLUGINVERSOam012\r");
}

TEST(AgreesWithLoader, InCasePairs) {
    const TemporaryFolder folder;
    const auto load = [&](std::string_view bytes) {
        const CaseTable table(folder.write("CapitalUnicodeData.txt", bytes).c_str());
        std::string state;
        for (const auto& [from, to] : table.toUpper())
            state += std::to_string(from) + " upper " + std::to_string(to) + '\n';
        for (const auto& [from, to] : table.toLower())
            state += std::to_string(from) + " lower " + std::to_string(to) + '\n';
        return state;
    };
    std::vector<std::string> lines = brokenLines("cases");
    for (const char* line :
         {"0041;LATIN CAPITAL LETTER A;Lu;0;L;;;;;N;;;;0061;", "0061;LATIN SMALL LETTER A;Ll;0;L;;;;;N;;;0041;;0041",
          "0042;0062;", "0043;0063;", "00C0;", "# letters", "", "10400;DESERET;Lu;0;L;;;;;N;;;;10428;", "0044;;",
          "01C5;LATIN;Lt;0;L;<compat> 0044 017E;;;;N;;;01C4;01C6;01C5"})
        lines.emplace_back(line);
    const auto isExempt = [](std::string_view line) {
        const auto fields = std::count(line.begin(), line.end(), ';') + 1;
        const std::size_t last = line.rfind(';');
        const std::size_t lastButOne = last == 0 || last == std::string_view::npos ? last : line.rfind(';', last - 1);
        const bool hasNoSmall = fields > 2 && isBlank(line.substr(lastButOne + 1, last - lastButOne - 1));
        return line.starts_with('#') || hasNoSmall || fields == 15;
    };
    play({"CapitalUnicodeData.txt", 1'023, load, {""}, isExempt}, lines, ";0146acfCx #\t\r");
}

TEST(AgreesWithLoader, InSettings) {
    const TemporaryFolder folder;
    std::vector<std::string> lines = brokenLines("settings");
    for (const char* line : {"# remark", "", "MultiOrbel = 1", "multiorbel=0", "RefreshAlways=0", "Nof_Extra_Types=3",
                             "ConfigurationFolder = shows", "CheckMaterialIfExists=1", "CheckImageIfExists=0"})
        lines.emplace_back(line);
    const auto load = [&](std::string_view line) {
        const std::string path = folder.write("Orbel.ini", line);
        std::string state;
        for (const int number : {0, 7}) {
            Settings settings;
            settings.multiOrbel = number;
            settings.refreshAlways = settings.checkImageIfExists = settings.checkMaterialIfExists = number != 0;
            settings.configurationFolder[0] = static_cast<char>('A' + number);
            settings.configurationFolder[1] = '\0';
            DataObject::set_NofExtraTypes(number);
            readSettingsFile(path.c_str(), settings, nullptr);
            state += std::to_string(settings.multiOrbel) + ' ' + std::to_string(settings.refreshAlways) +
                     std::to_string(settings.checkImageIfExists) + std::to_string(settings.checkMaterialIfExists) +
                     ' ' + std::to_string(DataObject::get_NofExtraTypes()) + ' ' + settings.configurationFolder + '\n';
        }
        return state;
    };
    const std::string untouched = load("");
    Rounds rounds("Orbel.ini");
    const TemporaryFolder checked;
    while (rounds.next()) {
        const std::string text = RandomText(rounds.seed(), lines, "=# \t_[;\"AMRTefiolrx019\r").next(9);
        const std::vector<Span> spans = spansOf(checked.write("Orbel.ini", text), text);
        for (const Piece& piece : piecesOf(text, 511)) {
            const std::string_view line = visible(piece.in(text));
            const bool hasNoEffect = load(piece.in(text)) == untouched;
            const bool isSaid = isReported(spans, piece, text);
            const std::size_t first = line.find_first_not_of(" \t\r\n");
            const bool isComment = first != std::string_view::npos && line[first] == '#';
            ++rounds.lines;
            rounds.withoutEffect += hasNoEffect ? 1 : 0;
            EXPECT_FALSE(isSaid && !hasNoEffect) << "seed " << rounds.seed() << ": has an effect: " << shown(line);
            EXPECT_FALSE(!isSaid && hasNoEffect && !isBlank(line) && !isComment)
                << "seed " << rounds.seed() << ": is not reported: " << shown(line) << "\nin:\n"
                << shown(text);
        }
    }
}

namespace {

/// Comments that the parser skips, by where their first line is.
class CommentListener : public TypeParseListener {
public:
    explicit CommentListener(const SourceText& source) : m_source(source) {}

    void onCommentSkipped(std::string_view comment) override {
        comment = comment.substr(0, comment.find('\n'));
        for (std::size_t at = 0; at < comment.size(); ++at)
            offsets.insert(m_source.fileOffset(m_source.offsetOf(comment.substr(at))));
    }
    void onTypeCreated(std::string_view /*name*/) override {}
    void onTypeExtended(std::string_view /*name*/) override {}
    void onFieldIgnored(std::string_view /*statement*/) override {}

    std::set<std::size_t> offsets;

private:
    const SourceText& m_source;
};

std::string schemaOf(const SourceText& source, CommentListener& listener) {
    DataObjectTypesTable table;
    TypeParser(listener).parseTypes(source.kept(), table);
    std::string schema;
    for (int index = 0; index < table.getNumTypes(); ++index) {
        DataObjectType* type = table.getTypeByIndex(index);
        schema += quotedPair("type", type->getName());
        std::vector<DataObjectField*> fields;
        type->getFieldsList(fields);
        for (DataObjectField* field : fields)
            schema += quotedPair(std::string(field->getType()) + ' ' + field->getName(),
                                 std::to_string(field->getSize()) + ' ' + field->getDefaultValue());
    }
    return schema;
}

std::string schemaOf(const std::string& text) {
    const SourceText source(text.substr(0, text.find('\0')));
    CommentListener listener(source);
    return schemaOf(source, listener);
}

bool isInComment(const SourceText& source, std::size_t offset) {
    for (const DroppedComment& comment : source.comments()) {
        const std::size_t from = source.commentOffset(comment);
        if (offset >= from && offset < from + comment.size)
            return true;
    }
    return false;
}

std::string blankedSpan(std::string text, const SourceText& source, const Span& span) {
    for (std::size_t at = span.from; at < span.to; ++at)
        if (std::string_view("\n{}\"").find(text[at]) == std::string_view::npos && text[at] != '\0' &&
            !isInComment(source, at))
            text[at] = ' ';
    return text;
}

void compareTypes(const std::string& path, const std::string& text, Rounds& rounds) {
    const std::vector<Span> spans = spansOf(path, text);
    const SourceText source(text.substr(0, text.find('\0')));
    CommentListener comments(source);
    const std::string schema = schemaOf(source, comments);
    for (const Span& span : spans) {
        if (span.effect != Effect::none)
            continue;
        EXPECT_EQ(schemaOf(blankedSpan(text, source, span)), schema)
            << "seed " << rounds.seed() << ": " << span.rule << ": "
            << shown(text.substr(span.from, span.to - span.from)) << "\nin:\n"
            << shown(text);
    }
    std::string effective = text;
    for (const Span& span : spans)
        if (span.effect == Effect::none)
            effective = blankedSpan(effective, source, span);
    for (const Piece& piece : piecesOf(text, text.size())) {
        std::string blanked = effective;
        bool says = false;
        for (std::size_t at = piece.from; at < piece.to; ++at) {
            says = says || (std::string_view(" \t\r\n{}[]=;\"").find(text[at]) == std::string_view::npos &&
                            !isInComment(source, at) && comments.offsets.count(at) == 0);
            if (text[at] != '\n' && text[at] != '\0')
                blanked[at] = ' ';
        }
        ++rounds.lines;
        if (schemaOf(blanked) != schema)
            continue;
        ++rounds.withoutEffect;
        bool isReported = false;
        for (const Span& span : spans)
            isReported = isReported || (span.from < piece.to && span.to >= piece.from);
        EXPECT_TRUE(isReported || !says) << "seed " << rounds.seed() << ": is not reported: " << shown(piece.in(text))
                                         << "\nin:\n"
                                         << shown(text);
    }
}

} // namespace

TEST(AgreesWithLoader, InTypes) {
    const TemporaryFolder folder;
    Console console;
    std::vector<std::string> lines = brokenLines("types");
    for (const char* line :
         {"Point = {string x=0; string y=0;};", "# a label with a position",
          "Label = {string text=Hello; Point pos; string tags[4];};", "Label = {string colour=white;};",
          "Broken = {number n;};", "Week = {", "    string high;", "    Point where[7];", "    Week week;", "};", "}",
          "// remark", "    string low=1; // remark", "", "    # remark", "#remark", "    string a[2]=1,2;", "{", ";"})
        lines.emplace_back(line);
    Rounds rounds("types.qx");
    while (rounds.next()) {
        const std::string text = RandomText(rounds.seed(), lines, "{};=[]#\"/ \t\nsxP12").next(12);
        compareTypes(folder.write("types.qx", text), text, rounds);
    }
}
