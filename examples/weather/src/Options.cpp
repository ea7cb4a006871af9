#include "Options.h"

#include <charconv>
#include <filesystem>
#include <string_view>

const char* const usageText = R"(usage: weather_board [OPTIONS] [CSV]

Replays daily weather observations through a tree, shows them on a live board and draws a picture of it at the end.

  CSV             the observations: location,date,precipitation,temp_max,temp_min,wind,weather
                  (weather.csv in the operator's folder)
  --folder DIR    the operator's folder, with settings, types, tables, presets and pictures (.)
  --svg FILE      the picture, for any browser (weather.svg)
  --style NAME    its colours, a preset: day, night or one of your own (day)
  --seconds N     how long the replay takes on a terminal, 0 to 3600 (14)
  --plain         print a few snapshots, unpaced; always so when the output is not a terminal
  --dump          print the tree in every form at the end
  --verbose       tell on standard error which types are loaded
  --help          print this text
)";

namespace {

double readSeconds(std::string_view text) {
    double seconds = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), seconds);
    if (error != std::errc() || end != text.data() + text.size() || !(seconds >= 0 && seconds <= 3600))
        throw UsageError("--seconds needs a number from 0 to 3600");
    return seconds;
}

std::string readText(const std::string& option, std::string_view text) {
    if (text.empty())
        throw UsageError(option + " needs a text");
    return std::string(text);
}

} // namespace

Options readOptions(int argc, char** argv) {
    Options options;
    for (int at = 1; at < argc; ++at) {
        const std::string_view word = argv[at];
        if (word == "--help" || word == "-h")
            options.help = true;
        else if (word == "--plain")
            options.plain = true;
        else if (word == "--dump")
            options.dump = true;
        else if (word == "--verbose")
            options.verbose = true;
        else if (word == "--folder")
            options.folder = readText("--folder", ++at < argc ? argv[at] : "");
        else if (word == "--svg")
            options.svgPath = readText("--svg", ++at < argc ? argv[at] : "");
        else if (word == "--style")
            options.style = readText("--style", ++at < argc ? argv[at] : "");
        else if (word == "--seconds")
            options.seconds = readSeconds(++at < argc ? argv[at] : "");
        else if (word.substr(0, 1) == "-")
            throw UsageError("unknown option " + std::string(word));
        else if (!options.csvPath.empty())
            throw UsageError("more than one CSV file");
        else
            options.csvPath = word;
    }
    if (options.csvPath.empty())
        options.csvPath = (std::filesystem::path(options.folder) / "weather.csv").string();
    return options;
}
