#include "Dates.h"

#include <algorithm>

namespace dates {

namespace {

constexpr std::array<std::size_t, 12> daysBefore = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334};

std::size_t twoDigits(std::string_view text, std::size_t at) {
    return static_cast<std::size_t>((text[at] - '0') * 10 + text[at + 1] - '0');
}

std::size_t monthOf(std::string_view date) {
    return twoDigits(date, 5) - 1;
}

std::size_t dayOf(std::string_view date) {
    return twoDigits(date, 8);
}

} // namespace

bool isDate(std::string_view text) {
    constexpr std::string_view shape = "dddd-dd-dd";
    const auto fits = [](char wanted, char c) { return wanted == 'd' ? c >= '0' && c <= '9' : c == wanted; };
    if (!std::equal(shape.begin(), shape.end(), text.begin(), text.end(), fits))
        return false;
    return monthOf(text) < months.size() && dayOf(text) >= 1 && dayOf(text) <= 31;
}

std::string shortForm(std::string_view date) {
    if (!isDate(date))
        return "";
    return std::to_string(dayOf(date)) + ' ' + std::string(months[monthOf(date)].substr(0, 3));
}

std::string longForm(std::string_view date) {
    if (!isDate(date))
        return "";
    return std::to_string(dayOf(date)) + ' ' + std::string(months[monthOf(date)]) + ' ' +
           std::string(date.substr(0, 4));
}

std::size_t weekOf(std::string_view date) {
    return (daysBefore[monthOf(date)] + dayOf(date) - 1) / 7;
}

double weeksBefore(std::size_t month) {
    return static_cast<double>(daysBefore[month]) / 7;
}

} // namespace dates
