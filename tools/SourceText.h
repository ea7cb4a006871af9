#ifndef ORBEL_TOOLS_SOURCETEXT_H
#define ORBEL_TOOLS_SOURCETEXT_H

#include <orbel/types/TypeFiles.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Both count from 1. A column is a character, whatever number of bytes it has in UTF-8.
struct TextPosition {
    std::size_t line = 1;
    std::size_t column = 1;

    bool operator==(const TextPosition&) const = default;
};

/// A text with the places of its lines.
class LineIndex {
public:
    LineIndex() = default;
    /// Keeps the view.
    explicit LineIndex(std::string_view text);

    /// An offset behind the text is taken for its end.
    TextPosition positionAt(std::size_t offset) const;

private:
    std::string_view m_text;
    std::vector<std::size_t> m_lineStarts{0};
};

/// A type file with and without its "//" comments: what stands where in the one that the other is parsed as.
class SourceText {
public:
    /// `text` is the file with its comments, as readTypeFile has it.
    explicit SourceText(std::string text);
    SourceText(const SourceText&) = delete;
    SourceText& operator=(const SourceText&) = delete;

    std::string_view file() const { return m_file; }
    /// The text that is parsed. Valid as long as this object, as is every view into it.
    std::string_view kept() const { return m_kept; }
    const std::vector<DroppedComment>& comments() const { return m_comments; }

    /// With its "//".
    std::string_view commentText(const DroppedComment& comment) const;
    /// Where it begins in file().
    std::size_t commentOffset(const DroppedComment& comment) const { return fileOffset(comment.at) - comment.size; }

    /// Where `part`, a view into kept(), begins in it.
    std::size_t offsetOf(std::string_view part) const;
    /// Where the character that stands at `keptOffset` in kept() stands in file().
    std::size_t fileOffset(std::size_t keptOffset) const;
    TextPosition positionInFile(std::size_t fileOffset) const { return m_lines.positionAt(fileOffset); }
    /// Where `part`, a view into kept(), begins in the file.
    TextPosition positionOf(std::string_view part) const { return positionInFile(fileOffset(offsetOf(part))); }

private:
    /// From this offset in the kept text on, the file is so many characters ahead.
    struct Shift {
        std::size_t from;
        std::size_t by;
    };

    std::string m_file;
    std::vector<DroppedComment> m_comments;
    std::string m_kept;
    std::vector<Shift> m_shifts;
    LineIndex m_lines;
};

#endif
