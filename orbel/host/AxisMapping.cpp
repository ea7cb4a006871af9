#include <orbel/host/AxisMapping.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

/// Towards zero, kept within the range of int; 0 for what is no number.
int truncated(float value) {
    constexpr float limit = 2147483648.0F;
    if (std::isnan(value))
        return 0;
    if (value >= limit)
        return std::numeric_limits<int>::max();
    if (value <= -limit)
        return std::numeric_limits<int>::min();
    return static_cast<int>(value);
}

template <class Number>
Number clamped(Number value, Number low, Number high) {
    // Contract: the lower bound first, so that bounds in the wrong order give the upper one.
    if (value < low)
        value = low;
    if (value > high)
        value = high;
    return value;
}

} // namespace

void AxisMapping::setRanges(float inMin, float inMax, float outMin, float outMax, int axis) {
    constexpr float narrowest = 1e-7F;
    const bool isIdentity = (inMin == outMin && inMax == outMax) || std::fabs(inMax - inMin) < narrowest;
    for (int index = 0; index < 3; ++index) {
        if (axis != -1 && axis != index)
            continue;
        Range& range = m_ranges[index];
        range.inMin = inMin;
        range.inMax = inMax;
        range.isIdentity = isIdentity;
        if (isIdentity)
            continue;
        range.outMin = outMin;
        range.scale = (outMax - outMin) / (inMax - inMin);
    }
}

const AxisMapping::Range& AxisMapping::rangeOf(int axis) const {
    return m_ranges[m_separate != 0 && (axis == 1 || axis == 2) ? axis : 0];
}

float AxisMapping::map(float value, int axis) const {
    const Range& range = rangeOf(axis);
    if (m_clamp != 0)
        value = clamped(value, range.inMin, range.inMax);
    return range.isIdentity ? value : (value - range.inMin) * range.scale + range.outMin;
}

int AxisMapping::map(int value, int axis) const {
    const Range& range = rangeOf(axis);
    if (m_clamp != 0) {
        const int low = truncated(range.inMin);
        value = value < low ? low : std::min(value, truncated(range.inMax));
    }
    return range.isIdentity ? value : truncated((static_cast<float>(value) - range.inMin) * range.scale + range.outMin);
}

double AxisMapping::map(double value, int axis) const {
    const Range& range = rangeOf(axis);
    if (m_clamp != 0)
        value = clamped<double>(value, range.inMin, range.inMax);
    return range.isIdentity ? value
                            : (value - static_cast<double>(range.inMin)) * static_cast<double>(range.scale) +
                                  static_cast<double>(range.outMin);
}
