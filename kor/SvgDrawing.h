#ifndef KOR_SVGDRAWING_H
#define KOR_SVGDRAWING_H

#include "Box.h"

#include <iosfwd>
#include <string>
#include <string_view>

/// Writes one drawing as SVG, an element a line, that shows without any other file. Lengths are in pixels, y grows
/// downwards. All texts may hold any character of UTF-8.
class SvgDrawing {
public:
    enum class Anchor { Start, Middle, End };

    struct Font {
        double size;
        std::string colour;
        Anchor anchor = Anchor::Start;
        bool isBold = false;
    };

    /// Writes the beginning.
    SvgDrawing(std::ostream& os, double width, double height, std::string_view title);
    SvgDrawing(const SvgDrawing&) = delete;
    SvgDrawing& operator=(const SvgDrawing&) = delete;
    /// Writes the end.
    ~SvgDrawing();

    /// A picture to be placed later, any number of times: the content of an svg element, taken as it is. The name
    /// holds letters, digits, ".", "-" and "_".
    void definePicture(std::string_view name, std::string_view viewBox, std::string_view content);
    void picture(std::string_view name, const Box& box);

    void rectangle(const Box& box, std::string_view fill, double radius = 0);
    /// The edge alone.
    void outline(const Box& box, std::string_view colour);
    /// The baseline begins, has its middle, or ends at this point.
    void text(double x, double y, std::string_view text, const Font& font);

    static std::string escaped(std::string_view text);

private:
    std::ostream& m_os;
};

#endif
