#ifndef WEATHER_DATEPLUGIN_H
#define WEATHER_DATEPLUGIN_H

#include "BoardPlugin.h"

/// Follows the date of a city's latest observation, which begins its day.
class DatePlugin : public BoardPlugin {
public:
    DatePlugin(BoardState& board, std::size_t city);

    using BoardPlugin::onDataChange;
    void onDataChange(char* fieldName, char* value) override;

private:
    BoardState& m_board;
    std::size_t m_city;
};

#endif
