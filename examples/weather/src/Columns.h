#ifndef WEATHER_COLUMNS_H
#define WEATHER_COLUMNS_H

#include <array>
#include <cstddef>
#include <string_view>

/// The columns of the file after the city's name, in the file's order. Their names are also the fields of the type Day.
enum class Column : std::size_t { Date, Precipitation, High, Low, Wind, Sky };

inline constexpr std::array<std::string_view, 6> columnNames = {"date",     "precipitation", "temp_max",
                                                                "temp_min", "wind",          "weather"};

/// The columns that are numbers, in the order in which boards show them. Their names are those of the presets too.
enum class Reading : std::size_t { High, Low, Precipitation, Wind };

inline constexpr std::array<std::string_view, 4> readingNames = {"temp_max", "temp_min", "precipitation", "wind"};

inline constexpr std::size_t daysInWeek = 7;

#endif
