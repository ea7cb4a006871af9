#ifndef BENCH_RESULTS_H
#define BENCH_RESULTS_H

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// The subject that every other one is compared with.
inline constexpr const char* library = "library";
inline constexpr const char* floorMap = "floor-map";
inline constexpr const char* floorHash = "floor-hash";
/// Boost.PropertyTree has no observers, which is told wherever its sets are.
inline constexpr const char* boostTree = "boost-ptree";
inline constexpr const char* silentSets = "boost-ptree has no observers: its sets tell nobody.";
inline constexpr const char* floorBare = "floor-bare";
/// The same work on plain objects in hand, without any path.
inline constexpr const char* floorPlain = "plain";

double medianOf(std::vector<double> values);

/// What was measured of one operation of one subject on a number of items.
struct Samples {
    /// CPU time per operation, one for each round.
    std::vector<double> nanoseconds;
    /// Calls of operator new per operation, the most of any round.
    double allocations = 0;
    /// Heap per item, 0 when it was not looked at.
    double bytes = 0;
};

/// What is measured: one operation of one subject on a number of items.
struct Measured {
    std::string operation;
    std::string subject;
    std::size_t items;
};

/// All figures of a run, in the order in which the operations and their subjects were announced.
class Results {
public:
    /// Rounds arrive interleaved, so what comes first is told beforehand.
    void expect(const std::string& operation, const std::string& subject);

    Samples& at(const std::string& operation, const std::string& subject, std::size_t items);
    const Samples* find(const std::string& operation, const std::string& subject, std::size_t items) const;

    const std::vector<std::string>& operations() const { return m_operations; }
    std::vector<std::string> subjects(const std::string& operation) const;
    bool has(const std::string& operation, const std::string& subject) const;
    /// In rising order.
    std::vector<std::size_t> sizes(const std::string& operation) const;

    /// Nothing where it was not measured.
    std::optional<double> nanoseconds(const std::string& operation, const std::string& subject,
                                      std::size_t items) const;
    /// The median of what each round tells of the two; of the same groups, or the quotient of their medians.
    std::optional<double> ratio(const Measured& above, const Measured& below) const;
    std::optional<double> ratio(const std::string& operation, const std::string& subject, const std::string& floor,
                                std::size_t items) const;

private:
    std::vector<std::string> m_operations;
    std::map<std::string, std::vector<std::string>> m_subjects;
    std::map<std::pair<std::string, std::size_t>, std::map<std::string, Samples>> m_rows;
};

/// A quotient of what was measured, else nothing.
inline std::optional<double> quotient(std::optional<double> above, std::optional<double> below) {
    if (!above || !below)
        return std::nullopt;
    return *above / *below;
}

#endif
