#ifndef KOR_SHAPES_H
#define KOR_SHAPES_H

#include "Box.h"

#include <string>
#include <variant>
#include <vector>

class Scene;

struct RectangleShape {
    Box box;
    std::string colour;
    double radius = 0;
    bool growsUp = false;

    bool operator==(const RectangleShape&) const = default;
};

/// One line of text: printable characters of UTF-8.
struct TextShape {
    enum class Align { Left, Middle, Right };

    /// Where the text begins, has its middle or ends.
    double x = 0;
    double top = 0;
    double size = 0;
    Align align = Align::Left;
    bool isBold = false;
    std::string colour;
    std::string text;

    /// Of the letters, which stand on it.
    double baseline() const { return top + 0.8 * size; }

    bool operator==(const TextShape&) const = default;
};

struct PictureShape {
    Box box;
    /// A file in the folder "pictures".
    std::string name;
    /// Of the sign that stands for it where it cannot be drawn.
    std::string colour;

    bool operator==(const PictureShape&) const = default;
};

using Shape = std::variant<RectangleShape, TextShape, PictureShape>;

/// What a frame shows: each shape covers those before it.
struct Frame {
    std::string title;
    double width = 0;
    double height = 0;
    std::string background;
    std::vector<Shape> shapes;

    bool operator==(const Frame&) const = default;
};

/// The scene as it is now. Positions and scales of containers multiply down, and what is below an invisible container
/// is left out; so is what has no size, no colour or no number for a place. A text has the size of its vertical scale,
/// and its lines are 1.2 sizes apart. A geometry of a type of its own shows the text it was given, else the picture.
Frame frameOf(Scene& scene);

#endif
