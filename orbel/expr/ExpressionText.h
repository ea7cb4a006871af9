#ifndef ORBEL_EXPR_EXPRESSIONTEXT_H
#define ORBEL_EXPR_EXPRESSIONTEXT_H

#include "../foundation/text/Scanner.h"

#include <cstddef>
#include <optional>
#include <string_view>

/// A piece of an expression text as written.
struct ExpressionPiece {
    enum class Kind {
        Literal,
        Refresh,
        ParentPath,
        ParentName,
        ParentFullName,
        FieldName,
        FieldFullName,
        FieldData,
        Reference
    };

    Kind kind;
    /// The word behind the macro for Refresh, empty when there is none; else the piece itself.
    std::string_view text;
};

/// Takes an expression text apart, from front to back in linear time. The text must outlive it.
class ExpressionText {
public:
    explicit ExpressionText(std::string_view text);

    /// The next piece; nothing behind the last.
    std::optional<ExpressionPiece> next();

private:
    ExpressionPiece takeLiteral(std::size_t end);
    ExpressionPiece takeMacro(std::size_t end);
    std::string_view secondWord();
    void findOpening();

    std::string_view m_text;
    std::size_t m_at = 0;
    // Where the next macro begins, the end of the text when there is none.
    std::size_t m_open = 0;
    bool m_finished = false;
    // The first white space behind the cursor and the word behind that, kept so that a text of many macros is not
    // scanned to its end for each; nothing until a macro asks.
    std::optional<std::size_t> m_nextSpace;
    std::string_view m_wordBehindSpace;
};

/// What is between the brackets of "$(name[n-m])".
struct WrittenReference {
    std::string_view name;
    text::IndexRange range;
    /// "$(INDEX)", with no name.
    bool isIndex = false;
};

/// Reads a text of which the first two characters stand for "$(". The name is empty when nothing is written.
WrittenReference readReference(std::string_view written);

#endif
