#include <orbel/tree/NameHash.h>

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace {

/// Texts that begin at any address, for words are read where they are.
std::string textOf(std::size_t size) {
    std::string text;
    for (std::size_t at = 0; at < size; ++at)
        text += static_cast<char>('a' + at % 26);
    return text;
}

} // namespace

TEST(NameHash, DependsOnTheTextAndTheSeedAlone) {
    for (std::size_t size = 0; size <= 100; ++size) {
        const std::string text = textOf(size);
        const std::string elsewhere = "?" + text + "?";
        const std::string_view copy(elsewhere.data() + 1, size);
        EXPECT_EQ(namehash::of(text), namehash::of(copy)) << size;
        EXPECT_EQ(namehash::of(text, 7), namehash::of(copy, 7)) << size;
        EXPECT_NE(namehash::of(text), namehash::of(text, 7)) << size;
    }
}

TEST(NameHash, DependsOnEachCharacter) {
    for (std::size_t size = 1; size <= 100; ++size) {
        const std::string text = textOf(size);
        for (std::size_t at = 0; at < size; ++at) {
            std::string other = text;
            other[at] = '!';
            EXPECT_NE(namehash::of(text), namehash::of(other)) << size << ", " << at;
        }
    }
}

TEST(NameHash, DependsOnTheSize) {
    std::set<std::uint32_t> hashes;
    for (std::size_t size = 0; size <= 100; ++size)
        hashes.insert(namehash::of(std::string(size, 'x')));
    EXPECT_EQ(hashes.size(), 101u);
}

TEST(NameHash, SpreadsNumberedNames) {
    std::set<std::uint32_t> lowBits;
    for (int number = 0; number < 1024; ++number)
        lowBits.insert(namehash::of("field" + std::to_string(number)) % 1024);
    // As many as throws of dice would hit: 1 - 1/e of all.
    EXPECT_GT(lowBits.size(), 560u);
}

TEST(ShortTexts, AreEqualInEachCharacterOrNotAtAll) {
    for (std::size_t size = 0; size <= 32; ++size) {
        const std::string text = textOf(size);
        const std::string longer = text + "behind";
        EXPECT_TRUE(namehash::areShortEqual(text.data(), longer.data(), size)) << size;
        for (std::size_t at = 0; at < size; ++at) {
            std::string other = text;
            other[at] = '!';
            EXPECT_FALSE(namehash::areShortEqual(text.data(), other.data(), size)) << size << ", " << at;
        }
    }
}
