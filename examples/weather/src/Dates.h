#ifndef WEATHER_DATES_H
#define WEATHER_DATES_H

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

/// Dates are texts of the form 2015-12-31.
namespace dates {

inline constexpr std::array<std::string_view, 12> months = {"January",   "February", "March",    "April",
                                                            "May",       "June",     "July",     "August",
                                                            "September", "October",  "November", "December"};

bool isDate(std::string_view text);

/// "31 Dec" and "31 December 2015"; empty when the text is no date.
std::string shortForm(std::string_view date);
std::string longForm(std::string_view date);

/// The week of the year, from 0, in which a date lies; the first begins on 1 January.
std::size_t weekOf(std::string_view date);
/// How many weeks of the year have passed when a month begins.
double weeksBefore(std::size_t month);

} // namespace dates

#endif
