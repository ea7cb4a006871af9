#include "CharacterGrid.h"

#include "Utf8.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <string_view>

namespace {

constexpr int eighthsPerRow = 8;
constexpr std::uint32_t black = 0x000000;
constexpr std::uint32_t white = 0xffffff;

/// Of what is beyond all edges it is enough to know that it is.
int whole(double value) {
    constexpr double far = 1e6;
    return static_cast<int>(std::clamp(value, -far, far));
}

int nearest(double value) {
    return whole(std::floor(value + 0.5));
}

char32_t blockOf(int eighths) {
    return eighths == 0 ? U' ' : static_cast<char32_t>(U'▁' + static_cast<char32_t>(eighths - 1));
}

std::uint32_t colourOf(std::string_view text, std::uint32_t fallback) {
    if (text.size() != 7 && text.size() != 4)
        return fallback;
    std::string digits;
    for (const char digit : text.substr(1))
        digits.append(text.size() == 4 ? 2 : 1, digit);
    std::uint32_t colour = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), colour, 16);
    return text.front() == '#' && error == std::errc() && end == digits.data() + digits.size() ? colour : fallback;
}

std::string numbersOf(std::uint32_t colour) {
    return std::to_string(colour >> 16) + ';' + std::to_string(colour >> 8 & 0xff) + ';' +
           std::to_string(colour & 0xff);
}

std::u32string charactersOf(std::string_view text) {
    return utf8::decode(text).value_or(std::u32string());
}

} // namespace

CharacterGrid::CharacterGrid(const Frame& frame, int columns, int rows)
    : m_columns(columns), m_rows(rows), m_width(frame.width), m_height(frame.height),
      m_cells(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows)) {
    for (Cell& cell : m_cells)
        cell.ground = colourOf(frame.background, black);
    for (const Shape& shape : frame.shapes)
        std::visit([this](const auto& drawn) { draw(drawn); }, shape);
}

void CharacterGrid::draw(const RectangleShape& shape) {
    const Box& box = shape.box;
    const int left = nearest(columnOf(box.x));
    const int right = std::max(left + 1, nearest(columnOf(box.x + box.width)));
    const int top = nearest(rowOf(box.y));
    int bottom = nearest(rowOf(box.y + box.height));
    int eighths = (bottom - top) * eighthsPerRow;
    // A thin line must not become a whole row where the edge of a row happens to be near.
    const bool isThin = eighths == 0 || rowOf(box.height) < 0.5;
    if (shape.growsUp || isThin)
        eighths = std::max(1, nearest(rowOf(box.height) * eighthsPerRow));
    if (!shape.growsUp && isThin)
        bottom = whole(std::floor(rowOf(box.y))) + 1;
    m_rectangles.push_back({shape.growsUp, false});
    const int lowest = std::min(bottom, m_rows) - 1;
    const int highest = std::max(0, bottom - (eighths + eighthsPerRow - 1) / eighthsPerRow);
    for (int row = highest; row <= lowest; ++row)
        fill(row, left, right, std::min(eighthsPerRow, eighths - (bottom - 1 - row) * eighthsPerRow),
             colourOf(shape.colour, white));
}

void CharacterGrid::draw(const TextShape& shape) {
    const std::u32string characters = charactersOf(shape.text);
    const auto length = static_cast<double>(characters.size());
    double start = columnOf(shape.x);
    if (shape.align != TextShape::Align::Left)
        start -= shape.align == TextShape::Align::Middle ? length / 2 : length;
    write(whole(std::floor(rowOf(shape.top + shape.size / 2))), nearest(start), characters,
          {colourOf(shape.colour, white), shape.isBold});
}

void CharacterGrid::draw(const PictureShape& shape) {
    constexpr int shortest = 3;
    const Box& box = shape.box;
    const int room = std::max(shortest, nearest(columnOf(box.width)));
    const std::u32string sign =
        charactersOf(shape.name.substr(0, shape.name.rfind('.'))).substr(0, static_cast<std::size_t>(room));
    const double start = columnOf(box.x + box.width / 2) - static_cast<double>(sign.size()) / 2;
    write(whole(std::floor(rowOf(box.y + box.height / 2))), nearest(start), sign,
          {colourOf(shape.colour, white), false});
}

void CharacterGrid::fill(int row, int fromColumn, int toColumn, int eighths, Colour colour) {
    const int end = std::min(toColumn, m_columns);
    for (int column = std::max(0, fromColumn); column < end; ++column) {
        Cell& cell = at(row, column);
        cover(cell);
        // Behind the upper part of a block shows what fills most of the cell so far.
        if (cell.eighths > eighthsPerRow / 2)
            cell.ground = cell.colour;
        cell.character = U' ';
        cell.isBold = false;
        cell.colour = colour;
        cell.eighths = eighths;
        cell.owner = m_rectangles.size() - 1;
    }
}

void CharacterGrid::write(int row, int column, std::u32string_view text, const Style& style) {
    if (row < 0 || row >= m_rows)
        return;
    for (const char32_t character : text) {
        if (column >= m_columns)
            return;
        if (column++ < 0)
            continue;
        Cell& cell = at(row, column - 1);
        cover(cell);
        if (cell.eighths >= eighthsPerRow / 2)
            cell.ground = cell.colour;
        cell.character = character;
        cell.colour = style.colour;
        cell.isBold = style.isBold;
        cell.eighths = 0;
        cell.owner = 0;
    }
}

void CharacterGrid::cover(const Cell& cell) {
    m_rectangles[cell.owner].isGround = !m_rectangles[cell.owner].growsUp;
}

CharacterGrid::Cell& CharacterGrid::at(int row, int column) {
    return m_cells[static_cast<std::size_t>(row) * static_cast<std::size_t>(m_columns) +
                   static_cast<std::size_t>(column)];
}

const CharacterGrid::Cell& CharacterGrid::at(int row, int column) const {
    return m_cells[static_cast<std::size_t>(row) * static_cast<std::size_t>(m_columns) +
                   static_cast<std::size_t>(column)];
}

char32_t CharacterGrid::plainCharacter(const Cell& cell) const {
    const bool isShown = cell.eighths > 0 && !m_rectangles[cell.owner].isGround;
    return isShown ? blockOf(cell.eighths) : cell.character;
}

std::vector<std::string> CharacterGrid::plainLines() const {
    std::vector<std::string> lines;
    for (int row = 0; row < m_rows; ++row) {
        std::u32string line;
        for (int column = 0; column < m_columns; ++column)
            line += plainCharacter(at(row, column));
        line.erase(line.find_last_not_of(U' ') + 1);
        lines.push_back(utf8::encode(line));
    }
    return lines;
}

std::vector<std::string> CharacterGrid::colouredLines() const {
    std::vector<std::string> lines;
    for (int row = 0; row < m_rows; ++row) {
        std::string line;
        std::string style;
        for (int column = 0; column < m_columns; ++column) {
            const Cell& cell = at(row, column);
            const bool isFull = cell.eighths == eighthsPerRow;
            std::string wanted = "\x1b[0;48;2;" + numbersOf(isFull ? cell.colour : cell.ground);
            const char32_t shown = isFull || cell.eighths == 0 ? cell.character : blockOf(cell.eighths);
            if (shown != U' ')
                wanted += ";38;2;" + numbersOf(cell.colour) + (cell.isBold ? ";1" : "");
            wanted += 'm';
            if (wanted != style)
                line += wanted;
            style = std::move(wanted);
            line += utf8::encode({&shown, 1});
        }
        lines.push_back(line + "\x1b[0m");
    }
    return lines;
}
