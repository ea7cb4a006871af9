#include "ReadingPlugin.h"

#include "Presets.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

ReadingPlugin::ReadingPlugin(BoardState& board, std::size_t city, Reading reading)
    : BoardPlugin("WeatherReading"), m_board(board), m_city(city), m_reading(reading) {
    // Only real changes matter here. Asked for before registering, because the field compares texts from then on.
    setNotifyOnValueChange(1);
    const Preset preset(getPluginName(), std::string(readingNames[static_cast<std::size_t>(reading)]));
    m_decimals = std::clamp(static_cast<int>(preset.number("Decimals")), 0, 6);
    m_board.describe(city, reading, preset.text("Label"), preset.text("Unit"));
}

void ReadingPlugin::onDataChange(char* /*fieldName*/, char* value) {
    char text[400];
    std::snprintf(text, sizeof text, "%.*f", m_decimals, std::strtod(value, nullptr));
    m_board.deliverReading(m_city, m_reading, text);
}
