#include "SvgBoard.h"

#include "Dates.h"
#include "SvgDrawing.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace {

using Anchor = SvgDrawing::Anchor;

constexpr double pageWidth = 1200;
constexpr double margin = 40;
constexpr double headHeight = 112;
constexpr double footHeight = 48;
constexpr double cardHeight = 404;
constexpr double cardGap = 24;
constexpr double padding = 28;

// Within a card, from its left edge.
constexpr double leftWidth = 264;
constexpr double chartLeft = 356;
constexpr double chartWidth = pageWidth - 2 * margin - chartLeft - padding;
constexpr double dayWidth = chartWidth / daysInWeek;
constexpr double weekWidth = chartWidth / 53;

// Within a card, from its top.
constexpr double nameLine = 44;
constexpr double ruleLine = 62;
constexpr double dayLine = 92;
constexpr double daySkies = 100;
constexpr double dayLabelLine = 166;
constexpr double weekGround = 264;
constexpr double yearGround = 358;
constexpr double monthLine = 380;

constexpr double weekBarHeight = 64;
constexpr double yearBarHeight = 56;

std::string plainNumber(double value) {
    char digits[32];
    std::snprintf(digits, sizeof digits, "%g", value);
    return digits;
}

/// Draws one city into its card.
class Card {
public:
    Card(SvgDrawing& drawing, const CityState& city, const Pictures& pictures, const BarScale& scale,
         const SvgStyle& style, double top)
        : m_drawing(drawing), m_city(city), m_pictures(pictures), m_scale(scale), m_style(style), m_top(top) {}

    void draw() const {
        drawFrame();
        if (m_city.observations == 0)
            return;
        drawToday();
        for (std::size_t day = 0; day < daysInWeek; ++day)
            drawDay(day);
        drawYear();
    }

private:
    double left() const { return margin + padding; }
    double chart() const { return margin + chartLeft; }

    void drawFrame() const {
        const double width = pageWidth - 2 * margin;
        m_drawing.rectangle({margin, m_top, width, cardHeight}, m_style.card, 14);
        m_drawing.text(left(), m_top + nameLine, m_city.name, {24, m_style.title, Anchor::Start, true});
        m_drawing.text(margin + width - padding, m_top + nameLine, dates::longForm(m_city.date),
                       {15, m_style.quiet, Anchor::End});
        m_drawing.line(left(), m_top + ruleLine, margin + width - padding, m_top + ruleLine, m_style.line);
    }

    void drawToday() const {
        drawPicture(m_city.today.picture.text, {left(), m_top + 84, 92, 92});
        m_drawing.text(left() + 112, m_top + 138, m_city.today.label.text, {22, m_style.title, Anchor::Start, true});
        double line = m_top + 214;
        for (const ReadingState& reading : m_city.readings) {
            m_drawing.text(left(), line, reading.label, {16, m_style.quiet});
            m_drawing.text(left() + leftWidth - 42, line, reading.value.text, {20, m_style.text, Anchor::End, true});
            m_drawing.text(left() + leftWidth - 34, line, reading.unit, {16, m_style.quiet});
            line += 34;
        }
        m_drawing.text(left(), m_top + monthLine, "Weeks of " + m_city.date.substr(0, 4), {14, m_style.quiet});
    }

    void drawDay(std::size_t index) const {
        const DayState& day = m_city.week.days[index];
        const double middle = chart() + dayWidth * (static_cast<double>(index) + 0.5);
        drawPicture(day.picture.text, {middle - 24, m_top + daySkies, 48, 48});
        drawText(middle, dayLine, dates::shortForm(day.date.text), {14, m_style.quiet, Anchor::Middle});
        drawText(middle, dayLabelLine, day.label.text, {14, m_style.text, Anchor::Middle});
        const std::string& high = m_city.week.highs[index];
        if (isBlank(high))
            return;
        const double celsius = std::strtod(high.c_str(), nullptr);
        const double height = drawBar({middle - 28, weekGround, 56, weekBarHeight}, celsius, 5, "week");
        drawText(middle, weekGround - height - 7, high, {14, m_style.text, Anchor::Middle, true});
    }

    void drawYear() const {
        m_drawing.line(chart(), m_top + yearGround + 0.5, chart() + chartWidth, m_top + yearGround + 0.5, m_style.line);
        for (std::size_t week = 0; week < m_city.year.size(); ++week)
            if (const auto& celsius = m_city.year[week])
                drawBar({chart() + weekWidth * static_cast<double>(week) + 1, yearGround, weekWidth - 2, yearBarHeight},
                        *celsius, 2, "year");
        for (std::size_t month = 0; month < dates::months.size(); ++month)
            m_drawing.text(chart() + weekWidth * dates::weeksBefore(month) + 1, m_top + monthLine,
                           dates::months[month].substr(0, 3), {13, m_style.quiet});
    }

    /// A bar in the column that stands on `column.y` and is as high as a full bar. Returns its height.
    double drawBar(SvgDrawing::Box column, double celsius, double radius, std::string_view kind) const {
        const double filled = m_scale.filled(celsius);
        const double height = std::max(1.0, filled * column.height);
        m_drawing.rectangle({column.x, m_top + column.y - height, column.width, height}, m_style.bar(filled), radius,
                            kind);
        return height;
    }

    void drawText(double x, double line, const std::string& text, const SvgDrawing::Font& font) const {
        if (!isBlank(text))
            m_drawing.text(x, m_top + line, text, font);
    }

    void drawPicture(const std::string& name, const SvgDrawing::Box& box) const {
        if (m_pictures.all().count(name) != 0)
            m_drawing.picture(name, box);
    }

    SvgDrawing& m_drawing;
    const CityState& m_city;
    const Pictures& m_pictures;
    const BarScale& m_scale;
    const SvgStyle& m_style;
    double m_top;
};

} // namespace

SvgBoard::SvgBoard(const BoardState& board, const Pictures& pictures, const BarScale& scale, const SvgStyle& style)
    : m_board(board), m_pictures(pictures), m_scale(scale), m_style(style) {}

void SvgBoard::draw(std::ostream& os, std::size_t totalDays) const {
    const auto cards = static_cast<double>(m_board.cities().size());
    const double height = headHeight + cards * (cardHeight + cardGap) + footHeight;
    SvgDrawing drawing(os, pageWidth, height, "Weather board");
    for (const auto& [name, picture] : m_pictures.all())
        drawing.definePicture(name, picture.viewBox, picture.content);
    drawing.rectangle({0, 0, pageWidth, height}, m_style.page);

    const double right = pageWidth - margin;
    drawing.text(margin, 60, "Weather board", {30, m_style.title, Anchor::Start, true});
    drawing.text(margin, 90, m_board.headline().text, {17, m_style.text});
    drawing.text(right, 60, dates::longForm(m_board.date()), {20, m_style.title, Anchor::End, true});
    drawing.text(right, 90, "day " + std::to_string(m_board.days()) + " of " + std::to_string(totalDays),
                 {15, m_style.quiet, Anchor::End});

    double top = headHeight;
    for (const CityState& city : m_board.cities()) {
        Card(drawing, city, m_pictures, m_scale, m_style, top).draw();
        top += cardHeight + cardGap;
    }
    drawing.text(margin, top + 6,
                 "Bars: highest temperature of the day and of the week, empty at " + plainNumber(m_scale.empty()) +
                     " and full at " + plainNumber(m_scale.full()) + ' ' +
                     m_board.cities().front().reading(Reading::High).unit,
                 {14, m_style.quiet});
}
