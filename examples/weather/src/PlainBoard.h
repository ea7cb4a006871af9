#ifndef WEATHER_PLAINBOARD_H
#define WEATHER_PLAINBOARD_H

#include "BoardState.h"

#include <iosfwd>

/// One line per city, without escape codes.
void printSnapshot(std::ostream& os, const BoardState& board, std::size_t totalDays);

#endif
