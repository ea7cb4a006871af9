#ifndef KOR_FRAMELOOP_H
#define KOR_FRAMELOOP_H

#include "Feed.h"

#include <chrono>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// Calls the frames of a scene at an even pace. Each frame first runs one batch of lines of each feed: a batch ends
/// with the line "~", where no more lines have come, or after 100,000 lines. The loop ends behind the frame with the
/// last batch of a feed that has ended.
class FrameLoop {
public:
    using Clock = std::chrono::steady_clock;

    struct Actions {
        std::function<void(const std::string& line)> runCommands;
        std::function<void()> callFrame;
        /// Asked often, also while the loop waits for the next frame.
        std::function<bool()> isInterrupted;
        std::function<Clock::time_point()> now = Clock::now;
        std::function<void(Clock::duration)> sleep;
    };

    explicit FrameLoop(Actions actions);

    void addFeed(std::unique_ptr<Feed> feed);
    /// 0 is as fast as it can.
    void setFramesPerSecond(double framesPerSecond) { m_framesPerSecond = framesPerSecond; }
    /// Ends behind this frame, and not with the feeds.
    void setFrames(long long frames) { m_frames = frames; }

    void run();

private:
    struct Source {
        std::unique_ptr<Feed> feed;
        bool hasEnded = false;
        std::deque<std::string> lines;
    };

    void runBatch(Source& source);
    static bool hasLine(Source& source);
    bool isOver(long long framesDone) const;
    void waitForNext();

    Actions m_actions;
    double m_framesPerSecond = 25;
    std::optional<long long> m_frames;
    std::vector<Source> m_sources;
    Clock::time_point m_due;
};

#endif
