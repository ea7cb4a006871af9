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

/// Values that nobody has written yet hold one space or nothing.
inline bool isBlank(const std::string& text) {
    return text.find_first_not_of(' ') == std::string::npos;
}

struct Cell {
    std::string text;
    bool changed = false;
};

struct Week {
    std::array<std::string, daysInWeek> highs;
    /// The range of highs that was written last.
    int from = 0;
    int to = -1;
    bool changed = false;
    std::array<Cell, daysInWeek> skies;
};

/// What the labels of the headline read.
struct HeadlineState {
    std::string text;
    std::array<std::string, daysInWeek> highs;
};

struct CityState {
    std::string name;
    std::array<Cell, columnNames.size()> cells;
    Week week;
    /// The highest temperature of each week of the current year.
    std::array<std::optional<double>, 53> year;

    const Cell& cell(Column column) const { return cells[static_cast<std::size_t>(column)]; }
};

/// What the handlers have been told so far, and the headline. Both boards draw from this and from nothing else.
class BoardState {
public:
    explicit BoardState(const std::vector<std::string>& cityNames);

    void deliver(std::size_t city, Column column, const std::string& text, bool changed);
    void deliverHighs(std::size_t city, int from, int to, const std::vector<std::string>& texts, bool changed);
    void deliverSky(std::size_t city, std::size_t day, const std::string& text, bool changed);
    void setHeadline(HeadlineState headline);

    const std::vector<CityState>& cities() const { return m_cities; }
    const HeadlineState& headline() const { return m_headline; }
    const Tally& tally() const { return m_tally; }
    const std::string& date() const { return m_date; }
    std::size_t days() const { return m_days; }

private:
    void deliverDate(CityState& city, const std::string& date);
    static void noteInYear(CityState& city, const std::string& high);

    std::vector<CityState> m_cities;
    HeadlineState m_headline;
    Tally m_tally;
    std::string m_date;
    std::size_t m_days = 0;
};

#endif
