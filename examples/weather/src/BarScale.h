#ifndef WEATHER_BARSCALE_H
#define WEATHER_BARSCALE_H

#include "InputError.h"
#include "Presets.h"

#include <algorithm>

/// From the temperature at which a bar is empty to the one at which it is full.
class BarScale {
public:
    explicit BarScale(const Preset& preset) : m_empty(preset.number("Empty")), m_full(preset.number("Full")) {
        if (m_full <= m_empty)
            throw InputError("QX_PreSets.csv: WeatherChart needs a Full above Empty");
    }

    double empty() const { return m_empty; }
    double full() const { return m_full; }

    /// How much of the bar is filled, 0 to 1.
    double filled(double celsius) const { return std::clamp((celsius - m_empty) / (m_full - m_empty), 0.0, 1.0); }

private:
    double m_empty;
    double m_full;
};

#endif
