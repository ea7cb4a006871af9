#include "SvgDrawing.h"

#include <charconv>
#include <ostream>

namespace {

std::string number(double value) {
    // Never with a decimal comma, whatever locale a plug-in sets.
    char digits[32];
    return {digits, std::to_chars(digits, digits + sizeof digits, value, std::chars_format::general, 6).ptr};
}

std::string attribute(std::string_view name, std::string_view value) {
    return ' ' + std::string(name) + "=\"" + SvgDrawing::escaped(value) + '"';
}

std::string attribute(std::string_view name, double value) {
    return attribute(name, std::string_view(number(value)));
}

std::string attributes(const Box& box) {
    return attribute("x", box.x) + attribute("y", box.y) + attribute("width", box.width) +
           attribute("height", box.height);
}

std::string_view nameOf(SvgDrawing::Anchor anchor) {
    if (anchor == SvgDrawing::Anchor::Start)
        return "start";
    return anchor == SvgDrawing::Anchor::Middle ? "middle" : "end";
}

/// Control characters are no characters of XML, whatever they are written as.
bool isForbidden(char c) {
    return static_cast<unsigned char>(c) < 0x20 && c != '\t' && c != '\n' && c != '\r';
}

} // namespace

SvgDrawing::SvgDrawing(std::ostream& os, double width, double height, std::string_view title) : m_os(os) {
    m_os << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\""
         << attribute("width", width) << attribute("height", height)
         << attribute("viewBox", "0 0 " + number(width) + ' ' + number(height))
         << attribute("font-family", "Inter, 'Segoe UI', 'Helvetica Neue', Arial, 'DejaVu Sans', sans-serif") << ">\n"
         << "<title>" << escaped(title) << "</title>\n";
}

SvgDrawing::~SvgDrawing() {
    m_os << "</svg>\n";
}

void SvgDrawing::definePicture(std::string_view name, std::string_view viewBox, std::string_view content) {
    m_os << "<symbol" << attribute("id", "picture-" + std::string(name)) << attribute("viewBox", viewBox) << '>'
         << content << "</symbol>\n";
}

void SvgDrawing::picture(std::string_view name, const Box& box) {
    m_os << "<use" << attribute("href", "#picture-" + std::string(name)) << attributes(box) << "/>\n";
}

void SvgDrawing::rectangle(const Box& box, std::string_view fill, double radius) {
    m_os << "<rect" << attributes(box) << attribute("fill", fill);
    if (radius > 0)
        m_os << attribute("rx", radius);
    m_os << "/>\n";
}

void SvgDrawing::outline(const Box& box, std::string_view colour) {
    m_os << "<rect" << attributes(box) << attribute("fill", "none") << attribute("stroke", colour) << "/>\n";
}

void SvgDrawing::text(double x, double y, std::string_view text, const Font& font) {
    m_os << "<text" << attribute("x", x) << attribute("y", y) << attribute("font-size", font.size)
         << attribute("fill", font.colour);
    if (font.anchor != Anchor::Start)
        m_os << attribute("text-anchor", nameOf(font.anchor));
    if (font.isBold)
        m_os << attribute("font-weight", "600");
    m_os << '>' << escaped(text) << "</text>\n";
}

std::string SvgDrawing::escaped(std::string_view text) {
    std::string safe;
    for (const char c : text)
        switch (c) {
        case '&':
            safe += "&amp;";
            break;
        case '<':
            safe += "&lt;";
            break;
        case '>':
            safe += "&gt;";
            break;
        case '"':
            safe += "&quot;";
            break;
        default:
            safe += isForbidden(c) ? '?' : c;
        }
    return safe;
}
