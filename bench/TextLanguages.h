#ifndef BENCH_TEXTLANGUAGES_H
#define BENCH_TEXTLANGUAGES_H

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// A text that the library reads or writes, next to what the same bytes cost at least.
struct TextLanguage {
    struct Pass {
        std::size_t bytes = 0;
        std::size_t items = 0;
        std::function<void()> work;
        /// Reading: looks for the separators of the language with memchr. Writing: writes the same bytes, one os.write
        /// for each line.
        std::function<void()> floor;
        /// The same effect on the tree or the store without a text; may be empty.
        std::function<void()> direct;
    };

    std::string_view name;
    /// What `direct` does; empty without it.
    std::string_view without;
    /// Makes ready what is measured again and again; is not measured itself.
    std::function<Pass()> prepare;
    /// How many times the floor the work may cost, what it does directly taken off. 0: no limit.
    double maxRatio = 0;
    /// How many megabytes a second the work must reach. 0: no limit.
    double minMegabytes = 0;
    /// Whether the work must not allocate once it has run.
    bool isSteady = false;
};

const std::vector<TextLanguage>& textLanguages();

/// What many turns, of floor, work and direct work one after the other, found in medians.
struct TextFigures {
    double megabytes = 0;
    double floorMegabytes = 0;
    /// Of the work to the floor, as it is and without what it does directly.
    double ratio = 0;
    double ratioWithout = 0;
    double allocations = 0;
};

struct MeasuredText {
    const TextLanguage* language = nullptr;
    TextFigures figures;
};

/// Measures those whose name holds `name`, none without one.
std::vector<MeasuredText> measureTexts(const std::optional<std::string>& name);
/// One line for each.
void printTexts(const std::vector<MeasuredText>& texts);

#endif
