#ifndef ORBEL_HOST_AXISMAPPING_H
#define ORBEL_HOST_AXISMAPPING_H

/// Maps numbers of a range onto another range, for up to three axes. Axes are 0, 1 and 2; -1 stands for all of them
/// when ranges are set, and for the first when values are mapped.
class AxisMapping {
public:
    /// Whether numbers are kept within the range they come from before they are mapped.
    void setClamp(int clamp) { m_clamp = clamp; }
    /// Whether each axis has a range of its own; else all use that of axis 0.
    void setSeparate(int separate) { m_separate = separate; }
    /// Maps inMin..inMax onto outMin..outMax. Ranges narrower than 1e-7 leave numbers as they are.
    void setRanges(float inMin, float inMax, float outMin, float outMax, int axis);

    /// The number as the range of the axis maps it.
    float map(float value, int axis) const;
    int map(int value, int axis) const;
    double map(double value, int axis) const;

private:
    struct Range {
        float scale = 0;
        float inMin = 0;
        float inMax = 0;
        float outMin = 0;
        bool isIdentity = true;
    };

    const Range& rangeOf(int axis) const;

    int m_clamp = 0;
    int m_separate = 0;
    Range m_ranges[3];
};

#endif
