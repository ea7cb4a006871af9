#include "SvgStyle.h"

#include <algorithm>

SvgStyle::SvgStyle(const std::string& name) {
    const Preset preset("WeatherDrawing", name);
    page = preset.text("Page");
    card = preset.text("Card");
    line = preset.text("Line");
    title = preset.text("Title");
    text = preset.text("Text");
    quiet = preset.text("Quiet");
    bars = {preset.text("Frosty"), preset.text("Cold"), preset.text("Mild"), preset.text("Warm"), preset.text("Hot")};
}

const std::string& SvgStyle::bar(double filled) const {
    const auto step = static_cast<std::size_t>(filled * static_cast<double>(bars.size()));
    return bars[std::min(step, bars.size() - 1)];
}
