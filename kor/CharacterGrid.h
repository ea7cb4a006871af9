#ifndef KOR_CHARACTERGRID_H
#define KOR_CHARACTERGRID_H

#include "Shapes.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// A frame in characters, each shape where it is in the scene. Rectangles fill whole characters; those that grow up,
/// and lines thinner than a character, are as high as eighths of one. A text is as long as its letters are many,
/// whatever its size, and a picture is its name without the extension, in the middle of its box.
class CharacterGrid {
public:
    CharacterGrid(const Frame& frame, int columns, int rows);

    /// The lines without colours and blanks at their ends. A rectangle that something else lies on is a ground for that
    /// and not shown, unless it grows up.
    std::vector<std::string> plainLines() const;
    /// The lines with the escape codes of their colours, all equally long. Colours have the form "#rrggbb" or "#rgb";
    /// those of other forms are white, for the background black.
    std::vector<std::string> colouredLines() const;

private:
    using Colour = std::uint32_t;

    struct Cell {
        char32_t character = U' ';
        Colour colour = 0;
        Colour ground = 0;
        bool isBold = false;
        /// How many eighths the block of a rectangle fills here.
        int eighths = 0;
        /// The rectangle of that block.
        std::size_t owner = 0;
    };

    struct Rectangle {
        bool growsUp;
        bool isGround;
    };

    /// What a text or sign looks like.
    struct Style {
        Colour colour;
        bool isBold;
    };

    void draw(const RectangleShape& shape);
    void draw(const TextShape& shape);
    void draw(const PictureShape& shape);
    void fill(int row, int fromColumn, int toColumn, int eighths, Colour colour);
    void write(int row, int column, std::u32string_view text, const Style& style);
    void cover(const Cell& cell);

    double columnOf(double x) const { return x * m_columns / m_width; }
    double rowOf(double y) const { return y * m_rows / m_height; }
    Cell& at(int row, int column);
    const Cell& at(int row, int column) const;
    char32_t plainCharacter(const Cell& cell) const;

    int m_columns;
    int m_rows;
    double m_width;
    double m_height;
    std::vector<Cell> m_cells;
    /// The first stands for none.
    std::vector<Rectangle> m_rectangles{{false, true}};
};

#endif
