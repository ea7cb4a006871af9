#include "Feed.h"
#include "FrameLoop.h"
#include "Host.h"
#include "Options.h"
#include "ProgramFolder.h"
#include "SceneFile.h"
#include "SvgFrame.h"
#include "TerminalView.h"

#include <orbel/orbel.h>

#include <csignal>
#include <iostream>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>

namespace {

volatile std::sig_atomic_t interrupted = 0;

extern "C" void noteInterrupt(int signal) {
    interrupted = signal;
    // A second one ends a program whose plug-in does not return.
    std::signal(signal, SIG_DFL);
}

/// Where the frames of a scene are drawn.
class Screens {
public:
    Screens(Scene& scene, const Options& options) : m_scene(scene), m_options(options) {
        if (!options.svgPath.empty())
            m_svg.emplace(options.svgPath);
        if (!options.quiet && prepareTerminal())
            m_view.emplace(std::cout);
    }

    void draw() {
        if (!m_svg && !m_view)
            return;
        const Frame frame = frameOf(m_scene);
        m_isSvgWritten = !m_svg || m_svg->write(frame);
        if (!m_isSvgWritten && m_isFirst)
            failSvg();
        if (m_view)
            m_view->draw(frame, terminalSize());
        m_isFirst = false;
    }

    void finish() {
        if (!m_isSvgWritten)
            failSvg();
        if (!m_view && !m_options.quiet)
            printPlain(std::cout, frameOf(m_scene));
        m_view.reset();
    }

private:
    [[noreturn]] void failSvg() const { throw std::runtime_error(m_options.svgPath + ": cannot be written"); }

    Scene& m_scene;
    const Options& m_options;
    std::optional<SvgFrame> m_svg;
    std::optional<TerminalView> m_view;
    bool m_isFirst = true;
    bool m_isSvgWritten = true;
};

std::string pluginFolder(const Options& options) {
    return options.pluginFolder.empty() ? pluginFolderOf(programFolder()) : options.pluginFolder;
}

std::vector<std::unique_ptr<Feed>> openFeeds(const Options& options) {
    std::vector<std::unique_ptr<Feed>> feeds;
    if (!options.commandsPath.empty())
        feeds.push_back(fileFeed(options.commandsPath));
    if (options.port)
        feeds.push_back(socketFeed(*options.port));
    return feeds;
}

void runFrames(Host& host, Screens& screens, std::vector<std::unique_ptr<Feed>> feeds, const Options& options) {
    FrameLoop::Actions actions;
    actions.runCommands = [&](const std::string& line) { host.runCommands(line); };
    actions.callFrame = [&] {
        host.callFrame();
        screens.draw();
    };
    actions.isInterrupted = [] { return interrupted != 0; };
    actions.sleep = [](FrameLoop::Clock::duration time) { std::this_thread::sleep_for(time); };
    FrameLoop loop(std::move(actions));
    for (auto& feed : feeds)
        loop.addFeed(std::move(feed));
    loop.setFramesPerSecond(options.framesPerSecond);
    if (options.frames)
        loop.setFrames(*options.frames);
    loop.run();
}

void dumpTree(const Scene& scene) {
    if (Orbel* const tree = IDataHandlerImpl::getOrbel(scene.id(), false))
        tree->dump(std::cout, -1, -1, 1);
}

int run(const Options& options) {
    Scene scene;
    readSceneFile(options.scenePath, scene);
    auto feeds = openFeeds(options);
    std::signal(SIGINT, noteInterrupt);
    std::signal(SIGTERM, noteInterrupt);
    IDataHandlerImpl::init();

    Modules modules(pluginFolder(options));
    Host host(scene, modules);
    host.attachAll();
    Screens screens(scene, options);
    runFrames(host, screens, std::move(feeds), options);
    screens.finish();
    if (options.dump)
        dumpTree(scene);
    if (!std::cout.flush())
        throw std::runtime_error("cannot write to standard output");
    return interrupted == 0 ? 0 : 128 + interrupted;
}

std::string version() {
    char text[32];
    OrbelGetVersion(text);
    const std::string version(text);
    return version.substr(0, version.find(' '));
}

} // namespace

int main(int argc, char** argv) {
    try {
        const Options options = readOptions(argc, argv);
        if (options.help || options.version) {
            std::cout << (options.help ? usageText : "Kor " + version() + '\n');
            return 0;
        }
        return run(options);
    } catch (const UsageError& error) {
        std::cerr << "Kor: " << error.what() << "; see --help\n";
    } catch (const std::exception& error) {
        std::cerr << "Kor: " << error.what() << '\n';
    }
    return 2;
}
