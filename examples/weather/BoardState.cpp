#include "BoardState.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>

namespace {

std::size_t weekOfYear(const std::string& date) {
    constexpr std::array<std::size_t, 13> before = {0, 0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334};
    std::size_t month = 1;
    std::size_t day = 1;
    std::from_chars(date.data() + 5, date.data() + 7, month);
    std::from_chars(date.data() + 8, date.data() + 10, day);
    return (before[month] + day - 1) / daysInWeek;
}

} // namespace

BoardState::BoardState(const std::vector<std::string>& cityNames) : m_cities(cityNames.size()) {
    for (std::size_t city = 0; city < cityNames.size(); ++city)
        m_cities[city].name = cityNames[city];
}

void BoardState::deliver(std::size_t city, Column column, const std::string& text, bool changed) {
    m_tally.count(changed);
    CityState& state = m_cities[city];
    if (column == Column::Date)
        deliverDate(state, text);
    state.cells[static_cast<std::size_t>(column)] = {text, changed};
    if (column == Column::High)
        noteInYear(state, text);
}

void BoardState::deliverHighs(std::size_t city, int from, int to, const std::vector<std::string>& texts, bool changed) {
    m_tally.count(changed);
    Week& week = m_cities[city].week;
    week.from = from;
    week.to = to;
    week.changed = changed;
    std::copy(texts.begin(), texts.end(), week.highs.begin() + from);
}

void BoardState::deliverSky(std::size_t city, std::size_t day, const std::string& text, bool changed) {
    m_tally.count(changed);
    m_cities[city].week.skies[day] = {text, changed};
}

void BoardState::setHeadline(HeadlineState headline) {
    m_headline = std::move(headline);
}

void BoardState::deliverDate(CityState& city, const std::string& date) {
    if (date != m_date) {
        m_date = date;
        ++m_days;
    }
    if (date.compare(0, 4, city.cell(Column::Date).text, 0, 4) != 0)
        city.year.fill(std::nullopt);
}

void BoardState::noteInYear(CityState& city, const std::string& high) {
    auto& slot = city.year[weekOfYear(city.cell(Column::Date).text)];
    const double value = std::strtod(high.c_str(), nullptr);
    slot = std::max(slot.value_or(value), value);
}
