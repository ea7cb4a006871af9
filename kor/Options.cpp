#include "Options.h"

#include <charconv>
#include <limits>
#include <string_view>
#include <system_error>

const char* const usageText = R"(usage: Kor [OPTIONS] SCENE.json

Runs a scene with its plug-ins, without a graphics engine, and draws its frames.

  --plugins DIR    the folder of the plug-in modules ("plugins" beside this program, or where it is installed)
  --commands FILE  runs the command lines of this file, "-" for standard input: in each frame those up to the next
                   line "~". Ends behind the last of them, unless --frames says when.
  --listen PORT    runs the command lines that come through this port of this machine; 0 for a free one
  --frames N       ends behind frame N
  --fps N          frames per second, 0.01 to 1000; 0 for as fast as it can (25)
  --svg FILE       keeps this file drawn as the last frame is; pictures are those of the folder "pictures" here
  --quiet          draws nothing on the terminal, and prints no frame at the end
  --dump           prints the tree of the scene at the end
  --help           prints this text
  --version        prints the version

Without --frames and --commands it runs until Ctrl-C. When standard output is no terminal, only the last frame is
printed, as plain text. Ends with 0, with 2 for a wrong command line or an unusable file, with 130 after Ctrl-C.
)";

namespace {

/// The words of a command line.
class Words {
public:
    Words(int argc, const char* const* argv) : m_next(argv + (argc > 0 ? 1 : 0)), m_end(argv + argc) {}

    bool isAtEnd() const { return m_next == m_end; }
    std::string_view next() { return *m_next++; }

    std::string textFor(std::string_view option) {
        if (isAtEnd() || std::string_view(*m_next).empty())
            throw UsageError(std::string(option) + " needs a text");
        return std::string(next());
    }

    template <class Number>
    Number numberFor(std::string_view option, Number least, Number most, const char* range) {
        const std::string_view text = isAtEnd() ? std::string_view() : next();
        Number number{};
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        if (error != std::errc() || end != text.data() + text.size() || !(number >= least && number <= most))
            throw UsageError(std::string(option) + " needs " + range);
        return number;
    }

private:
    const char* const* m_next;
    const char* const* m_end;
};

double readFramesPerSecond(Words& words) {
    constexpr const char* range = "0 or a number from 0.01 to 1000";
    const double framesPerSecond = words.numberFor<double>("--fps", 0, 1000, range);
    if (framesPerSecond > 0 && framesPerSecond < 0.01)
        throw UsageError(std::string("--fps needs ") + range);
    return framesPerSecond;
}

bool readFlag(std::string_view word, Options& options) {
    if (word == "--help" || word == "-h")
        options.help = true;
    else if (word == "--version")
        options.version = true;
    else if (word == "--quiet")
        options.quiet = true;
    else if (word == "--dump")
        options.dump = true;
    else
        return false;
    return true;
}

bool readValue(std::string_view word, Words& words, Options& options) {
    if (word == "--plugins")
        options.pluginFolder = words.textFor(word);
    else if (word == "--commands")
        options.commandsPath = words.textFor(word);
    else if (word == "--svg")
        options.svgPath = words.textFor(word);
    else if (word == "--listen")
        options.port = words.numberFor<int>(word, 0, 65535, "a port from 0 to 65535");
    else if (word == "--frames")
        options.frames =
            words.numberFor<long long>(word, 1, std::numeric_limits<long long>::max(), "a whole number from 1");
    else if (word == "--fps")
        options.framesPerSecond = readFramesPerSecond(words);
    else
        return false;
    return true;
}

} // namespace

Options readOptions(int argc, const char* const* argv) {
    Options options;
    Words words(argc, argv);
    while (!words.isAtEnd()) {
        const std::string_view word = words.next();
        if (readFlag(word, options) || readValue(word, words, options))
            continue;
        if (word.substr(0, 1) == "-")
            throw UsageError("unknown option " + std::string(word));
        if (!options.scenePath.empty())
            throw UsageError("more than one scene");
        options.scenePath = word;
    }
    if (options.scenePath.empty() && !options.help && !options.version)
        throw UsageError("which scene?");
    return options;
}
