#include <kor/Leaf.h>

namespace {

/// Moves its container to the value: two numbers "x y", or with "Axis" one number for "x" or "y". Each axis has a range
/// of its own: "XInMin" to "XInMax" become "XOutMin" to "XOutMax", and so for Y; "Clamp" keeps to them.
class PositionPlugIn : public KorLeaf {
public:
    explicit PositionPlugIn(const KorSettings& settings) : KorLeaf("DataPosition", settings) {
        setSeparate(1);
        setAxis("X", 0);
        setAxis("Y", 1);
    }

private:
    void setAxis(const std::string& name, int axis) {
        const auto inMin = static_cast<float>(number(name + "InMin", 0));
        const auto inMax = static_cast<float>(number(name + "InMax", 0));
        setRanges(inMin, inMax, static_cast<float>(number(name + "OutMin", inMin)),
                  static_cast<float>(number(name + "OutMax", inMax)), setting("Clamp") == "1" ? 1 : 0, axis);
    }

    void show(const std::string& value) override {
        const std::string axis = setting("Axis");
        const int mode = axis == "x" ? 0 : axis == "y" ? 1 : 3;
        updateAxes(value.c_str(), m_x, m_y, m_z, mode, false);
        if (mode != 1)
            setProperty("TRANSFORMATION*POSITION*X", numbers::write(m_x));
        if (mode != 0)
            setProperty("TRANSFORMATION*POSITION*Y", numbers::write(m_y));
    }

    float m_x = 0;
    float m_y = 0;
    float m_z = 0;
};

} // namespace

korDataHandler* korCreatePlugin(const KorSettings& settings) {
    return new PositionPlugIn(settings);
}
