#include "DumpReader.h"

#include "../CommandLine.h"

#include <orbel/foundation/text/Scanner.h>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

namespace {

using Json = nlohmann::ordered_json;

/// "name[range]": the range is empty without brackets.
struct Label {
    std::string name;
    std::optional<std::string> range;
};

Label readLabel(std::string_view text) {
    const std::size_t bracket = text.rfind('[');
    if (!text.ends_with(']') || bracket == std::string_view::npos)
        return {std::string(text), std::nullopt};
    return {std::string(text.substr(0, bracket)), std::string(text.substr(bracket + 1, text.size() - bracket - 2))};
}

std::vector<std::string> splitAtCommas(std::string_view text) {
    std::vector<std::string> parts;
    std::size_t comma = text.find(',');
    for (; comma != std::string_view::npos; comma = text.find(',')) {
        parts.emplace_back(text.substr(0, comma));
        text.remove_prefix(comma + 1);
    }
    parts.emplace_back(text);
    return parts;
}

std::string indexed(const std::string& name, int index) {
    return name + '[' + std::to_string(index) + ']';
}

text::IndexRange rangeOf(std::string_view text) {
    text::IndexRange range = text::readIndexRange(text);
    if (range.end == -1)
        range.end = range.start;
    return range;
}

/// Goes through the lines of a dump.
class DumpText {
public:
    explicit DumpText(std::string_view text) : m_rest(text) {}

    Facts read() {
        while (peek())
            readItem("");
        return std::move(m_facts);
    }

private:
    /// The next line that is not empty, without the tabs in front of it.
    std::optional<std::string_view> peek() {
        while (!m_rest.empty()) {
            std::string_view rest = m_rest;
            const std::string_view line = withoutTabs(text::cutAt(rest, '\n'));
            if (!line.empty())
                return line;
            skipLine();
        }
        return std::nullopt;
    }

    void skipLine() {
        text::cutAt(m_rest, '\n');
        ++m_line;
    }

    static std::string_view withoutTabs(std::string_view line) {
        return line.substr(std::min(line.find_first_not_of('\t'), line.size()));
    }

    [[noreturn]] void fail() const { throw Trouble("line " + std::to_string(m_line) + " is no part of a dump"); }

    /// A value, or a node with all in it.
    void readItem(const std::string& prefix) {
        const std::string_view line = *peek();
        if (line.ends_with(" ={")) {
            const std::string name(line.substr(0, line.size() - 3));
            skipLine();
            // The root has no part in paths.
            readFields(prefix.empty() && name == "Orbel" ? "" : prefix + name + '/');
        } else if (line.ends_with("={")) {
            const Label label = readLabel(line.substr(0, line.size() - 2));
            skipLine();
            readElements(prefix + label.name, label.range.value_or("0"));
        } else {
            readValue(prefix);
        }
    }

    void readFields(const std::string& prefix) {
        while (!atEndOfNode())
            readItem(prefix);
        skipLine();
    }

    bool atEndOfNode() {
        const auto line = peek();
        if (!line)
            fail();
        return *line == "}" || *line == "};" || *line == "},";
    }

    /// The elements of an array have no names, the entries of a table have their key in the brackets.
    void readElements(const std::string& path, const std::string& range) {
        const std::vector<std::string> keys = splitAtCommas(range);
        int index = std::max(rangeOf(range).start, 0);
        std::size_t entry = 0;
        for (; !atEndOfNode(); ++index, ++entry) {
            const std::string_view line = *peek();
            if (line == "{") {
                skipLine();
                readFields(indexed(path, index) + '/');
            } else if (line.ends_with(" ={") && entry < keys.size()) {
                skipLine();
                readFields(path + '[' + keys[entry] + "]/");
            } else {
                fail();
            }
        }
        skipLine();
    }

