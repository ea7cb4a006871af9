#ifndef WEATHER_WEATHERCSV_H
#define WEATHER_WEATHERCSV_H

#include "Columns.h"

#include <array>
#include <stdexcept>
#include <string>
#include <vector>

struct Observation {
    std::size_t city;
    std::array<std::string, columnNames.size()> texts;

    const std::string& text(Column column) const { return texts[static_cast<std::size_t>(column)]; }
};

struct Weather {
    std::vector<std::string> cities;
    /// In order of dates; the observations of one day in order of cities.
    std::vector<std::vector<Observation>> days;
};

/// What is wrong with the file, in one line that names the file and, where there is one, the line.
class WeatherCsvError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

Weather readWeatherCsv(const std::string& path);

#endif
