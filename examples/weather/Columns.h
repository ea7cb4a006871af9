#ifndef WEATHER_COLUMNS_H
#define WEATHER_COLUMNS_H

#include <array>
#include <cstddef>
#include <string_view>

/// The columns of the file after the city's name, in the file's order. Their names are also the fields of the type Day.
enum class Column : std::size_t { Date, Precipitation, High, Low, Wind, Sky };

inline constexpr std::array<std::string_view, 6> columnNames = {"date",     "precipitation", "temp_max",
                                                                "temp_min", "wind",          "weather"};

inline constexpr std::size_t daysInWeek = 7;

#endif
