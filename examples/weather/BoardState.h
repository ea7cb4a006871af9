#ifndef WEATHER_BOARDSTATE_H
#define WEATHER_BOARDSTATE_H

#include "Columns.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

struct Tally {
    std::size_t callbacks = 0;
    std::size_t changed = 0;
    std::size_t unchanged = 0;

    void count(bool wasChanged) {
        ++callbacks;
        ++(wasChanged ? changed : unchanged);
    }
};

struct Cell {
    std::string text;
    bool changed = false;
};

struct Week {
    std::array<std::string, daysInWeek> texts;
    int from = 0;
    int to = -1;
    bool changed = false;
};

struct CityState {
    std::string name;
    std::array<Cell, columnNames.size()> cells;
    Week week;
    /// The highest temperature of each week of the current year.
    std::array<std::optional<double>, 53> year;

    const Cell& cell(Column column) const { return cells[static_cast<std::size_t>(column)]; }
};

/// What the handlers have been told so far. Both boards draw from this and from nothing else.
class BoardState {
public:
    explicit BoardState(const std::vector<std::string>& cityNames);

    void deliver(std::size_t city, Column column, const std::string& text, bool changed);
    void deliverWeek(std::size_t city, int from, int to, const std::vector<std::string>& texts, bool changed);

    const std::vector<CityState>& cities() const { return m_cities; }
    const Tally& tally() const { return m_tally; }
    const std::string& date() const { return m_date; }
    std::size_t days() const { return m_days; }

private:
    void deliverDate(CityState& city, const std::string& date);
    static void noteInYear(CityState& city, const std::string& high);

    std::vector<CityState> m_cities;
    Tally m_tally;
    std::string m_date;
    std::size_t m_days = 0;
};

#endif
