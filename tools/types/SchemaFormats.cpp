#include "SchemaFormats.h"

#include <nlohmann/json.hpp>

#include <cctype>
#include <ostream>
#include <string>

namespace {

using Json = nlohmann::ordered_json;

/// In a cell of a table. The text of a description stays Markdown.
std::string cell(const std::string& text) {
    std::string escaped;
    for (const char character : text) {
        if (character == '|')
            escaped += '\\';
        escaped += character == '\n' || character == '\r' ? ' ' : character;
    }
    return escaped;
}

/// In as many backquotes as it needs.
std::string code(const std::string& text) {
    if (text.empty())
        return {};
    std::string fence = "`";
    while (text.find(fence) != std::string::npos)
        fence += '`';
    const bool needsBlanks = text.front() == '`' || text.back() == '`';
    const std::string pad = needsBlanks ? " " : "";
    return cell(fence + pad + text + pad + fence);
}

/// What pages make of a heading, for links to it.
std::string anchor(const std::string& heading) {
    std::string anchor;
    for (const char character : heading) {
        const auto letter = static_cast<unsigned char>(character);
        if (character == ' ')
            anchor += '-';
        else if (std::isalnum(letter) || character == '_' || character == '-' || letter >= 0x80)
            anchor += static_cast<char>(std::tolower(letter));
    }
    return anchor;
}

std::string linkTo(const Schema& schema, const std::string& type) {
    if (!schema.find(type))
        return type == "string" ? "text" : cell(type);
    return '[' + cell(type) + "](#" + anchor(type) + ')';
}

/// The types that have a field of this one.
std::string usersOf(const Schema& schema, const std::string& name) {
    std::string users;
    for (const Schema::Type& type : schema.types)
        for (const Schema::Field& field : type.fields)
            if (field.type == name) {
                users += (users.empty() ? "" : ", ") + linkTo(schema, type.name);
                break;
            }
    return users;
}

void writeMarkdownRow(const Schema& schema, const Schema::Field& field, std::ostream& os) {
    os << "| " << code(field.label()) << " | " << linkTo(schema, field.type) << " | ";
    // In front of an empty cell stands one blank, as in any other.
    if (const std::string text = code(field.defaultText); !text.empty())
        os << text << ' ';
    os << '|';
    if (!field.description.empty())
        os << ' ' << cell(field.description);
    os << " |\n";
}

/// In a label of a record, where these characters mean something.
std::string escapeLabel(const std::string& text) {
    std::string escaped;
    for (const char character : text) {
        if (std::string_view("{}|<>\"\\ ").find(character) != std::string_view::npos)
            escaped += '\\';
        escaped += character;
    }
    return escaped;
}

std::string quoted(const std::string& text) {
    std::string quotedText = "\"";
    for (const char character : text) {
        if (character == '"' || character == '\\')
            quotedText += '\\';
        quotedText += character;
    }
    return quotedText + '"';
}

} // namespace

void writeMarkdown(const Schema& schema, std::ostream& os) {
    os << "# Types\n\n| Type | What it is |\n|---|---|\n";
    for (const Schema::Type& type : schema.types)
        os << "| " << linkTo(schema, type.name) << " | " << cell(type.description)
           << (type.description.empty() ? "|\n" : " |\n");
    for (const Schema::Type& type : schema.types) {
        os << "\n## " << type.name << '\n';
        if (!type.description.empty())
            os << '\n' << type.description << '\n';
        if (const std::string users = usersOf(schema, type.name); !users.empty())
            os << "\nPart of: " << users << ".\n";
        if (type.fields.empty())
            continue;
        os << "\n| Field | Type | Default | Meaning |\n|---|---|---|---|\n";
        for (const Schema::Field& field : type.fields)
            writeMarkdownRow(schema, field, os);
    }
}

void writeJson(const Schema& schema, std::ostream& os) {
    Json types = Json::array();
    for (const Schema::Type& type : schema.types) {
        Json fields = Json::array();
        for (const Schema::Field& field : type.fields)
            fields.push_back({{"name", field.name},
                              {"type", field.type},
                              {"count", field.count},
                              {"default", field.defaultText},
                              {"description", field.description}});
        types.push_back({{"name", type.name}, {"description", type.description}, {"fields", std::move(fields)}});
    }
    os << Json{{"types", std::move(types)}}.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
}

void writeDot(const Schema& schema, std::ostream& os) {
    os << "digraph types {\n    rankdir=LR;\n    node [shape=record, fontname=\"sans-serif\"];\n";
    for (const Schema::Type& type : schema.types) {
        os << "    " << quoted(type.name) << " [label=\"{" << escapeLabel(type.name) << '|';
        for (const Schema::Field& field : type.fields)
            os << escapeLabel(field.label()) << "\\l";
        os << "}\"];\n";
    }
    for (const Schema::Type& type : schema.types)
        for (const Schema::Field& field : type.fields)
            if (schema.find(field.type))
                os << "    " << quoted(type.name) << " -> " << quoted(field.type) << " [label=" << quoted(field.label())
                   << "];\n";
    os << "}\n";
}
