#ifndef WEATHER_HEADLINEPLUGIN_H
#define WEATHER_HEADLINEPLUGIN_H

#include "BoardPlugin.h"

/// Follows the name of the headline's city, and writes it back into the tree in capitals.
class CaptionPlugin : public BoardPlugin {
public:
    explicit CaptionPlugin(BoardState& board);

    using BoardPlugin::onDataChange;
    void onDataChange(char* fieldName, char* value) override;

private:
    BoardState& m_board;
};

/// Follows the weather of the headline's city, and writes it back in the words of the operator's table.
class WordsPlugin : public BoardPlugin {
public:
    explicit WordsPlugin(BoardState& board);

    using BoardPlugin::onDataChange;
    void onDataChange(char* fieldName, char* value) override;

private:
    BoardState& m_board;
};

#endif
