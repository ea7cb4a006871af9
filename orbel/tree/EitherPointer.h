#ifndef ORBEL_TREE_EITHERPOINTER_H
#define ORBEL_TREE_EITHERPOINTER_H

#include <cstdint>

/// A pointer to a `First` or to a `Second`, or null, in one word: the lowest bit tells which, so neither may stand at
/// an odd address.
template <class First, class Second>
class EitherPointer {
public:
    EitherPointer() = default;
    static EitherPointer ofFirst(First* first) { return EitherPointer(reinterpret_cast<std::uintptr_t>(first)); }
    static EitherPointer ofSecond(Second* second) {
        return EitherPointer(reinterpret_cast<std::uintptr_t>(second) | isSecond);
    }

    /// Null also when it is the other one.
    First* first() const { return (m_word & isSecond) == 0 ? reinterpret_cast<First*>(m_word) : nullptr; }
    Second* second() const {
        return (m_word & isSecond) != 0 ? reinterpret_cast<Second*>(m_word & ~isSecond) : nullptr;
    }

    explicit operator bool() const { return m_word != 0; }
    bool operator==(const EitherPointer& other) const { return m_word == other.m_word; }
    bool operator!=(const EitherPointer& other) const { return m_word != other.m_word; }

private:
    static constexpr std::uintptr_t isSecond = 1;

    explicit EitherPointer(std::uintptr_t word) : m_word(word) {}

    std::uintptr_t m_word = 0;
};

#endif
