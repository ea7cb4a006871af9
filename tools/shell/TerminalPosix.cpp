#include "Terminal.h"

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

#include <editline/readline.h>
#include <unistd.h>

namespace terminal {

namespace {

namespace fs = std::filesystem;

constexpr int mostLinesKept = 1'000;

/// The place for what a program remembers; empty when there is none.
fs::path historyFile() {
    fs::path folder;
    // A path that is not absolute is to be ignored.
    if (const char* state = std::getenv("XDG_STATE_HOME"); state && state[0] == '/')
        folder = state;
    else if (const char* home = std::getenv("HOME"); home && home[0] == '/')
        folder = fs::path(home) / ".local" / "state";
    return folder.empty() ? folder : folder / "orbel" / "history";
}

// The editor's functions are plain ones and know of no object.
Complete* completeNow = nullptr;

char* copyOf(const std::string& text) {
    return strdup(text.c_str());
}

std::string commonStart(const std::vector<std::string>& texts) {
    std::string start = texts.front();
    for (const std::string& text : texts) {
        std::size_t same = 0;
        while (same < std::min(start.size(), text.size()) && start[same] == text[same])
            ++same;
        start.resize(same);
    }
    return start;
}

/// What is to stand for the word that begins at `start`, followed by all that may; freed by the editor.
char** completeWord(const char* /*word*/, int start, int end) {
    // No names of files instead.
    rl_attempted_completion_over = 1;
    const Completions found = (*completeNow)(std::string_view(rl_line_buffer, static_cast<std::size_t>(end)));
    std::vector<std::string> texts;
    for (const std::string& text : found.texts) {
        // The editor ends words at blanks, which keys may hold.
        const std::size_t typed = static_cast<std::size_t>(start) - std::min<std::size_t>(found.start, start);
        if (typed <= text.size())
            texts.push_back(text.substr(typed));
    }
    if (texts.empty())
        return nullptr;
    if (texts.size() > 1)
        texts.insert(texts.begin(), commonStart(texts));
    // Whether there is one alone, libedit tells from the third entry, however soon the list ends.
    auto** list = static_cast<char**>(std::calloc(std::max<std::size_t>(texts.size() + 1, 3), sizeof(char*)));
    for (std::size_t at = 0; at < texts.size(); ++at)
        list[at] = copyOf(texts[at]);
    return list;
}

class LibeditEditor : public LineEditor {
public:
    explicit LibeditEditor(Complete complete) : m_complete(std::move(complete)), m_historyFile(historyFile()) {
        completeNow = &m_complete;
        // Letters beyond ASCII are letters only in the user's own locale.
        std::setlocale(LC_CTYPE, "");
        rl_readline_name = "orbel";
        rl_initialize();
        rl_attempted_completion_function = completeWord;
        rl_completion_append_character = '\0';
        static char wordEnds[] = " \t\n;={~";
        rl_completer_word_break_characters = wordEnds;
        using_history();
        stifle_history(mostLinesKept);
        if (!m_historyFile.empty())
            read_history(m_historyFile.c_str());
    }
    LibeditEditor(const LibeditEditor&) = delete;
    LibeditEditor& operator=(const LibeditEditor&) = delete;
    ~LibeditEditor() override { completeNow = nullptr; }

    std::optional<std::string> read(const std::string& prompt) override {
        char* typed = readline(prompt.c_str());
        if (!typed)
            return std::nullopt;
        std::string line(typed);
        std::free(typed);
        remember(line);
        return line;
    }

private:
    void remember(const std::string& line) {
        if (line.find_first_not_of(" \t") == std::string::npos || line == m_last)
            return;
        m_last = line;
        add_history(line.c_str());
        if (m_historyFile.empty())
            return;
        // At once: an interrupt ends the program. Where nothing can be kept, nothing is.
        std::error_code notThere;
        fs::create_directories(m_historyFile.parent_path(), notThere);
        write_history(m_historyFile.c_str());
    }

    Complete m_complete;
    fs::path m_historyFile;
    std::string m_last;
};

} // namespace

bool isInteractive() {
    return isatty(STDIN_FILENO) != 0 && isatty(STDOUT_FILENO) != 0;
}

bool hasColours(std::FILE* stream) {
    const char* name = std::getenv("TERM");
    return isatty(fileno(stream)) != 0 && !std::getenv("NO_COLOR") && name && std::strcmp(name, "dumb") != 0;
}

std::unique_ptr<LineEditor> makeLineEditor(Complete complete) {
    return std::make_unique<LibeditEditor>(std::move(complete));
}

} // namespace terminal
