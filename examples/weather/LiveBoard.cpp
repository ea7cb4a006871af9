#include "LiveBoard.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace {

constexpr std::size_t width = LiveBoard::columns;
constexpr std::size_t inner = width - 4;
constexpr int rowsPerCity = 8;
constexpr int otherRows = 6;

constexpr std::size_t chartColumn = 21;
constexpr long storeys = 2;
constexpr long eighthsPerStorey = 8;

namespace style {
constexpr std::string_view frame = "38;5;66";
constexpr std::string_view title = "1;38;5;231";
constexpr std::string_view label = "38;5;245";
constexpr std::string_view fresh = "1;38;5;231;48;5;24";
constexpr std::string_view freshGround = "48;5;24";
constexpr std::string_view settled = "38;5;252";
constexpr std::string_view progress = "38;5;43";
constexpr std::string_view rest = "38;5;238";
constexpr std::string_view changed = "1;38;5;43";
} // namespace style

/// Between these two the bars go from empty to full, and the colours from blue to red.
constexpr double coldest = -6;
constexpr double hottest = 38;

double warmth(double celsius) {
    return std::clamp((celsius - coldest) / (hottest - coldest), 0.0, 1.0);
}

std::string colourOf(double celsius) {
    constexpr std::array<int, 9> ramp = {27, 33, 39, 44, 78, 148, 220, 208, 196};
    const auto step = static_cast<std::size_t>(std::lround(warmth(celsius) * (ramp.size() - 1)));
    return "38;5;" + std::to_string(ramp[step]);
}

std::string_view skyColour(const std::string& sky) {
    if (sky == "sun")
        return "1;38;5;220";
    if (sky == "snow")
        return "1;38;5;195";
    return sky == "fog" ? "1;38;5;250" : "1;38;5;75";
}

void addSky(StyledLine& line, const Cell& sky, std::size_t columns) {
    std::string look(skyColour(sky.text));
    if (sky.changed)
        look.append(";").append(style::freshGround);
    if (!isBlank(sky.text))
        line.add(sky.text.substr(0, columns), look);
}

/// 0 to 8 eighths of a letter's height.
std::string_view bar(long eighths) {
    constexpr std::array<std::string_view, 9> bars = {" ", "▁", "▂", "▃", "▄", "▅", "▆", "▇", "█"};
    return bars[static_cast<std::size_t>(std::clamp(eighths, 0L, 8L))];
}

/// How high a bar stands in one storey, counted from the ground; each begins where the one below is full.
std::string_view block(double celsius, long storey) {
    const long height = std::max(1L, std::lround(warmth(celsius) * storeys * eighthsPerStorey));
    return bar(height - storey * eighthsPerStorey);
}

double celsiusOf(const std::string& text) {
    return std::strtod(text.c_str(), nullptr);
}

std::string rightAligned(const std::string& text, std::size_t columns) {
    return text.size() < columns ? std::string(columns - text.size(), ' ') + text : text.substr(0, columns);
}

void addReading(StyledLine& line, std::string_view label, const Cell& cell, std::string_view unit) {
    line.add(label, style::label).padTo(5).add(" ");
    line.add(rightAligned(cell.text, 6) + ' ' + std::string(unit) + ' ', cell.changed ? style::fresh : style::settled);
    line.padTo(chartColumn);
}

/// Seven days with their gaps are as wide as the weeks of a year below them.
template <class AddDay>
void addWeek(StyledLine& line, AddDay addDay) {
    for (std::size_t day = 0; day < daysInWeek; ++day) {
        line.padTo(chartColumn + day * 8);
        addDay(day);
    }
}

void addSkies(StyledLine& line, const Week& week) {
    addWeek(line, [&](std::size_t day) { addSky(line, week.skies[day], 7); });
}

void addWeekBars(StyledLine& line, const Week& week, long storey) {
    addWeek(line, [&](std::size_t day) {
        const std::string& high = week.highs[day];
        for (int column = 0; column < 5 && !isBlank(high); ++column)
            line.add(block(celsiusOf(high), storey), colourOf(celsiusOf(high)));
    });
}

void addHighs(StyledLine& line, const Week& week) {
    addWeek(line, [&](std::size_t day) {
        const bool fresh = week.changed && static_cast<int>(day) >= week.from && static_cast<int>(day) <= week.to;
        line.add(rightAligned(week.highs[day], 5), fresh ? style::title : style::settled);
    });
}

void addYear(StyledLine& line, const CityState& city, long storey) {
    for (const auto& celsius : city.year)
        if (celsius)
            line.add(block(*celsius, storey), colourOf(*celsius));
        else
            line.add(storey == 0 ? "·" : " ", style::rest);
}

