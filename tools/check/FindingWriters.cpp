#include "FindingWriters.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string_view>
#include <vector>

namespace {

using Json = nlohmann::ordered_json;

constexpr int indentation = 2;

/// Texts of files need not be UTF-8.
void write(std::ostream& os, const Json& json) {
    os << json.dump(indentation, ' ', false, Json::error_handler_t::replace) << '\n';
}

std::string_view colourOf(Severity severity) {
    switch (severity) {
    case Severity::error:
        return "\x1B[1;31m";
    case Severity::warning:
        return "\x1B[1;33m";
    case Severity::note:
        break;
    }
    return "\x1B[1;36m";
}

std::string counted(std::size_t count, const std::string& what) {
    return std::to_string(count) + ' ' + what + (count == 1 ? "" : "s");
}

std::string countsOf(const std::vector<Finding>& findings) {
    std::string text;
    for (const Severity severity : {Severity::error, Severity::warning, Severity::note}) {
        const auto count = std::count_if(findings.begin(), findings.end(), [severity](const Finding& finding) {
            return finding.rule->severity == severity;
        });
        if (count > 0)
            text +=
                (text.empty() ? "" : ", ") + counted(static_cast<std::size_t>(count), std::string(nameOf(severity)));
    }
    return text;
}

Json regionOf(const Finding& finding) {
    return {{"startLine", finding.from.line},
            {"startColumn", finding.from.column},
            {"endLine", finding.to.line},
            {"endColumn", finding.to.column}};
}

/// A relative reference of RFC 3986, or an absolute one of this machine.
std::string uriOf(const std::string& path) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    constexpr std::string_view plain = "-._~/:";
    const auto isPlain = [&](char character) {
        return (character >= '0' && character <= '9') || (character >= 'A' && character <= 'Z') ||
               (character >= 'a' && character <= 'z') || plain.find(character) != std::string_view::npos;
    };
    std::string uri;
    const bool hasDrive = path.size() > 1 && path[1] == ':';
    if (path.starts_with('/') || hasDrive)
        uri = hasDrive ? "file:///" : "file://";
    for (const char character : path) {
        const auto code = static_cast<unsigned char>(character);
        if (isPlain(character))
            uri += character;
        else if (character == '\\')
            uri += '/';
        else
            uri += std::string("%") + digits[code / 16] + digits[code % 16];
    }
    return uri;
}

Json ruleToSarif(const Rule& rule) {
    return {{"id", rule.id},
            {"shortDescription", {{"text", rule.text}}},
            {"help", {{"text", rule.remedy}}},
            {"defaultConfiguration", {{"level", nameOf(rule.severity)}}}};
}

std::string sentence(const std::string& message) {
    return message + (message.ends_with('?') ? " " : ". ");
}

Json findingToSarif(const Finding& finding) {
    const Json location = {
        {"physicalLocation", {{"artifactLocation", {{"uri", uriOf(finding.file)}}}, {"region", regionOf(finding)}}}};
    return {{"ruleId", finding.rule->id},
            {"ruleIndex", finding.rule - std::begin(allRules)},
            {"level", nameOf(finding.rule->severity)},
            {"message", {{"text", sentence(finding.message) + std::string(finding.rule->remedy)}}},
            {"locations", Json::array({location})}};
}

} // namespace

void writeText(std::ostream& os, const Findings& findings, Colours colours) {
    const std::vector<Finding> sorted = findings.sorted();
    const auto paint = [colours](std::string_view colour) { return colours == Colours::on ? colour : ""; };
    for (const Finding& finding : sorted)
        os << paint("\x1B[1m") << finding.file << ':' << finding.from.line << ':' << finding.from.column << ": "
           << paint(colourOf(finding.rule->severity)) << nameOf(finding.rule->severity) << ": " << paint("\x1B[0m")
           << finding.message << " [" << finding.rule->id << "]\n    remedy: " << finding.rule->remedy << '\n';
    os << (sorted.empty() ? "no findings" : counted(sorted.size(), "finding")) << " in "
       << counted(findings.files().size(), "file");
    if (!sorted.empty())
        os << ": " << countsOf(sorted);
    os << '\n';
}

void writeJson(std::ostream& os, const Findings& findings) {
    Json list = Json::array();
    for (const Finding& finding : findings.sorted())
        list.push_back({{"file", finding.file},
                        {"line", finding.from.line},
                        {"column", finding.from.column},
                        {"endLine", finding.to.line},
                        {"endColumn", finding.to.column},
                        {"severity", nameOf(finding.rule->severity)},
                        {"rule", finding.rule->id},
                        {"effect", nameOf(finding.effect)},
                        {"message", finding.message},
                        {"remedy", finding.rule->remedy}});
    write(os, {{"files", findings.files()}, {"findings", list}});
}

void writeSarif(std::ostream& os, const Findings& findings, const std::string& version) {
    Json rules = Json::array();
    for (const Rule& rule : allRules)
        rules.push_back(ruleToSarif(rule));
    Json results = Json::array();
    for (const Finding& finding : findings.sorted())
        results.push_back(findingToSarif(finding));
    const Json driver = {{"name", "orbel check"}, {"version", version}, {"rules", rules}};
    const Json run = {{"tool", {{"driver", driver}}}, {"columnKind", "unicodeCodePoints"}, {"results", results}};
    write(os, {{"$schema", "https://json.schemastore.org/sarif-2.1.0.json"},
               {"version", "2.1.0"},
               {"runs", Json::array({run})}});
}

void writeRules(std::ostream& os) {
    for (const Rule& rule : allRules)
        os << rule.id << " (" << nameOf(rule.severity) << ")\n    " << rule.text << "\n    remedy: " << rule.remedy
           << '\n';
}
