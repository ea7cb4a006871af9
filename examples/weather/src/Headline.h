#ifndef WEATHER_HEADLINE_H
#define WEATHER_HEADLINE_H

#include "Columns.h"
#include "WeatherTree.h"

#include <array>
#include <string>

/// The Headline of the tree: its fields follow one city, and its labels are expressions over its fields.
class Headline {
public:
    explicit Headline(WeatherTree& tree);

    void follow(const std::string& city);

    std::string text();
    std::array<std::string, daysInWeek> week();

private:
    WeatherTree& m_tree;
    DataExpression m_text;
    DataExpression m_dayOfWeek;
};

#endif
