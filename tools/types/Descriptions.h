#ifndef ORBEL_TOOLS_TYPES_DESCRIPTIONS_H
#define ORBEL_TOOLS_TYPES_DESCRIPTIONS_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

class SourceText;

/// Finds what the comments "//!" of a type file are about. One that has its line to itself is about the type or field
/// that begins below; one behind a field, or behind the "{" of a type, about that. A comment that begins right below
/// one behind a field, in the same column, goes on with it.
class Descriptions {
public:
    /// Keeps the text.
    explicit Descriptions(const SourceText& text);

    /// Statements as the parser tells them, views into the kept text. The result names the statement to textOf.
    std::size_t addType(std::string_view statement);
    std::size_t addField(std::string_view statement);

    /// Once all statements are added.
    std::string textOf(std::size_t statement);

private:
    struct Statement {
        std::size_t start;
        /// Where a comment is behind it: behind the ";" of a field, or the "{" of a type.
        std::size_t end;
        bool isType;
        std::string description;
    };

    void resolve();
    Statement* below(std::size_t at);
    Statement* before(std::size_t at);

    const SourceText& m_text;
    std::vector<Statement> m_statements;
    bool m_isResolved = false;
};

/// Appends, with a blank between the two.
void joinDescription(std::string& description, const std::string& more);

#endif
