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
template <class Buffer>
class Shelf {
public:
    Buffer& take() {
        if (m_lent == m_buffers.size())
            m_buffers.push_back(std::make_unique<Buffer>());
        return *m_buffers[m_lent++];
    }

    void giveBack(Buffer& buffer) {
        --m_lent;
        if (buffer.capacity() > mostKept)
            Buffer().swap(buffer);
    }

private:
    /// One buffer out of the ordinary must not cost its memory for the rest of the process.
    static constexpr std::size_t mostKept = 262'144;

    // By pointers, for taking one more must not move those that are lent.
    std::vector<std::unique_ptr<Buffer>> m_buffers;
    std::size_t m_lent = 0;
};

/// A buffer, with what was left in it, lent for as long as this lives on the stack.
template <class Buffer>
class Lent {
public:
    explicit Lent(Shelf<Buffer>& shelf) : m_shelf(shelf), m_buffer(shelf.take()) {}
    Lent(const Lent&) = delete;
    Lent& operator=(const Lent&) = delete;
    ~Lent() { m_shelf.giveBack(m_buffer); }

    Buffer& get() { return m_buffer; }
    const Buffer& get() const { return m_buffer; }

private:
    Shelf<Buffer>& m_shelf;
    Buffer& m_buffer;
};

using TextShelf = Shelf<std::string>;

/// An empty text, or a copy of one.
class LentText : public Lent<std::string> {
public:
    explicit LentText(TextShelf& shelf, std::string_view text = {}) : Lent(shelf) { get().assign(text); }

    char* chars() { return get().data(); }
    std::string_view view() const { return get(); }

    /// Ends the text behind `part`, which lies in it, in place, and gives the part.
    char* cut(std::string_view part) {
        char* const start = chars() + (part.data() - chars());
        start[part.size()] = '\0';
        return start;
    }
};

} // namespace text

#endif
