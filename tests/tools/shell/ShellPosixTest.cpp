#ifndef _WIN32

#include <tools/CommandLine.h>

#include <docs/Document.h>
#include <support/Environment.h>
#include <support/TemporaryFolder.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

namespace {

/// Somebody at a terminal who has started "orbel shell" in a folder.
class Typist {
public:
    Typist(const TemporaryFolder& folder, std::vector<const char*> arguments) {
        m_child = forkpty(&m_terminal, nullptr, nullptr, nullptr);
        if (m_child != 0)
            return;
        setenv("TERM", "dumb", 1);
        setenv("XDG_STATE_HOME", folder.path("state").c_str(), 1);
        std::filesystem::current_path(folder.path());
        arguments.insert(arguments.begin(), {"orbel", "shell"});
        // Not _Exit, which would lose what coverage counts.
        std::exit(runCommandLine(static_cast<int>(arguments.size()), arguments.data()));
    }
    Typist(const Typist&) = delete;
    Typist& operator=(const Typist&) = delete;
    ~Typist() {
        if (m_terminal != -1)
            close(m_terminal);
        if (m_child > 0)
            waitpid(m_child, nullptr, 0);
    }

    /// Presses keys, and waits until the last line on the screen is this one; a new one behind a return.
    void type(std::string_view keys, std::string_view lastLine) {
        const bool ends = keys.back() == '\r';
        const auto before = std::count(m_written.begin(), m_written.end(), '\n');
        press(keys);
        EXPECT_TRUE(readUntil(
            [&](std::string_view) { return !ends || std::count(m_written.begin(), m_written.end(), '\n') > before; }));
        EXPECT_TRUE(waitFor(lastLine)) << "the screen is\n" << screen() << "\nand not\n" << lastLine;
    }

    void press(std::string_view keys) {
        waitForEditor();
        EXPECT_EQ(write(m_terminal, keys.data(), keys.size()), static_cast<ssize_t>(keys.size()));
    }

    bool waitFor(std::string_view lastLine) {
        return readUntil([&](std::string_view shown) { return shown.substr(shown.rfind('\n') + 1) == lastLine; });
    }

    /// Waits until the screen shows this text anywhere.
    bool sees(std::string_view text) {
        return readUntil([&](std::string_view shown) { return shown.find(text) != std::string_view::npos; });
    }

