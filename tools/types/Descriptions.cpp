#include "Descriptions.h"

#include "../SourceText.h"

#include <orbel/foundation/text/Scanner.h>

#include <algorithm>

namespace {

constexpr std::string_view mark = "//!";

bool isBlank(std::string_view text) {
    return text::whiteSpace.skip(text).empty();
}

/// Nothing but blank lines and "#" comments.
bool saysNothing(std::string_view text) {
    while (!text.empty()) {
        const std::string_view line = text::whiteSpace.skip(text::cutAt(text, '\n'));
        if (!line.empty() && line.front() != '#')
            return false;
    }
    return true;
}

} // namespace

Descriptions::Descriptions(const SourceText& text) : m_text(text) {}

std::size_t Descriptions::addType(std::string_view statement) {
    // Behind a "#" comment a statement begins with the blanks that follow.
    text::skipBlanks(statement);
    const std::size_t start = m_text.offsetOf(statement);
    const std::size_t brace = statement.find('{');
    const std::size_t end = start + (brace == std::string_view::npos ? statement.size() : brace + 1);
    m_statements.push_back({start, end, true, {}});
    return m_statements.size() - 1;
}

std::size_t Descriptions::addField(std::string_view statement) {
    const std::size_t end = m_text.offsetOf(statement) + statement.size() + 1;
    text::skipBlanks(statement);
    m_statements.push_back({m_text.offsetOf(statement), end, false, {}});
    return m_statements.size() - 1;
}

std::string Descriptions::textOf(std::size_t statement) {
    if (!m_isResolved)
        resolve();
    m_isResolved = true;
    return m_statements[statement].description;
}

void Descriptions::resolve() {
    Statement* lastBehind = nullptr;
    TextPosition lastPosition;
    std::size_t droppedBefore = 0;
    for (const DroppedComment& comment : m_text.comments()) {
        const std::size_t fileOffset = comment.at + droppedBefore;
        droppedBefore += comment.size;
        const std::string_view written = m_text.file().substr(fileOffset, comment.size);
        if (!written.starts_with(mark))
            continue;
        const TextPosition position = m_text.positionInFile(fileOffset);
        const std::size_t lineStart = m_text.kept().rfind('\n', comment.at == 0 ? 0 : comment.at - 1) + 1;
        Statement* about = nullptr;
        if (comment.at == 0 || isBlank(m_text.kept().substr(lineStart, comment.at - lineStart))) {
            const bool goesOn =
                lastBehind && position.line == lastPosition.line + 1 && position.column == lastPosition.column;
            about = goesOn ? lastBehind : below(comment.at);
            lastBehind = goesOn ? lastBehind : nullptr;
        } else {
            about = lastBehind = before(comment.at);
        }
        lastPosition = position;
        if (about)
            joinDescription(about->description,
                            std::string(text::whiteSpace.dropEnd(text::whiteSpace.skip(written.substr(mark.size())))));
    }
}

Descriptions::Statement* Descriptions::below(std::size_t at) {
    Statement* next = nullptr;
    for (Statement& statement : m_statements)
        if (statement.start >= at && (!next || statement.start < next->start))
            next = &statement;
    return next && saysNothing(m_text.kept().substr(at, next->start - at)) ? next : nullptr;
}

Descriptions::Statement* Descriptions::before(std::size_t at) {
    Statement* last = nullptr;
    for (Statement& statement : m_statements)
        if (statement.end <= at && (!last || statement.end > last->end))
            last = &statement;
    return last && isBlank(m_text.kept().substr(last->end, at - last->end)) ? last : nullptr;
}

void joinDescription(std::string& description, const std::string& more) {
    if (!description.empty() && !more.empty())
        description += ' ';
    description += more;
}
