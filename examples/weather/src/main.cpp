#include "BarScale.h"
#include "BoardState.h"
#include "Consumers.h"
#include "InputError.h"
#include "LiveBoard.h"
#include "OperatorFolder.h"
#include "Options.h"
#include "Pictures.h"
#include "PlainBoard.h"
#include "Renderings.h"
#include "Replay.h"
#include "SvgBoard.h"
#include "Terminal.h"
#include "WeatherCsv.h"

#include <chrono>
#include <csignal>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <set>
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

void replayLive(Replay& replay, const BoardState& board, const BarScale& scale, double seconds) {
    using Clock = std::chrono::steady_clock;
    constexpr auto frameTime = std::chrono::milliseconds(80);
    const std::size_t total = replay.totalDays();
    LiveBoard view(std::cout, board, scale, total);
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

std::set<std::string> skiesOf(const Weather& weather) {
    std::set<std::string> skies;
    for (const auto& day : weather.days)
        for (const Observation& observation : day)
            skies.insert(observation.text(Column::Sky));
    return skies;
}

/// Before the folder changes, because the path is the caller's.
std::ofstream openPicture(const std::string& path) {
    std::ofstream file(path, std::ios::binary);
    if (!file)
        throw InputError(path + ": cannot be written");
    return file;
}

void replayAll(Replay& replay, const BoardState& board, const BarScale& scale, const Options& options) {
    // Two rows more for what is printed behind the board.
    const int rows = LiveBoard::rowsFor(board.cities().size()) + 2;
    std::cout << '\n';
    if (!options.plain && prepareTerminal(LiveBoard::columns, rows))
        replayLive(replay, board, scale, options.seconds);
    else
        replayPlain(replay, board);
}

/// Short enough for a terminal of 80 columns.
void printTotals(const Feed& feed, const Tally& tally) {
    std::cout << "Totals: " << feed.daysWritten() << " days, " << feed.valuesSet() << " values; callbacks "
              << tally.today << " today, " << tally.week << " week, " << tally.headline << " headline\n"
              << std::flush;
}

int run(const Options& options) {
    const Weather weather = readWeatherCsv(options.csvPath);
    std::ofstream svg = openPicture(options.svgPath);
    if (options.verbose)
        DataSetVPrintfFunction(printMessage);
    enterFolder(options.folder);
    startLibrary();

    const SvgStyle style(options.style);
    const BarScale scale(Preset("WeatherChart", "bars"));
    const Pictures pictures(skiesOf(weather));
    BoardState board(weather.cities);
    WeatherTree tree(weather.cities);
    const Consumers consumers(tree, board);
    Replay replay(weather, tree, board);
    replayAll(replay, board, scale, options);
    if (options.dump)
        printRenderings(std::cout, tree, weather.cities);

    SvgBoard(board, pictures, scale, style).draw(svg, replay.totalDays());
    if (!svg.flush())
        throw std::runtime_error(options.svgPath + ": cannot be written");
    std::cout << "Wrote " << options.svgPath << '\n';
    printTotals(replay.feed(), board.tally());
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
    } catch (const InputError& error) {
        std::cerr << "weather_board: " << error.what() << '\n';
        return 2;
    } catch (const std::exception& error) {
        std::cerr << "weather_board: " << error.what() << '\n';
        return 1;
    }
}
