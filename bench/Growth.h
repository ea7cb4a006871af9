#ifndef BENCH_GROWTH_H
#define BENCH_GROWTH_H

#include <cstddef>
#include <functional>
#include <string_view>
#include <vector>

/// Something done to a number of items at once, whose cost per item must not rise with the number.
struct Growth {
    struct Pass {
        /// What is measured.
        std::function<void()> work;
        /// Takes apart what the work has made.
        std::function<void()> clean;
    };

    std::string_view name;
    /// Makes ready one pass over so many items; is not measured.
    std::function<Pass(std::size_t items)> prepare;
    /// Whether the work leaves everything as it was. It is then done once before the clock runs, so that what is
    /// measured, and what it allocates, is the steady state.
    bool steady = false;
};

/// One line for each text language and each store that grows.
const std::vector<Growth>& growths();

#endif
