#ifndef WEATHER_SVGSTYLE_H
#define WEATHER_SVGSTYLE_H

#include "Presets.h"

#include <array>
#include <string>

/// The colours of a drawing, from the preset of this name.
struct SvgStyle {
    explicit SvgStyle(const std::string& name);

    /// The colour of a bar that is filled to this part, 0 to 1.
    const std::string& bar(double filled) const;

    std::string page;
    std::string card;
    std::string line;
    std::string title;
    std::string text;
    std::string quiet;
    std::array<std::string, 5> bars;
};

#endif
