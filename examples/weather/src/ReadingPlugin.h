#ifndef WEATHER_READINGPLUGIN_H
#define WEATHER_READINGPLUGIN_H

#include "BoardPlugin.h"

/// Follows one number of a city's latest observation, shown as the preset of its name says.
class ReadingPlugin : public BoardPlugin {
public:
    ReadingPlugin(BoardState& board, std::size_t city, Reading reading);

    using BoardPlugin::onDataChange;
    void onDataChange(char* fieldName, char* value) override;

private:
    BoardState& m_board;
    std::size_t m_city;
    Reading m_reading;
    int m_decimals = 0;
};

#endif
