#include "ExpressionText.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr std::string_view opening = "$(";
constexpr text::CharacterSet nameEnds("[) \t\n\r");

struct Macro {
    std::string_view text;
    ExpressionPiece::Kind kind;
};

constexpr Macro macros[] = {
    {"$(REFRESH)", ExpressionPiece::Kind::Refresh},
    {"$(PARENT)", ExpressionPiece::Kind::ParentPath},
    {"$(PARENT_NAME)", ExpressionPiece::Kind::ParentName},
    {"$(PARENT_FULL_NAME)", ExpressionPiece::Kind::ParentFullName},
    {"$(FIELD_NAME)", ExpressionPiece::Kind::FieldName},
    {"$(FIELD_FULL_NAME)", ExpressionPiece::Kind::FieldFullName},
    {"$(FIELD_DATA)", ExpressionPiece::Kind::FieldData},
};

/// What the names of all of them begin with: most references are told from them by this.
constexpr text::CharacterSet macroInitials("RPF");

ExpressionPiece::Kind kindOf(std::string_view text) {
    if (!macroInitials.contains(text[opening.size()]))
        return ExpressionPiece::Kind::Reference;
    const auto* found =
        std::find_if(std::begin(macros), std::end(macros), [&](const Macro& macro) { return macro.text == text; });
    return found == std::end(macros) ? ExpressionPiece::Kind::Reference : found->kind;
}

} // namespace

ExpressionText::ExpressionText(std::string_view text) : m_text(text) {
    text::skipBlanks(m_text);
    findOpening();
}

std::optional<ExpressionPiece> ExpressionText::next() {
    if (m_finished)
        return std::nullopt;
    if (m_open != m_at || m_at == m_text.size())
        return takeLiteral(m_open);
    const std::size_t close = m_text.find(')', m_at);
    if (close == std::string_view::npos)
        return takeLiteral(m_text.size());
    return takeMacro(close + 1);
}

ExpressionPiece ExpressionText::takeLiteral(std::size_t end) {
    const std::string_view literal = m_text.substr(m_at, end - m_at);
    m_at = end;
    m_finished = m_at == m_text.size();
    return {ExpressionPiece::Kind::Literal, literal};
}

ExpressionPiece ExpressionText::takeMacro(std::size_t end) {
    ExpressionPiece piece{ExpressionPiece::Kind::Reference, m_text.substr(m_at, end - m_at)};
    piece.kind = kindOf(piece.text);
    if (piece.kind == ExpressionPiece::Kind::Refresh)
        piece.text = secondWord();
    m_at = end;
    m_finished = m_at == m_text.size();
    findOpening();
    return piece;
}

void ExpressionText::findOpening() {
    m_open = std::min(m_text.find(opening, m_at), m_text.size());
}

/// The second word from the cursor on. Contract: words end at white space only, so "$(REFRESH)$(a) $(b)" names b.
std::string_view ExpressionText::secondWord() {
    if (m_nextSpace && *m_nextSpace >= m_at)
        return m_wordBehindSpace;
    // Words are told apart by all white space, unlike the blanks inside of references.
    m_nextSpace = text::whiteSpace.findIn(m_text, m_at);
    const std::size_t start = text::whiteSpace.findOutside(m_text, *m_nextSpace);
    m_wordBehindSpace = m_text.substr(start, text::whiteSpace.findIn(m_text, start) - start);
    return m_wordBehindSpace;
}

WrittenReference readReference(std::string_view written) {
    written.remove_prefix(std::min(opening.size(), written.size()));
    text::skipBlanks(written);
    WrittenReference reference;
    reference.name = written.substr(0, nameEnds.findIn(written));
    written.remove_prefix(reference.name.size());
    if (!written.starts_with('[')) {
        reference.isIndex = reference.name == "INDEX";
        if (reference.isIndex)
            reference.name = {};
        return reference;
    }
    std::string_view word = text::cutAt(written, ')');
    word = word.substr(1, text::blanks.findIn(word) - 1);
    if (word.empty())
        return reference;
    word = text::cutAt(word, ']');
    reference.range = text::readIndexRange(word);
    return reference;
}