void addMonths(StyledLine& line) {
    constexpr std::array<std::string_view, 12> months = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                         "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    for (std::size_t month = 0; month < months.size(); ++month)
        line.padTo(chartColumn + month * 53 / 12).add(months[month], style::label);
}

} // namespace

LiveBoard::LiveBoard(std::ostream& os, const BoardState& board, std::size_t totalDays)
    : m_os(os), m_board(board), m_totalDays(totalDays) {
    m_os << "\x1b[?25l";
}

LiveBoard::~LiveBoard() {
    m_os << "\x1b[0m\x1b[?25h" << std::flush;
}

int LiveBoard::rowsFor(std::size_t cities) {
    return otherRows + rowsPerCity * static_cast<int>(cities);
}

void LiveBoard::draw() {
    m_lines.clear();
    addTop();
    addProgress();
    addHeadline();
    for (const CityState& city : m_board.cities())
        addCity(city);
    addRule("├", "", "┤");
    addTally();
    addRule("╰", "", "╯");

    std::string frame;
    if (m_drawnLines > 0)
        frame = "\x1b[" + std::to_string(m_drawnLines) + 'A';
    for (const StyledLine& line : m_lines)
        frame.append("\r").append(line.bytes()).append("\x1b[K\n");
    m_drawnLines = m_lines.size();
    m_os << frame << std::flush;
}

void LiveBoard::addTop() {
    const std::string counter =
        " day " + rightAligned(std::to_string(m_board.days()), 4) + " of " + std::to_string(m_totalDays) + ' ';
    StyledLine line;
    line.add("╭─", style::frame).add(" Weather board ", style::title);
    line.padTo(width - 3 - counter.size() - m_board.date().size(), "─", style::frame);
    line.add(' ' + m_board.date(), style::title).add(counter, style::label).add("─╮", style::frame);
    m_lines.push_back(line);
}

void LiveBoard::addProgress() {
    StyledLine line;
    line.padTo(m_board.days() * inner / m_totalDays, "━", style::progress);
    line.padTo(inner, "━", style::rest);
    addRow(line);
}

void LiveBoard::addHeadline() {
    constexpr std::size_t weekWidth = 6 * daysInWeek;
    constexpr std::size_t textWidth = inner - weekWidth;
    const HeadlineState& headline = m_board.headline();
    StyledLine line;
    line.add(headline.text.substr(0, textWidth), style::title).padTo(textWidth);
    for (const std::string& high : headline.highs)
        line.add(rightAligned(high, 6), colourOf(celsiusOf(high)));
    addRow(line);
}

void LiveBoard::addCity(const CityState& city) {
    addRule("├─", ' ' + city.name + ' ', "┤");
    std::array<StyledLine, rowsPerCity - 1> rows;
    addSky(rows[0], city.cell(Column::Sky), chartColumn - 2);
    addReading(rows[1], "high", city.cell(Column::High), "°C");
    addReading(rows[2], "low", city.cell(Column::Low), "°C");
    addReading(rows[3], "rain", city.cell(Column::Precipitation), "mm");
    addReading(rows[4], "wind", city.cell(Column::Wind), "m/s");
    rows[5].padTo(chartColumn);
    rows[6].add("weeks of " + city.cell(Column::Date).text.substr(0, 4), style::label).padTo(chartColumn);

    addSkies(rows[0], city.week);
    addWeekBars(rows[1], city.week, 1);
    addWeekBars(rows[2], city.week, 0);
    addHighs(rows[3], city.week);
    addYear(rows[4], city, 1);
    addYear(rows[5], city, 0);
    addMonths(rows[6]);
    for (StyledLine& row : rows)
        addRow(std::move(row));
}

void LiveBoard::addTally() {
    const Tally& tally = m_board.tally();
    StyledLine line;
    line.add("callbacks ", style::label).add(rightAligned(std::to_string(tally.callbacks), 6), style::title);
    line.add("    changed ", style::label).add(rightAligned(std::to_string(tally.changed), 6), style::changed);
    line.add("    unchanged ", style::label).add(rightAligned(std::to_string(tally.unchanged), 6), style::settled);
    addRow(line);
}

void LiveBoard::addRule(std::string_view left, std::string_view title, std::string_view right) {
    StyledLine line;
    line.add(left, style::frame).add(title, style::title).padTo(width - 1, "─", style::frame);
    m_lines.push_back(line.add(right, style::frame));
}

void LiveBoard::addRow(StyledLine content) {
    StyledLine line;
    content.padTo(inner);
    line.add("│ ", style::frame).add(content.bytes()).add(" │", style::frame);
    m_lines.push_back(line);
}
