#include "BoardState.h"
#include "LiveBoard.h"
#include "Observers.h"
#include "Options.h"
#include "PlainBoard.h"
#include "Renderings.h"
#include "Replay.h"
#include "Terminal.h"
#include "WeatherCsv.h"

#include <chrono>
#include <csignal>
#include <cstdio>
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

void replayPlain(Replay& replay, const BoardState& board) {
    constexpr std::size_t quarters = 4;
    const std::size_t total = replay.totalDays();
    std::size_t nextQuarter = 1;
    for (std::size_t written = 1; written <= total; ++written) {
        replay.writeNextDay();
        const bool quarterEnds = written >= nextQuarter * total / quarters;
        if (written == 1 || quarterEnds)
            printSnapshot(std::cout, board, total);
        while (nextQuarter * total / quarters <= written && nextQuarter <= quarters)
            ++nextQuarter;
    }
}

void replayLive(Replay& replay, const BoardState& board, double seconds) {
    using Clock = std::chrono::steady_clock;
    constexpr auto frameTime = std::chrono::milliseconds(80);
    const std::size_t total = replay.totalDays();
    LiveBoard view(std::cout, board, total);
    std::signal(SIGINT, noteInterrupt);

    const auto start = Clock::now();
    std::size_t written = 0;
    while (written < total && interrupted == 0) {
        const double elapsed = std::chrono::duration<double>(Clock::now() - start).count();
        const double done = elapsed < seconds ? eased(elapsed / seconds) : 1;
        const auto due = 1 + static_cast<std::size_t>(done * static_cast<double>(total - 1));
        if (due > written) {
            for (; written < due; ++written)
                replay.writeNextDay();
            view.draw();
        }
        if (written < total)
            std::this_thread::sleep_for(frameTime);
    }
}

int printMessage(const char* format, va_list args) {
    return std::vfprintf(stderr, format, args);
}

int run(const Options& options) {
    const Weather weather = readWeatherCsv(options.csvPath);
    if (options.verbose)
        DataSetVPrintfFunction(printMessage);
    BoardState board(weather.cities);
    WeatherTree tree(options.typesFolder, weather.cities);
    const Observers observers(tree, board);
    Replay replay(weather, tree, board);

    // One row more for the line of totals.
    const int rows = LiveBoard::rowsFor(weather.cities.size()) + 1;
    if (!options.plain && prepareTerminal(LiveBoard::columns, rows))
        replayLive(replay, board, options.seconds);
    else
        replayPlain(replay, board);
    if (options.dump)
        printRenderings(std::cout, tree, weather.cities);

    const Tally& tally = board.tally();
    // Short enough for a terminal of 80 columns.
    std::cout << "Totals: " << replay.feed().daysWritten() << " days, " << replay.feed().valuesSet() << " values, "
              << tally.callbacks << " callbacks, " << tally.changed << " changed, " << tally.unchanged << " unchanged\n"
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
    } catch (const TypesError& error) {
        std::cerr << "weather_board: " << error.what() << '\n';
        return 2;
    } catch (const std::exception& error) {
        std::cerr << "weather_board: " << error.what() << '\n';
        return 1;
    }
}
