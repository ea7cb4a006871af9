#include "Shapes.h"

#include "Scene.h"
#include "Utf8.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>

namespace {

/// Where the children of a container are.
struct Transform {
    double x = 0;
    double y = 0;
    double scaleX = 1;
    double scaleY = 1;
};

Transform below(const Transform& above, const Container& container) {
    return {above.x + above.scaleX * container.x, above.y + above.scaleY * container.y, above.scaleX * container.scaleX,
            above.scaleY * container.scaleY};
}

/// Characters that control a terminal or that XML forbids.
bool isPrintable(char32_t character) {
    const bool isControl = character < 0x20 || (character >= 0x7f && character < 0xa0);
    return !isControl && character != 0xfffe && character != 0xffff;
}

/// Bytes that are no UTF-8 are shown as question marks.
std::string printable(std::string_view text) {
    auto characters = utf8::decode(text);
    if (!characters)
        characters.emplace(text.begin(), text.end());
    for (char32_t& character : *characters)
        if (character > 0x10ffff)
            character = U'?';
        else if (!isPrintable(character))
            character = U' ';
    return utf8::encode(*characters);
}

std::vector<std::string> linesOf(std::string_view text) {
    std::vector<std::string> lines;
    for (;;) {
        const std::size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        if (!line.empty() && line.back() == '\r')
            line.remove_suffix(1);
        lines.push_back(printable(line));
        if (end == std::string_view::npos)
            return lines;
        text.remove_prefix(end + 1);
    }
}

bool hasColour(const std::string& colour) {
    return !colour.empty() && colour != "none";
}

TextShape::Align alignOf(const Geometry& geometry) {
    if (geometry.align == "left")
        return TextShape::Align::Left;
    return geometry.align == "middle" ? TextShape::Align::Middle : TextShape::Align::Right;
}

double shareBefore(TextShape::Align align) {
    if (align == TextShape::Align::Left)
        return 0;
    return align == TextShape::Align::Middle ? 0.5 : 1;
}

/// Mirrored by a negative scale, a box lies on the other side of its position.
Box boxOf(const Geometry& geometry, const Transform& at) {
    const double left = -shareBefore(alignOf(geometry)) * geometry.width;
    const double top = geometry.growsUp ? -geometry.height : 0;
    const double fromX = at.x + at.scaleX * left;
    const double fromY = at.y + at.scaleY * top;
    const double toX = fromX + at.scaleX * geometry.width;
    const double toY = fromY + at.scaleY * geometry.height;
    return {std::min(fromX, toX), std::min(fromY, toY), std::abs(toX - fromX), std::abs(toY - fromY)};
}

bool isDrawable(const Box& box) {
    return std::isfinite(box.x) && std::isfinite(box.y) && std::isfinite(box.width) && std::isfinite(box.height) &&
           box.width > 0 && box.height > 0;
}

class Collector {
public:
    explicit Collector(std::vector<Shape>& shapes) : m_shapes(shapes) {}

    void add(const Geometry& geometry, const Transform& at) {
        if (geometry.type == "POLYGON")
            addRectangle(geometry, at);
        else if (geometry.type == "TEXT" || (geometry.type != "IMAGE" && !geometry.text.empty()))
            addText(geometry, at);
        else
            addPicture(geometry, at);
    }

private:
    void addRectangle(const Geometry& geometry, const Transform& at) {
        const Box box = boxOf(geometry, at);
        const double radius = geometry.radius * std::min(std::abs(at.scaleX), std::abs(at.scaleY));
        // A negative height of what grows up is a value below zero: no bar.
        if (isDrawable(box) && hasColour(geometry.colour) && geometry.width > 0 && geometry.height > 0)
            m_shapes.emplace_back(
                RectangleShape{box, geometry.colour, std::isfinite(radius) ? radius : 0, geometry.growsUp});
    }

    void addText(const Geometry& geometry, const Transform& at) {
        TextShape shape;
        shape.x = at.x;
        shape.top = at.y;
        shape.size = geometry.fontSize * std::abs(at.scaleY);
        shape.align = alignOf(geometry);
        shape.isBold = geometry.isBold;
        shape.colour = geometry.colour;
        if (!isDrawable({shape.x, shape.top, 1, shape.size}) || at.scaleX == 0 || !hasColour(shape.colour))
            return;
        for (std::string& line : linesOf(geometry.text)) {
            shape.text = std::move(line);
            if (!shape.text.empty())
                m_shapes.emplace_back(shape);
            shape.top += 1.2 * shape.size;
        }
    }

    void addPicture(const Geometry& geometry, const Transform& at) {
        const Box box = boxOf(geometry, at);
        if (isDrawable(box) && geometry.width > 0 && geometry.height > 0 && !geometry.picture.empty())
            m_shapes.emplace_back(PictureShape{box, printable(geometry.picture), geometry.colour});
    }

    std::vector<Shape>& m_shapes;
};

} // namespace

Frame frameOf(Scene& scene) {
    Frame frame{printable(scene.name), scene.width, scene.height, scene.background, {}};
    Collector collector(frame.shapes);
    // Scenes may be deeper than calls can be.
    std::vector<std::pair<int, Transform>> open;
    const auto addOpen = [&](const std::vector<int>& ids, const Transform& above) {
        for (auto id = ids.rbegin(); id != ids.rend(); ++id)
            open.emplace_back(*id, above);
    };
    addOpen(scene.tops(), {});
    while (!open.empty()) {
        const auto [id, above] = open.back();
        open.pop_back();
        const Container& container = *scene.container(id);
        if (!container.isVisible)
            continue;
        const Transform at = below(above, container);
        if (container.geometry)
            collector.add(*container.geometry, at);
        addOpen(container.children, at);
    }
    return frame;
}