    void readValue(const std::string& prefix) {
        const std::string_view start = *peek();
        m_rest.remove_prefix(static_cast<std::size_t>(start.data() - m_rest.data()));
        const std::size_t equals = start.find('=');
        if (equals == std::string_view::npos)
            fail();
        const std::size_t end = endOfValue(equals);
        store(prefix, readLabel(start.substr(0, equals)), m_rest.substr(equals + 1, end - equals - 1));
        m_line += static_cast<std::size_t>(std::count(m_rest.begin(), m_rest.begin() + static_cast<long>(end), '\n'));
        m_rest.remove_prefix(end);
        skipLine();
    }

    /// The first ";" at the end of a line behind which the dump may go on.
    std::size_t endOfValue(std::size_t from) const {
        for (std::size_t end = m_rest.find(';', from); end != std::string_view::npos; end = m_rest.find(';', end + 1)) {
            const std::string_view behind = m_rest.substr(end + 1);
            if (behind.empty() || (behind.front() == '\n' && mayGoOn(behind.substr(1))))
                return end;
        }
        throw Trouble("line " + std::to_string(m_line) + " has no end");
    }

    static bool mayGoOn(std::string_view rest) {
        const std::string_view line = withoutTabs(text::cutAt(rest, '\n'));
        return line.empty() || line.front() == '}' || line.find('=') != std::string_view::npos;
    }

    void store(const std::string& prefix, const Label& label, std::string_view value) {
        const std::string path = prefix + label.name;
        if (!label.range) {
            m_facts[path] = value;
            return;
        }
        const text::IndexRange range = rangeOf(*label.range);
        const std::vector<std::string> values = splitAtCommas(value);
        if (range.start == -1 || static_cast<long long>(values.size()) != range.end - 0LL - range.start + 1) {
            m_facts[path + '[' + *label.range + ']'] = value;
            return;
        }
        for (std::size_t at = 0; at < values.size(); ++at)
            m_facts[indexed(path, range.start + static_cast<int>(at))] = values[at];
    }

    std::string_view m_rest;
    std::size_t m_line = 1;
    Facts m_facts;
};

std::string textOf(const Json& value) {
    return value.is_string() ? value.get<std::string>() : value.dump();
}

void addJson(Facts& facts, const std::string& path, const Json& value) {
    if (value.is_object()) {
        for (const auto& [name, inside] : value.items())
            addJson(facts, path.empty() ? name : path + '/' + name, inside);
        return;
    }
    if (!value.is_array()) {
        facts[path] = textOf(value);
        return;
    }
    for (std::size_t at = 0; at < value.size(); ++at)
        facts[indexed(path, static_cast<int>(at))] = textOf(value[at]);
}

std::string withPlainLineEnds(const std::string& text) {
    std::string plain;
    for (std::size_t at = 0; at < text.size(); ++at)
        if (text[at] != '\r' || text.compare(at, 2, "\r\n") != 0)
            plain += text[at];
    return plain;
}

} // namespace

Facts readDump(const std::string& text) {
    const std::string plain = withPlainLineEnds(text);
    if (const Json json = Json::parse(plain, nullptr, false); json.is_object()) {
        Facts facts;
        addJson(facts, "", json);
        return facts;
    }
    return DumpText(plain).read();
}

void joinWhereTheOtherHasJoined(Facts& facts, const Facts& other) {
    for (const auto& [path, value] : other) {
        const Label label = readLabel(path);
        if (!label.range || label.range->find('-') == std::string::npos || facts.contains(path))
            continue;
        const text::IndexRange range = rangeOf(*label.range);
        if (range.start == -1 || !facts.contains(indexed(label.name, range.end)))
            continue;
        std::string joined;
        for (int index = range.start; index <= range.end; ++index) {
            const auto one = facts.find(indexed(label.name, index));
            joined += index == range.start ? "" : ",";
            if (one == facts.end())
                continue;
            joined += one->second;
            facts.erase(one);
        }
        facts[path] = joined;
    }
}
