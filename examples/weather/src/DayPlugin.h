#ifndef WEATHER_DAYPLUGIN_H
#define WEATHER_DAYPLUGIN_H

#include "BoardPlugin.h"

/// Follows one text of a day, as it is or as a conversion table has it, into a cell of the board.
class DayPlugin : public BoardPlugin {
public:
    /// The cell belongs to the city. Without a table the text stays as it is.
    DayPlugin(BoardState& board, std::size_t city, Cell& cell, const std::string& table);

    using BoardPlugin::onDataChange;
    void onDataChange(char* fieldName, char* value) override;

private:
    BoardState& m_board;
    std::size_t m_city;
    Cell& m_cell;
};

#endif
