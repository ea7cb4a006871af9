#include "FrameLoop.h"

#include <algorithm>
#include <iterator>
#include <utility>

FrameLoop::FrameLoop(Actions actions) : m_actions(std::move(actions)) {}

void FrameLoop::addFeed(std::unique_ptr<Feed> feed) {
    Source source;
    source.feed = std::move(feed);
    m_sources.push_back(std::move(source));
}

void FrameLoop::run() {
    m_due = m_actions.now();
    long long framesDone = 0;
    while (m_frames != framesDone && !m_actions.isInterrupted()) {
        for (Source& source : m_sources)
            runBatch(source);
        m_actions.callFrame();
        if (isOver(++framesDone))
            return;
        waitForNext();
    }
}

void FrameLoop::runBatch(Source& source) {
    // A client that sends without end must not stop the frames.
    constexpr int mostLines = 100'000;
    for (int count = 0; count < mostLines && hasLine(source) && !m_actions.isInterrupted(); ++count) {
        const std::string line = std::move(source.lines.front());
        source.lines.pop_front();
        if (line == "~")
            return;
        m_actions.runCommands(line);
    }
}

bool FrameLoop::hasLine(Source& source) {
    if (source.lines.empty() && !source.hasEnded) {
        std::vector<std::string> come;
        source.hasEnded = !source.feed->take(come);
        source.lines.assign(std::make_move_iterator(come.begin()), std::make_move_iterator(come.end()));
    }
    return !source.lines.empty();
}

bool FrameLoop::isOver(long long framesDone) const {
    if (m_frames)
        return framesDone >= *m_frames;
    return std::any_of(m_sources.begin(), m_sources.end(),
                       [](const Source& source) { return source.hasEnded && source.lines.empty(); });
}

void FrameLoop::waitForNext() {
    if (m_framesPerSecond <= 0)
        return;
    // An interrupt is noticed soon, however slow the pace.
    constexpr Clock::duration longest = std::chrono::milliseconds(50);
    const auto period =
        std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(1 / m_framesPerSecond));
    m_due += period;
    while (!m_actions.isInterrupted()) {
        const Clock::duration left = m_due - m_actions.now();
        // After a pause frames do not hurry to catch up.
        if (left < -period)
            m_due -= left;
        if (left <= Clock::duration::zero())
            return;
        m_actions.sleep(std::min(left, longest));
    }
}
