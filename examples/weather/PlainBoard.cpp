#include "PlainBoard.h"

#include <algorithm>
#include <iomanip>
#include <ostream>

void printSnapshot(std::ostream& os, const BoardState& board, std::size_t totalDays) {
    std::size_t nameWidth = 0;
    for (const CityState& city : board.cities())
        nameWidth = std::max(nameWidth, city.name.size());

    os << board.date() << "  day " << board.days() << " of " << totalDays << "  " << board.headline().text << "; highs";
    for (const std::string& high : board.headline().highs)
        if (!isBlank(high))
            os << ' ' << high;
    os << '\n';
    for (const CityState& city : board.cities()) {
        if (city.cell(Column::Date).text.empty())
            continue;
        const auto number = [&](Column column) -> std::ostream& {
            return os << std::setw(5) << city.cell(column).text;
        };
        os << "  " << std::left << std::setw(static_cast<int>(nameWidth)) << city.name << std::right << "  high";
        number(Column::High) << " C  low";
        number(Column::Low) << " C  rain";
        number(Column::Precipitation) << " mm  wind";
        number(Column::Wind) << " m/s  " << city.cell(Column::Sky).text << "; highs [" << city.week.from << '-'
                             << city.week.to << ']';
        for (const std::string& text : city.week.highs)
            if (!text.empty())
                os << ' ' << text;
        os << '\n';
    }
}
