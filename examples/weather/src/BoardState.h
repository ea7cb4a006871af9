#ifndef WEATHER_BOARDSTATE_H
#define WEATHER_BOARDSTATE_H

#include "Columns.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

/// How often the plug-ins were told something of the latest observations, of the last seven days, of the headline.
struct Tally {
    std::size_t today = 0;
    std::size_t week = 0;
    std::size_t headline = 0;
};

/// Values that nobody has written yet hold one space or nothing.
inline bool isBlank(const std::string& text) {
    return text.find_first_not_of(' ') == std::string::npos;
}

struct Cell {
    std::string text;
    /// The observation of the city, counted from 1, with which the text came.
    std::size_t since = 0;
};

/// A number with the words around it.
struct ReadingState {
    std::string label;
    std::string unit;
    Cell value;
};

/// The weather as it was observed, and as the operator's tables have it.
struct DayState {
    Cell date;
    Cell sky;
    Cell label;
    Cell picture;
};

struct Week {
    std::array<std::string, daysInWeek> highs;
    /// The range of highs that was written last.
    int from = 0;
    int to = -1;
    std::array<DayState, daysInWeek> days;
};

/// What the labels of the headline read.
struct HeadlineState {
    std::string text;
    std::array<std::string, daysInWeek> highs;
};

struct CityState {
    std::string name;
    std::string date;
    std::array<ReadingState, readingNames.size()> readings;
    DayState today;
    Week week;
    /// The highest temperature of each week of the current year.
    std::array<std::optional<double>, 53> year;
    std::size_t observations = 0;

    const ReadingState& reading(Reading reading) const { return readings[static_cast<std::size_t>(reading)]; }
    bool isFresh(const Cell& cell) const { return cell.since == observations; }
};

/// What the plug-ins have been told so far, and the headline. All boards draw from this and from nothing else.
class BoardState {
public:
    explicit BoardState(const std::vector<std::string>& cityNames);

    void describe(std::size_t city, Reading reading, const std::string& label, const std::string& unit);

    void deliverDate(std::size_t city, const std::string& date);
    void deliverReading(std::size_t city, Reading reading, const std::string& text);
    /// The cell belongs to a day of the city.
    void deliverDay(std::size_t city, Cell& cell, const std::string& text);
    void deliverHighs(std::size_t city, const std::vector<std::string>& highs, int from, int to);
    void countHeadline();
    void setHeadline(HeadlineState headline);

    std::vector<CityState>& cities() { return m_cities; }
    const std::vector<CityState>& cities() const { return m_cities; }
    const HeadlineState& headline() const { return m_headline; }
    const Tally& tally() const { return m_tally; }
    const std::string& date() const { return m_date; }
    std::size_t days() const { return m_days; }

private:
    static void noteInYear(CityState& city, const std::string& high);

    std::vector<CityState> m_cities;
    HeadlineState m_headline;
    Tally m_tally;
    std::string m_date;
    std::size_t m_days = 0;
};

#endif
