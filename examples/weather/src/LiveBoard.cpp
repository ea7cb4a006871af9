#include "LiveBoard.h"

#include "Dates.h"
#include "Utf8.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace {

constexpr std::size_t width = LiveBoard::columns;
constexpr std::size_t inner = width - 4;
constexpr int rowsPerCity = 8;
constexpr int otherRows = 4;

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
} // namespace style

/// From blue to red.
std::string colourOf(double filled) {
    constexpr std::array<int, 9> ramp = {27, 33, 39, 44, 78, 148, 220, 208, 196};
    const auto step = static_cast<std::size_t>(std::lround(filled * (ramp.size() - 1)));
    return "38;5;" + std::to_string(ramp[step]);
}

std::string_view skyColour(const std::string& sky) {
    if (sky == "sun")
        return "1;38;5;220";
    if (sky == "snow")
        return "1;38;5;195";
    return sky == "fog" ? "1;38;5;250" : "1;38;5;75";
}

/// A day's weather, named by one of its texts.
void addSky(StyledLine& line, const DayState& day, const std::string& name, std::size_t columns, bool isFresh) {
    std::string look(skyColour(day.sky.text));
    if (isFresh)
        look.append(";").append(style::freshGround);
    if (!isBlank(day.sky.text))
        line.add(utf8::first(name, columns), look);
}

/// 0 to 8 eighths of a letter's height.
std::string_view bar(long eighths) {
    constexpr std::array<std::string_view, 9> bars = {" ", "▁", "▂", "▃", "▄", "▅", "▆", "▇", "█"};
    return bars[static_cast<std::size_t>(std::clamp(eighths, 0L, 8L))];
}

/// How high a bar stands in one storey, counted from the ground; each begins where the one below is full.
std::string_view block(double filled, long storey) {
    const long height = std::max(1L, std::lround(filled * storeys * eighthsPerStorey));
    return bar(height - storey * eighthsPerStorey);
}

double celsiusOf(const std::string& text) {
    return std::strtod(text.c_str(), nullptr);
}

std::string rightAligned(const std::string& text, std::size_t columns) {
    return text.size() < columns ? std::string(columns - text.size(), ' ') + text : text.substr(0, columns);
}

void addReading(StyledLine& line, const CityState& city, Reading which) {
    const ReadingState& reading = city.reading(which);
    line.add(utf8::first(reading.label, 5), style::label).padTo(6);
    line.add(rightAligned(reading.value.text, 6) + ' ' + std::string(utf8::first(reading.unit, 5)) + ' ',
             city.isFresh(reading.value) ? style::fresh : style::settled);
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

void addSkies(StyledLine& line, const CityState& city) {
    addWeek(line, [&](std::size_t index) {
        const DayState& day = city.week.days[index];
        addSky(line, day, day.sky.text, 7, city.isFresh(day.sky));
    });
}

void addWeekBars(StyledLine& line, const Week& week, const BarScale& scale, long storey) {
    addWeek(line, [&](std::size_t day) {
        const double filled = scale.filled(celsiusOf(week.highs[day]));
        for (int column = 0; column < 5 && !isBlank(week.highs[day]); ++column)
            line.add(block(filled, storey), colourOf(filled));
    });
}

void addHighs(StyledLine& line, const Week& week) {
    addWeek(line, [&](std::size_t day) {
        const bool fresh = static_cast<int>(day) >= week.from && static_cast<int>(day) <= week.to;
        line.add(rightAligned(week.highs[day], 5), fresh ? style::title : style::settled);
    });
}

void addYear(StyledLine& line, const CityState& city, const BarScale& scale, long storey) {
    for (const auto& celsius : city.year)
        if (celsius)
            line.add(block(scale.filled(*celsius), storey), colourOf(scale.filled(*celsius)));
        else
            line.add(storey == 0 ? "·" : " ", style::rest);
}

void addMonths(StyledLine& line) {
    for (std::size_t month = 0; month < dates::months.size(); ++month)
        line.padTo(chartColumn + month * 53 / 12).add(dates::months[month].substr(0, 3), style::label);
}

} // namespace

LiveBoard::LiveBoard(std::ostream& os, const BoardState& board, const BarScale& scale, std::size_t totalDays)
    : m_os(os), m_board(board), m_scale(scale), m_totalDays(totalDays) {
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
    addTally();

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
    line.add(utf8::first(headline.text, textWidth), style::title).padTo(textWidth);
    for (const std::string& high : headline.highs)
        line.add(rightAligned(high, 6), colourOf(m_scale.filled(celsiusOf(high))));
    addRow(line);
}

void LiveBoard::addCity(const CityState& city) {
    addRule("├─", ' ' + city.name + ' ', "┤");
    std::array<StyledLine, rowsPerCity - 1> rows;
    addSky(rows[0], city.today, city.today.label.text, chartColumn - 2, city.isFresh(city.today.label));
    for (std::size_t reading = 0; reading < readingNames.size(); ++reading)
        addReading(rows[reading + 1], city, static_cast<Reading>(reading));
    rows[5].padTo(chartColumn);
    rows[6].add("weeks of " + city.date.substr(0, 4), style::label).padTo(chartColumn);

    addSkies(rows[0], city);
    addWeekBars(rows[1], city.week, m_scale, 1);
    addWeekBars(rows[2], city.week, m_scale, 0);
    addHighs(rows[3], city.week);
    addYear(rows[4], city, m_scale, 1);
    addYear(rows[5], city, m_scale, 0);
    addMonths(rows[6]);
    for (StyledLine& row : rows)
        addRow(std::move(row));
}

void LiveBoard::addTally() {
    const Tally& tally = m_board.tally();
    const auto figure = [](std::size_t count) { return rightAligned(std::to_string(count), 6); };
    addRule("╰─",
            " callbacks: " + figure(tally.today) + " today" + figure(tally.week) + " week" + figure(tally.headline) +
                " headline ",
            "╯");
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
