#ifndef BENCH_GOALS_H
#define BENCH_GOALS_H

#include "Results.h"
#include "Table.h"
#include "TextLanguages.h"

#include <cstddef>
#include <optional>
#include <ostream>
#include <string>

/// What the library promises, next to what was measured. Something that was not measured gets no line.
class Goals {
public:
    Goals();

    /// `unit` is written behind the figure and the limit: "x" for a ratio, "B" for bytes.
    void atMost(const std::string& goal, std::optional<std::size_t> items, std::optional<double> figure, double limit,
                const std::string& unit);
    void atLeast(const std::string& goal, std::optional<std::size_t> items, std::optional<double> figure, double limit,
                 const std::string& unit);
    /// Without a limit.
    void note(const std::string& what, std::optional<std::size_t> items, std::optional<double> figure,
              const std::string& unit);

    bool empty() const { return m_table.empty(); }
    const Table& table() const { return m_table; }

private:
    void add(const std::string& goal, std::optional<std::size_t> items, double figure, const std::string& limit,
             const std::string& result, const std::string& unit);

    Table m_table;
};

/// Adds every goal that the results tell something of.
void judge(const Results& results, Goals& goals);
void judgeTexts(const std::vector<MeasuredText>& texts, Goals& goals);

#endif
