#ifndef WEATHER_SVGBOARD_H
#define WEATHER_SVGBOARD_H

#include "BarScale.h"
#include "BoardState.h"
#include "Pictures.h"
#include "SvgStyle.h"

#include <iosfwd>

/// Draws the board as one picture: a card for each city, with its latest readings, its last seven days and the weeks
/// of its year.
class SvgBoard {
public:
    SvgBoard(const BoardState& board, const Pictures& pictures, const BarScale& scale, const SvgStyle& style);

    void draw(std::ostream& os, std::size_t totalDays) const;

private:
    const BoardState& m_board;
    const Pictures& m_pictures;
    const BarScale& m_scale;
    const SvgStyle& m_style;
};

#endif
