#include "BoardState.h"
#include "CellHandler.h"
#include "Feed.h"
#include "LiveBoard.h"
#include "Options.h"
#include "PlainBoard.h"
#include "Terminal.h"
#include "WeatherCsv.h"
#include "WeekHandler.h"

#include <chrono>
#include <csignal>
#include <deque>
#include <iostream>
#include <thread>

namespace {

volatile std::sig_atomic_t interrupted = 0;

extern "C" void noteInterrupt(int) {
    interrupted = 1;
}

/// From 0 to 1, slowly at both ends: there single days can be read, in between the seasons pass.
double eased(double x) {
    return x * x * x * (10 + x * (6 * x - 15));
}

void replayPlain(const Weather& weather, Feed& feed, const BoardState& board) {
    constexpr std::size_t quarters = 4;
    const std::size_t total = weather.days.size();
    std::size_t nextQuarter = 1;
    for (std::size_t day = 0; day < total; ++day) {
        feed.write(weather.days[day]);
        const bool quarterEnds = day + 1 >= nextQuarter * total / quarters;
        if (day == 0 || quarterEnds)
            printSnapshot(std::cout, board, total);
        while (nextQuarter * total / quarters <= day + 1 && nextQuarter <= quarters)
            ++nextQuarter;
    }
}

void replayLive(const Weather& weather, Feed& feed, const BoardState& board, double seconds) {
    using Clock = std::chrono::steady_clock;
    constexpr auto frameTime = std::chrono::milliseconds(80);
    const std::size_t total = weather.days.size();
    LiveBoard view(std::cout, board, total);
    std::signal(SIGINT, noteInterrupt);

    const auto start = Clock::now();
    std::size_t written = 0;
    while (written < total && interrupted == 0) {
        const double elapsed = std::chrono::duration<double>(Clock::now() - start).count();
        const double done = elapsed < seconds ? eased(elapsed / seconds) : 1;
        const auto due = 1 + static_cast<std::size_t>(done * static_cast<double>(total - 1));
        if (due > written) {
            while (written < due)
                feed.write(weather.days[written++]);
            view.draw();
        }
        if (written < total)
            std::this_thread::sleep_for(frameTime);
    }
}

int run(const Options& options) {
    const Weather weather = readWeatherCsv(options.csvPath);
    BoardState board(weather.cities);
    // Handlers must outlive the feed, whose tree takes leave of them. A deque, because they must not move.
    std::deque<CellHandler> cellHandlers;
    std::deque<WeekHandler> weekHandlers;
    Feed feed(weather.cities);
    for (std::size_t city = 0; city < weather.cities.size(); ++city) {
        for (std::size_t column = 0; column < columnNames.size(); ++column) {
            const auto which = static_cast<Column>(column);
            feed.observe(city, which, cellHandlers.emplace_back(board, city, which));
        }
        feed.observeWeek(city, weekHandlers.emplace_back(board, city));
    }

    // One row more for the line of totals.
    const int rows = LiveBoard::rowsFor(weather.cities.size()) + 1;
    if (!options.plain && prepareTerminal(LiveBoard::columns, rows))
        replayLive(weather, feed, board, options.seconds);
    else
        replayPlain(weather, feed, board);

    const Tally& tally = board.tally();
    // Short enough for a terminal of 80 columns.
    std::cout << "Totals: " << feed.daysWritten() << " days, " << feed.valuesSet() << " values, " << tally.callbacks
              << " callbacks, " << tally.changed << " changed, " << tally.unchanged << " unchanged\n"
              << std::flush;
    if (!std::cout)
        throw std::runtime_error("cannot write to standard output");
    return interrupted == 0 ? 0 : 130;
}

} // namespace

int main(int argc, char** argv) {
    try {
        const Options options = readOptions(argc, argv);
        if (options.help) {
            std::cout << usageText;
            return 0;
        }
        return run(options);
    } catch (const UsageError& error) {
        std::cerr << "weather_board: " << error.what() << "; see --help\n";
        return 2;
    } catch (const WeatherCsvError& error) {
        std::cerr << "weather_board: " << error.what() << '\n';
        return 2;
    } catch (const std::exception& error) {
        std::cerr << "weather_board: " << error.what() << '\n';
        return 1;
    }
}
