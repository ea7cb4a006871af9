#include "SourceText.h"

#include <algorithm>
#include <utility>

namespace {

/// All but the first byte of a character in UTF-8.
bool goesOnCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

} // namespace

LineIndex::LineIndex(std::string_view text) : m_text(text) {
    for (std::size_t at = text.find('\n'); at != std::string_view::npos; at = text.find('\n', at + 1))
        m_lineStarts.push_back(at + 1);
}

TextPosition LineIndex::positionAt(std::size_t offset) const {
    offset = std::min(offset, m_text.size());
    const auto next = std::upper_bound(m_lineStarts.begin(), m_lineStarts.end(), offset);
    const std::size_t lineStart = *(next - 1);
    const std::string_view before = m_text.substr(lineStart, offset - lineStart);
    const auto goingOn = std::count_if(before.begin(), before.end(), goesOnCharacter);
    return {static_cast<std::size_t>(next - m_lineStarts.begin()),
            before.size() - static_cast<std::size_t>(goingOn) + 1};
}

SourceText::SourceText(std::string text)
    : m_file(std::move(text)), m_kept(withoutComments(m_file, &m_comments)), m_lines(m_file) {
    std::size_t dropped = 0;
    for (const DroppedComment& comment : m_comments)
        m_shifts.push_back({comment.at, dropped += comment.size});
}

std::string_view SourceText::commentText(const DroppedComment& comment) const {
    return file().substr(commentOffset(comment), comment.size);
}

std::size_t SourceText::offsetOf(std::string_view part) const {
    return static_cast<std::size_t>(part.data() - m_kept.data());
}

std::size_t SourceText::fileOffset(std::size_t keptOffset) const {
    // A comment that stands in front of a character was dropped before it.
    const auto next = std::upper_bound(m_shifts.begin(), m_shifts.end(), keptOffset,
                                       [](std::size_t offset, const Shift& shift) { return offset < shift.from; });
    return next == m_shifts.begin() ? keptOffset : keptOffset + (next - 1)->by;
}
