#ifndef WEATHER_LIVEBOARD_H
#define WEATHER_LIVEBOARD_H

#include "BarScale.h"
#include "BoardState.h"
#include "StyledLine.h"

#include <ostream>
#include <vector>

/// Draws the board in place: each frame covers the one before. Hides the cursor as long as it lives.
class LiveBoard {
public:
    LiveBoard(std::ostream& os, const BoardState& board, const BarScale& scale, std::size_t totalDays);
    ~LiveBoard();

    LiveBoard(const LiveBoard&) = delete;
    LiveBoard& operator=(const LiveBoard&) = delete;

    static constexpr int columns = 78;
    static int rowsFor(std::size_t cities);

    void draw();

private:
    void addTop();
    void addProgress();
    void addHeadline();
    void addCity(const CityState& city);
    void addTally();
    void addRule(std::string_view left, std::string_view title, std::string_view right);
    void addRow(StyledLine content);

    std::ostream& m_os;
    const BoardState& m_board;
    const BarScale& m_scale;
    std::size_t m_totalDays;
    std::vector<StyledLine> m_lines;
    std::size_t m_drawnLines = 0;
};

#endif
