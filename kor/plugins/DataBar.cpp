#include <kor/Leaf.h>

#include <algorithm>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace {

/// Makes its geometry as long as the value says: "InMin" to "InMax" become "OutMin" to "OutMax" pixels, and with
/// "Clamp" no more and no less. "Axis" is "x" for the width, else it is the height. "Colours", separated by blanks,
/// share the range from "InMin" to "InMax" evenly among them.
class BarPlugIn : public KorLeaf {
public:
    explicit BarPlugIn(const KorSettings& settings)
        : KorLeaf("DataBar", settings), m_property(setting("Axis") == "x" ? "GEOM*WIDTH" : "GEOM*HEIGHT") {
        setRanges(static_cast<float>(number("InMin", 0)), static_cast<float>(number("InMax", 100)),
                  static_cast<float>(number("OutMin", 0)), static_cast<float>(number("OutMax", 100)),
                  setting("Clamp") == "1" ? 1 : 0, -1);
        std::istringstream colours(setting("Colours"));
        m_colours.assign(std::istream_iterator<std::string>(colours), {});
    }

private:
    void show(const std::string& value) override {
        float length = 0;
        float unused = 0;
        updateAxes(value.c_str(), length, unused, unused, 0, true);
        setProperty(m_property, numbers::write(length));
        if (const auto read = numbers::read(value); read && !m_colours.empty())
            setProperty("GEOM*COLOUR", m_colours[colourOf(*read)]);
    }

    std::size_t colourOf(double value) const {
        const double low = number("InMin", 0);
        const double share = (value - low) / (number("InMax", 100) - low);
        const double last = static_cast<double>(m_colours.size() - 1);
        // The comparison also catches a range without a width.
        return share > 0 ? static_cast<std::size_t>(std::min(share * (last + 1), last)) : 0;
    }

    std::string m_property;
    std::vector<std::string> m_colours;
};

} // namespace

korDataHandler* korCreatePlugin(const KorSettings& settings) {
    return new BarPlugIn(settings);
}
