#include "LiveBoard.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace {

constexpr std::size_t width = LiveBoard::columns;
constexpr int rowsPerCity = 8;
constexpr int otherRows = 5;

constexpr std::size_t chartColumn = 21;
constexpr long storeys = 3;
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
constexpr double coldest = -12;
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

/// 0 to 8 eighths of a letter's height.
std::string_view bar(long eighths) {
    constexpr std::array<std::string_view, 9> bars = {" ", "▁", "▂", "▃", "▄", "▅", "▆", "▇", "█"};
    return bars[static_cast<std::size_t>(std::clamp(eighths, 0L, 8L))];
}

std::string rightAligned(const std::string& text, std::size_t columns) {
    return text.size() < columns ? std::string(columns - text.size(), ' ') + text : text;
}

void addReading(StyledLine& line, std::size_t at, std::string_view label, const Cell& cell, std::string_view unit) {
    line.padTo(at).add(label, style::label).add(" ");
    line.add(rightAligned(cell.text, 5) + ' ' + std::string(unit) + ' ', cell.changed ? style::fresh : style::settled);
}

/// Between two days; seven days with their gaps are as wide as the weeks of a year below them.
StyledLine& addGap(StyledLine& line) {
    return line.padTo(line.columns() == chartColumn ? chartColumn : line.columns() + 3);
}

/// One storey of the bars, counted from the ground; each begins where the one below is full.
StyledLine weekBars(const Week& week, long storey) {
    StyledLine line;
    line.padTo(chartColumn);
    for (const std::string& text : week.texts) {
        addGap(line);
        const double celsius = std::strtod(text.c_str(), nullptr);
        const long height = std::max(1L, std::lround(warmth(celsius) * storeys * eighthsPerStorey));
        const std::string_view block = bar(text.empty() ? 0 : height - storey * eighthsPerStorey);
        for (int column = 0; column < 5; ++column)
            line.add(block, colourOf(celsius));
    }
    return line;
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
    for (const CityState& city : m_board.cities()) {
        addRule("├", "┤");
        addCity(city);
    }
    addRule("├", "┤");
    addTally();
    addRule("╰", "╯");

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
    constexpr std::size_t inner = width - 4;
    StyledLine line;
    line.padTo(m_board.days() * inner / m_totalDays, "━", style::progress);
    line.padTo(inner, "━", style::rest);
    addRow(line);
}

void LiveBoard::addCity(const CityState& city) {
    const Cell& sky = city.cell(Column::Sky);
    const std::string skyText = ' ' + sky.text + ' ';
    std::string skyStyle(skyColour(sky.text));
    if (sky.changed)
        skyStyle.append(";").append(style::freshGround);
    StyledLine head;
    head.add(city.name, style::title).padTo(width - 4 - skyText.size()).add(skyText, skyStyle);
    addRow(head);

    StyledLine readings;
    addReading(readings, 0, "high", city.cell(Column::High), "°C");
    addReading(readings, 20, "low", city.cell(Column::Low), "°C");
    addReading(readings, 39, "rain", city.cell(Column::Precipitation), "mm");
    addReading(readings, 59, "wind", city.cell(Column::Wind), "m/s");
    addRow(readings);

    for (long storey = storeys; storey > 0; --storey)
        addRow(weekBars(city.week, storey - 1));

    const Week& week = city.week;
    StyledLine numbers;
    numbers.add("last 7 highs ", style::label);
    if (week.to >= week.from)
        numbers.add('[' + std::to_string(week.from) + '-' + std::to_string(week.to) + ']',
                    week.changed ? style::fresh : style::settled);
    numbers.padTo(chartColumn);
    for (const std::string& text : week.texts)
        addGap(numbers).add(rightAligned(text, 5), style::settled);
    addRow(numbers);

    StyledLine year;
    year.add("weeks of " + city.cell(Column::Date).text.substr(0, 4), style::label).padTo(chartColumn);
    for (const auto& celsius : city.year)
        if (celsius)
            year.add(bar(std::max(1L, std::lround(warmth(*celsius) * eighthsPerStorey))), colourOf(*celsius));
        else
            year.add("·", style::rest);
    addRow(year);
}

void LiveBoard::addTally() {
    const Tally& tally = m_board.tally();
    StyledLine line;
    line.add("callbacks ", style::label).add(rightAligned(std::to_string(tally.callbacks), 6), style::title);
    line.add("    changed ", style::label).add(rightAligned(std::to_string(tally.changed), 6), style::changed);
    line.add("    unchanged ", style::label).add(rightAligned(std::to_string(tally.unchanged), 6), style::settled);
    addRow(line);
}

void LiveBoard::addRule(std::string_view left, std::string_view right) {
    StyledLine line;
    line.add(left, style::frame).padTo(width - 1, "─", style::frame).add(right, style::frame);
    m_lines.push_back(line);
}

void LiveBoard::addRow(StyledLine content) {
    StyledLine line;
    content.padTo(width - 4);
    line.add("│ ", style::frame).add(content.bytes()).add(" │", style::frame);
    m_lines.push_back(line);
}