    /// The exit code, once the program has ended by itself.
    int end() {
        while (read()) {
        }
        int status = 0;
        waitpid(m_child, &status, 0);
        m_child = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    /// The lines as they are seen, without blanks at their ends.
    std::string screen() const {
        std::string text;
        std::string line;
        std::size_t column = 0;
        for (const char character : m_written) {
            if (character == '\n') {
                text += withoutBlanks(line) + '\n';
                line.clear();
            } else if (character == '\b') {
                --column;
            } else if (character != '\r' && character != '\a') {
                line.resize(std::max(line.size(), column + 1), ' ');
                line[column++] = character;
            }
            if (character == '\n' || character == '\r')
                column = 0;
        }
        return text + withoutBlanks(line);
    }

private:
    /// The editor listens only a moment after its prompt is seen; the terminal itself would show keys before that.
    void waitForEditor() const {
        for (int tries = 0; tries < 10'000; ++tries) {
            termios modes{};
            tcgetattr(m_terminal, &modes);
            if ((modes.c_lflag & ICANON) == 0)
                return;
            usleep(1'000);
        }
    }

    static std::string withoutBlanks(const std::string& line) { return line.substr(0, line.find_last_not_of(' ') + 1); }

    template <class IsIt>
    bool readUntil(IsIt isIt) {
        while (!isIt(screen()))
            if (!read())
                return false;
        return true;
    }

    /// False when nothing comes any more.
    bool read() {
        pollfd terminal{m_terminal, POLLIN, 0};
        if (poll(&terminal, 1, 30'000) <= 0)
            return false;
        char bytes[4096];
        const ssize_t size = ::read(m_terminal, bytes, sizeof bytes);
        if (size <= 0)
            return false;
        m_written.append(bytes, static_cast<std::size_t>(size));
        return true;
    }

    pid_t m_child = -1;
    int m_terminal = -1;
    std::string m_written;
};

constexpr const char* up = "\033[A";

} // namespace

TEST(ShellInATerminal, IsTypedInto) {
    clearTypeVariables();
    const TemporaryFolder folder;
    folder.write("board.qx", "Point = {string x=0; string y=0;};\nLabel = {string text=Hello; Point pos;};\n");
    Typist typist(folder, {"--types", "board.qx"});
    ASSERT_TRUE(typist.waitFor("orbel>")) << typist.screen();
    typist.type("create La\t", "orbel> create Label:");
    typist.type("caption\r", "orbel>");
    typist.type("watch cap\t", "orbel> watch caption/");
    typist.type("te\t", "orbel> watch caption/text");
    typist.type("\r", "orbel>");
    typist.type("caption/text = Hi\r", "orbel>");
    typist.type(up, "orbel> caption/text = Hi");
    typist.type("\r", "orbel>");
    typist.type("types Po\t", "orbel> types Point");
    typist.type("\r", "orbel>");
    typist.type("caption/txet = Ho\r", "orbel>");
    typist.type("quit\r", "");
    EXPECT_EQ(typist.end(), 0);
    EXPECT_EQ(typist.screen(), "A live tree: help lists the verbs, Tab completes, quit ends.\n"
                               "orbel> create Label:caption\n"
                               "orbel> watch caption/text\n"
                               "orbel> caption/text = Hi\n"
                               "caption/text = Hi\n"
                               "orbel> caption/text = Hi\n"
                               "caption/text = Hi (unchanged)\n"
                               "orbel> types Point\n"
                               "Type Point {\n"
                               "\tValue x;\n"
                               "\tValue y;\n"
                               "};\n"
                               "orbel> caption/txet = Ho\n"
                               "nothing at caption/txet; did you mean caption/text?\n"
                               "orbel> quit\n");
}

TEST(ShellInATerminal, RemembersLinesOfEarlierSessions) {
    clearTypeVariables();
    const TemporaryFolder folder;
    {
        Typist typist(folder, {});
        ASSERT_TRUE(typist.waitFor("orbel>")) << typist.screen();
        typist.type("create string:title\r", "orbel>");
        typist.type("\x04", "");
        EXPECT_EQ(typist.end(), 0);
    }
    EXPECT_TRUE(std::filesystem::exists(folder.path("state") + "/orbel/history"));
    Typist typist(folder, {});
    ASSERT_TRUE(typist.waitFor("orbel>")) << typist.screen();
    typist.type(up, "orbel> create string:title");
    typist.type("\r", "orbel>");
    typist.type("ti\t", "orbel> ti");
    typist.type("t\t = x\r", "orbel>");
    typist.type("get title\r", "orbel>");
    typist.type("quit\r", "");
    EXPECT_EQ(typist.end(), 0);
    EXPECT_NE(typist.screen().find("\nx\n"), std::string::npos) << typist.screen();
}

TEST(ShellInATerminal, OffersWhatMayBeMeant) {
    clearTypeVariables();
    const TemporaryFolder folder;
    folder.write("start.txt", "create node:scene/string:title\ncreate scene/string:text\n");
    Typist typist(folder, {"start.txt"});
    ASSERT_TRUE(typist.waitFor("orbel>")) << typist.screen();
    typist.type("dump sc\t", "orbel> dump scene/");
    typist.press("t\t\t");
    EXPECT_TRUE(typist.sees("scene/text  scene/title\n")) << typist.screen();
    EXPECT_TRUE(typist.waitFor("orbel> dump scene/t")) << typist.screen();
    typist.type("i\t\r", "orbel>");
    EXPECT_NE(typist.screen().find("\ntitle= ;\n"), std::string::npos) << typist.screen();
    typist.type("quit\r", "");
    EXPECT_EQ(typist.end(), 0);
}

TEST(ShellInATerminal, ShowsTheSessionOfThePage) {
    clearTypeVariables();
    const Document page = Document::ofFile(ORBEL_DOCS "/tool.md");
    const TemporaryFolder folder;
    folder.write("board.qx", page.block("`board.qx`:"));
    folder.write("board.txt", page.block("`board.txt`:"));
    std::istringstream session(page.section("orbel shell").block("may have been meant."));
    std::string line;
    std::getline(session, line);
    ASSERT_EQ(line, "$ orbel shell --types board.qx board.txt");
    Typist typist(folder, {"--types", "board.qx", "board.txt"});
    ASSERT_TRUE(typist.waitFor("orbel>")) << typist.screen();
    std::string expected;
    const std::string prompt = "orbel> ";
    while (std::getline(session, line)) {
        expected += line + '\n';
        if (line.compare(0, prompt.size(), prompt) == 0)
            typist.type(line.substr(prompt.size()) + '\r', line == "orbel> quit" ? "" : "orbel>");
    }
    EXPECT_EQ(typist.end(), 0);
    EXPECT_EQ(typist.screen(), expected);
}

#endif
