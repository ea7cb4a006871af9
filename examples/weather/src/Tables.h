#ifndef WEATHER_TABLES_H
#define WEATHER_TABLES_H

#include <string>

/// The conversion tables of the operator's folder: weather to a label, weather to a file in the folder pictures.
inline constexpr const char* labelTable = "WeatherLabels";
inline constexpr const char* pictureTable = "WeatherPictures";

/// What a conversion table makes of a text, without a tree: empty when there is neither entry nor default.
std::string convert(const std::string& table, const std::string& text);

#endif
