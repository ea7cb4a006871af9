#ifndef WEATHER_RENDERINGS_H
#define WEATHER_RENDERINGS_H

#include "WeatherTree.h"

#include <ostream>

/// The tree in every form the library can print it, each under a heading.
void printRenderings(std::ostream& os, WeatherTree& tree, const std::vector<std::string>& cities);

#endif
