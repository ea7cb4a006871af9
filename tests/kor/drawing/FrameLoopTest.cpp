#include <kor/FrameLoop.h>

#include <gtest/gtest.h>

#include <chrono>
#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

using std::chrono::milliseconds;
using Lines = std::vector<std::string>;

/// Gives portions of lines, one at each call. One that ends does so with the last portion.
class TestFeed : public Feed {
public:
    TestFeed(std::vector<Lines> portions, bool ends) : m_portions(std::move(portions)), m_ends(ends) {}

    bool take(Lines& lines) override {
        if (m_next < m_portions.size())
            lines.insert(lines.end(), m_portions[m_next].begin(), m_portions[m_next].end());
        return ++m_next < m_portions.size() || !m_ends;
    }

private:
    std::vector<Lines> m_portions;
    bool m_ends;
    std::size_t m_next = 0;
};

/// Sends as fast as it is asked.
class Flood : public Feed {
public:
    bool take(Lines& lines) override {
        lines.resize(1000, "more");
        return true;
    }
};

/// A loop that notes what it does: commands as they are, "|" for a frame. Its clock stands still but for sleep and what
/// the frames take.
class FrameLoops : public testing::Test {
protected:
    FrameLoops() : loop(actions()) { loop.setFramesPerSecond(0); }

    FrameLoop::Actions actions() {
        FrameLoop::Actions actions;
        actions.runCommands = [this](const std::string& line) {
            ++commands;
            log += line;
            interrupted = interrupted || line == "stop";
        };
        actions.callFrame = [this] {
            log += '|';
            starts.push_back(milliseconds(time.time_since_epoch() / milliseconds(1)).count());
            const std::size_t frame = starts.size() - 1;
            time += milliseconds(frame < durations.size() ? durations[frame] : 0);
            interrupted = interrupted || starts.size() == interruptAt;
        };
        actions.isInterrupted = [this] { return interrupted; };
        actions.now = [this] { return time; };
        actions.sleep = [this](FrameLoop::Clock::duration duration) {
            ++sleeps;
            time += duration;
            interrupted = interrupted || sleeps == interruptAtSleep;
        };
        return actions;
    }

    void feed(std::vector<Lines> portions, bool ends = true) {
        loop.addFeed(std::make_unique<TestFeed>(std::move(portions), ends));
    }

    std::string log;
    std::size_t commands = 0;
    std::vector<long long> starts;
    std::vector<int> durations;
    std::size_t interruptAt = 0;
    std::size_t sleeps = 0;
    std::size_t interruptAtSleep = 0;
    bool interrupted = false;
    FrameLoop::Clock::time_point time;
    FrameLoop loop;
};

} // namespace

TEST_F(FrameLoops, EndsAfterItsFrames) {
    loop.setFrames(3);
    loop.run();
    EXPECT_EQ(log, "|||");
}

TEST_F(FrameLoops, RunsOneBatchPerFrame) {
    feed({{"a", "b", "~", "c", "~", "d"}});
    loop.run();
    EXPECT_EQ(log, "ab|c|d|");
}

TEST_F(FrameLoops, LastBatchMayHaveItsEnd) {
    feed({{"a", "~", "b", "~"}});
    loop.run();
    EXPECT_EQ(log, "a|b|");
}

TEST_F(FrameLoops, EmptyBatchIsAFrame) {
    feed({{"a", "~", "~", "~", "b"}});
    loop.run();
    EXPECT_EQ(log, "a|||b|");
}

TEST_F(FrameLoops, FeedWithoutLinesIsOneFrame) {
    feed({{}});
    loop.run();
    EXPECT_EQ(log, "|");
}

TEST_F(FrameLoops, BatchEndsWhereNoMoreLinesHaveCome) {
    feed({{"a"}, {"b"}, {}, {"c", "~", "d"}, {}, {}, {"e"}});
    loop.run();
    EXPECT_EQ(log, "ab|c|d||e|");
}

TEST_F(FrameLoops, LongBatchMayComeInPortions) {
    feed({{"a", "b"}, {"c", "~", "d"}, {"e", "~"}});
    loop.run();
    EXPECT_EQ(log, "abc|de|");
}

TEST_F(FrameLoops, FramesGoOnWhenCommandsHaveEnded) {
    loop.setFrames(4);
    feed({{"a", "~", "b"}});
    loop.run();
    EXPECT_EQ(log, "a|b|||");
}

TEST_F(FrameLoops, FramesEndBeforeCommands) {
    loop.setFrames(2);
    feed({{"a", "~", "b", "~", "c"}});
    loop.run();
    EXPECT_EQ(log, "a|b|");
}

TEST_F(FrameLoops, EachFeedRunsOneBatch) {
    feed({{"a", "~", "b", "~", "c"}});
    feed({{"x", "~", "y"}}, false);
    loop.run();
    EXPECT_EQ(log, "ax|by|c|");
}

TEST_F(FrameLoops, FeedThatNeverEndsKeepsTheLoop) {
    feed({{"a"}}, false);
    interruptAt = 4;
    loop.run();
    EXPECT_EQ(log, "a||||");
}

TEST_F(FrameLoops, InterruptStopsABatch) {
    feed({{"a", "stop", "b", "~", "c"}});
    loop.run();
    EXPECT_EQ(log, "astop|");
}

TEST_F(FrameLoops, FloodDoesNotStopTheFrames) {
    loop.addFeed(std::make_unique<Flood>());
    loop.setFrames(2);
    loop.run();
    EXPECT_EQ(starts.size(), 2U);
    EXPECT_EQ(commands, 200'000U);
}

TEST_F(FrameLoops, AsFastAsItCanNeverSleeps) {
    loop.setFrames(100);
    loop.run();
    EXPECT_EQ(sleeps, 0U);
}

TEST_F(FrameLoops, FramesHaveAnEvenPace) {
    loop.setFramesPerSecond(25);
    loop.setFrames(4);
    durations = {10, 39, 0, 5};
    loop.run();
    EXPECT_EQ(starts, (std::vector<long long>{0, 40, 80, 120}));
}

TEST_F(FrameLoops, OneLateFrameIsCaughtUp) {
    loop.setFramesPerSecond(25);
    loop.setFrames(4);
    durations = {50};
    loop.run();
    EXPECT_EQ(starts, (std::vector<long long>{0, 50, 80, 120}));
}

TEST_F(FrameLoops, FramesDoNotHurryAfterAPause) {
    loop.setFramesPerSecond(25);
    loop.setFrames(4);
    durations = {1000};
    loop.run();
    EXPECT_EQ(starts, (std::vector<long long>{0, 1000, 1040, 1080}));
}

TEST_F(FrameLoops, DoesNotSleepBehindTheLastFrame) {
    loop.setFramesPerSecond(25);
    loop.setFrames(1);
    loop.run();
    EXPECT_EQ(sleeps, 0U);
}

TEST_F(FrameLoops, InterruptIsNoticedInALongSleep) {
    loop.setFramesPerSecond(0.1);
    loop.setFrames(2);
    interruptAtSleep = 3;
    loop.run();
    EXPECT_EQ(log, "|");
    EXPECT_LE(time.time_since_epoch(), milliseconds(200));
}
