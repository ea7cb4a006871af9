#ifndef WEATHER_HIGHSPLUGIN_H
#define WEATHER_HIGHSPLUGIN_H

#include "BoardPlugin.h"

/// Follows the seven highs of a city. A field of several values tells which of them were written; every write counts,
/// because equal highs on two days are two readings.
class HighsPlugin : public BoardPlugin {
public:
    HighsPlugin(BoardState& board, std::size_t city);

    using BoardPlugin::onDataChange;
    void onDataChange(char* fieldName, std::vector<std::string>& values, int from, int to) override;

private:
    BoardState& m_board;
    std::size_t m_city;
};

#endif
