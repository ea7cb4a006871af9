#include "BoardState.h"

#include "Dates.h"

#include <algorithm>
#include <cstdlib>

BoardState::BoardState(const std::vector<std::string>& cityNames) : m_cities(cityNames.size()) {
    for (std::size_t city = 0; city < cityNames.size(); ++city)
        m_cities[city].name = cityNames[city];
}

void BoardState::describe(std::size_t city, Reading reading, const std::string& label, const std::string& unit) {
    ReadingState& state = m_cities[city].readings[static_cast<std::size_t>(reading)];
    state.label = label;
    state.unit = unit;
}

void BoardState::deliverDate(std::size_t city, const std::string& date) {
    ++m_tally.today;
    if (date != m_date) {
        m_date = date;
        ++m_days;
    }
    CityState& state = m_cities[city];
    if (date.compare(0, 4, state.date, 0, 4) != 0)
        state.year.fill(std::nullopt);
    state.date = date;
    ++state.observations;
}

void BoardState::deliverReading(std::size_t city, Reading reading, const std::string& text) {
    ++m_tally.today;
    CityState& state = m_cities[city];
    state.readings[static_cast<std::size_t>(reading)].value = {text, state.observations};
}

void BoardState::deliverDay(std::size_t city, Cell& cell, const std::string& text) {
    CityState& state = m_cities[city];
    const DayState& today = state.today;
    const bool isToday = &cell == &today.sky || &cell == &today.label || &cell == &today.picture;
    ++(isToday ? m_tally.today : m_tally.week);
    cell = {text, state.observations};
}

void BoardState::deliverHighs(std::size_t city, const std::vector<std::string>& highs, int from, int to) {
    ++m_tally.week;
    CityState& state = m_cities[city];
    std::copy_n(highs.begin(), std::min(highs.size(), daysInWeek), state.week.highs.begin());
    state.week.from = from;
    state.week.to = to;
    noteInYear(state, state.week.highs.back());
}

void BoardState::countHeadline() {
    ++m_tally.headline;
}

void BoardState::setHeadline(HeadlineState headline) {
    m_headline = std::move(headline);
}

void BoardState::noteInYear(CityState& city, const std::string& high) {
    if (city.date.empty())
        return;
    auto& slot = city.year[dates::weekOf(city.date)];
    const double value = std::strtod(high.c_str(), nullptr);
    slot = std::max(slot.value_or(value), value);
}
