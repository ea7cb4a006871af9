#ifndef ORBEL_FOUNDATION_TEXT_LENTTEXT_H
#define ORBEL_FOUNDATION_TEXT_LENTTEXT_H

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace text {

/// Buffers for operations that may run inside each other: each level has its own, which keeps the room it has gained
/// for the next operation at that level.
class TextShelf {
private:
    friend class LentText;

    // By pointers, for taking one more must not move those that are lent.
    std::vector<std::unique_ptr<std::string>> m_texts;
    std::size_t m_lent = 0;
};

/// An empty buffer, or one with a copy of a text, lent for as long as this lives on the stack.
class LentText {
public:
    explicit LentText(TextShelf& shelf, std::string_view text = {}) : m_shelf(shelf), m_text(take(shelf)) {
        m_text.assign(text);
    }
    LentText(const LentText&) = delete;
    LentText& operator=(const LentText&) = delete;
    ~LentText() {
        --m_shelf.m_lent;
        if (m_text.capacity() > mostKept)
            std::string().swap(m_text);
    }

    std::string& get() { return m_text; }
    std::string_view view() const { return m_text; }

    /// Ends the text behind `part`, which lies in it, in place, and gives the part.
    char* cut(std::string_view part) {
        char* const start = m_text.data() + (part.data() - m_text.data());
        start[part.size()] = '\0';
        return start;
    }

private:
    /// One text out of the ordinary must not cost its memory for the rest of the process.
    static constexpr std::size_t mostKept = 262'144;

    static std::string& take(TextShelf& shelf) {
        if (shelf.m_lent == shelf.m_texts.size())
            shelf.m_texts.push_back(std::make_unique<std::string>());
        return *shelf.m_texts[shelf.m_lent++];
    }

    TextShelf& m_shelf;
    std::string& m_text;
};

} // namespace text

#endif
