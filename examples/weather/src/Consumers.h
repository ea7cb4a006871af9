#ifndef WEATHER_CONSUMERS_H
#define WEATHER_CONSUMERS_H

#include "DatePlugin.h"
#include "DayPlugin.h"
#include "HeadlinePlugin.h"
#include "HighsPlugin.h"
#include "ReadingPlugin.h"
#include "WeatherTree.h"

#include <memory>

/// All plug-ins of the board, each registered by the path of what it follows.
class Consumers {
public:
    Consumers(WeatherTree& tree, BoardState& board);

private:
    void addCity(BoardState& board, std::size_t city);
    void addToday(BoardState& board, std::size_t city, DataNode& today);
    void addWeek(BoardState& board, std::size_t city, DataNode& week);
    void addSkies(BoardState& board, std::size_t city, DayState& day, DataNode& root, int index);
    void add(std::unique_ptr<BoardPlugin> plugin, const std::string& path, DataNode& root, int index = 0);

    WeatherTree& m_tree;
    std::vector<std::unique_ptr<BoardPlugin>> m_plugins;
};

#endif
