#ifndef ORBEL_TREE_SHAREDPART_H
#define ORBEL_TREE_SHAREDPART_H

#include <utility>

/// A pointer to a part that a field and its clones share; the last to let go deletes it. The part counts its owners
/// in a public member `owners` that starts at 0. Trees live on one thread, so the count is a plain number.
template <class Part>
class SharedPart {
public:
    SharedPart() = default;
    explicit SharedPart(Part* part) : m_part(part) { hold(); }
    SharedPart(const SharedPart& other) : m_part(other.m_part) { hold(); }
    SharedPart(SharedPart&& other) noexcept : m_part(std::exchange(other.m_part, nullptr)) {}
    SharedPart& operator=(SharedPart other) noexcept {
        std::swap(m_part, other.m_part);
        return *this;
    }
    ~SharedPart() {
        // The analyzer cannot know that whoever is copied counts as an owner too.
        if (m_part && --m_part->owners == 0) // NOLINT(clang-analyzer-cplusplus.NewDelete)
            delete m_part;                   // NOLINT(clang-analyzer-cplusplus.NewDelete)
    }

    explicit operator bool() const { return m_part != nullptr; }
    Part& operator*() const { return *m_part; }
    Part* operator->() const { return m_part; }
    bool operator==(const SharedPart& other) const { return m_part == other.m_part; }
    bool operator!=(const SharedPart& other) const { return m_part != other.m_part; }

private:
    void hold() {
        if (m_part)
            ++m_part->owners; // NOLINT(clang-analyzer-cplusplus.NewDelete)
    }

    Part* m_part = nullptr;
};

#endif
