#include <kor/Leaf.h>

namespace {

/// Makes its geometry as long as the value says: "InMin" to "InMax" become "OutMin" to "OutMax" pixels, and with
/// "Clamp" no more and no less. "Axis" is "x" for the width, else it is the height.
class BarPlugIn : public KorLeaf {
public:
    explicit BarPlugIn(const KorSettings& settings)
        : KorLeaf("DataBar", settings), m_property(setting("Axis") == "x" ? "GEOM*WIDTH" : "GEOM*HEIGHT") {
        setRanges(static_cast<float>(number("InMin", 0)), static_cast<float>(number("InMax", 100)),
                  static_cast<float>(number("OutMin", 0)), static_cast<float>(number("OutMax", 100)),
                  setting("Clamp") == "1" ? 1 : 0, -1);
    }

private:
    void show(const std::string& value) override {
        float length = 0;
        float unused = 0;
        updateAxes(value.c_str(), length, unused, unused, 0, true);
        setProperty(m_property, numbers::write(length));
    }

    std::string m_property;
};

} // namespace

korDataHandler* korCreatePlugin(const KorSettings& settings) {
    return new BarPlugIn(settings);
}
