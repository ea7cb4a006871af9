#include "PlainBoard.h"

#include "Utf8.h"

#include <algorithm>
#include <iomanip>
#include <ostream>

namespace {

void printHighs(std::ostream& os, const std::array<std::string, daysInWeek>& highs) {
    for (const std::string& high : highs)
        if (!isBlank(high))
            os << ' ' << high;
    os << '\n';
}

void printCity(std::ostream& os, const CityState& city, std::size_t nameWidth) {
    os << "  " << city.name << std::string(nameWidth - utf8::length(city.name), ' ');
    for (const ReadingState& reading : city.readings)
        os << "  " << reading.label << std::setw(6) << reading.value.text << ' ' << reading.unit;
    os << "  " << city.today.label.text << "; highs [" << city.week.from << '-' << city.week.to << ']';
    printHighs(os, city.week.highs);
}

} // namespace

void printSnapshot(std::ostream& os, const BoardState& board, std::size_t totalDays) {
    std::size_t nameWidth = 0;
    for (const CityState& city : board.cities())
        nameWidth = std::max(nameWidth, utf8::length(city.name));

    os << board.date() << "  day " << board.days() << " of " << totalDays << "  " << board.headline().text << "; highs";
    printHighs(os, board.headline().highs);
    for (const CityState& city : board.cities())
        if (city.observations > 0)
            printCity(os, city, nameWidth);
}
