#include <kor/Feed.h>
#include <kor/support/RunningScene.h>
#include <support/TemporaryFolder.h>

#include <asio/connect.hpp>
#include <asio/io_context.hpp>
#include <asio/ip/address_v4.hpp>
#include <asio/ip/tcp.hpp>
#include <asio/write.hpp>

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <functional>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace {

using Lines = std::vector<std::string>;

std::string errorOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "nothing";
}

Lines takeAll(Feed& feed) {
    Lines lines;
    while (feed.take(lines)) {
    }
    return lines;
}

/// Takes until there are so many lines, or for ten seconds.
Lines takeSome(Feed& feed, std::size_t count) {
    Lines lines;
    for (int attempt = 0; attempt < 1000 && lines.size() < count; ++attempt) {
        EXPECT_TRUE(feed.take(lines));
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return lines;
}

/// A socket on a free port, and clients for it.
class SocketFeed : public testing::Test {
protected:
    SocketFeed() : feed(socketFeed(0)) {
        const std::string line = errors.take();
        EXPECT_EQ(line.find("Kor: listening on 127.0.0.1:"), 0U) << line;
        port = std::atoi(line.substr(line.rfind(':') + 1).c_str());
    }

    asio::ip::tcp::socket connect() {
        asio::ip::tcp::socket socket(context);
        socket.connect({asio::ip::address_v4::loopback(), static_cast<asio::ip::port_type>(port)});
        return socket;
    }

    static void send(asio::ip::tcp::socket& socket, const std::string& text) {
        asio::write(socket, asio::buffer(text));
    }

    ErrorOutput errors;
    std::unique_ptr<Feed> feed;
    asio::io_context context;
    int port = 0;
};

TEST(KorFeed, ReadsTheLinesOfAFile) {
    const TemporaryFolder folder;
    EXPECT_EQ(takeAll(*fileFeed(folder.write("f", "one\ntwo\r\n\nlast"))), (Lines{"one", "two", "", "last"}));
    EXPECT_EQ(takeAll(*fileFeed(folder.write("f", "one\n"))), Lines{"one"});
    EXPECT_EQ(takeAll(*fileFeed(folder.write("f", ""))), Lines{});
    EXPECT_EQ(takeAll(*fileFeed(folder.write("f", "\r"))), Lines{""});
}

TEST(KorFeed, ReadsASmallFileAtOnceAndALargeOneInPortions) {
    const TemporaryFolder folder;
    Lines lines = {"before"};
    EXPECT_FALSE(fileFeed(folder.write("f", "one\n"))->take(lines));
    EXPECT_EQ(lines, (Lines{"before", "one"}));
    std::string text;
    for (int line = 0; line < 300'000; ++line)
        text += std::to_string(line) + '\n';
    const auto feed = fileFeed(folder.write("f", text));
    lines.clear();
    EXPECT_TRUE(feed->take(lines));
    EXPECT_LT(lines.size(), 300'000U);
    while (feed->take(lines)) {
    }
    ASSERT_EQ(lines.size(), 300'000U);
    EXPECT_EQ(lines[299'999], "299999");
}

TEST(KorFeed, LeavesOutLinesOfMoreThanAMillionBytes) {
    const TemporaryFolder folder;
    ErrorOutput errors;
    const std::string longest(1'000'000, 'x');
    EXPECT_EQ(takeAll(*fileFeed(folder.write("f", longest + "\r\n" + longest + "x\nshort\n" + longest + longest))),
              (Lines{longest, "short"}));
    const std::string message = "Kor: a command line of more than 1000000 bytes is left out\n";
    EXPECT_EQ(errors.take(), message + message);
}

TEST(KorFeed, TellsFilesThatCannotBeRead) {
    const TemporaryFolder folder;
    EXPECT_EQ(errorOf([&] { fileFeed(folder.path("none")); }), folder.path("none") + ": cannot be read");
    EXPECT_EQ(errorOf([&] { fileFeed(folder.path()); }), folder.path() + ": is a folder");
    EXPECT_NE(errorOf([&] { fileFeed(""); }), "nothing");
}

TEST(KorFeed, EndsWhileStandardInputIsStillOpen) {
    const auto feed = fileFeed("-");
    Lines lines;
    feed->take(lines);
}

TEST(KorFeed, TellsPortsThatCannotBeUsed) {
    EXPECT_EQ(errorOf([] { socketFeed(-1); }), "port -1: must be from 0 to 65535");
    EXPECT_EQ(errorOf([] { socketFeed(65'536); }), "port 65536: must be from 0 to 65535");
}

TEST_F(SocketFeed, TellsAPortInUse) {
    const std::string error = errorOf([this] { socketFeed(port); });
    EXPECT_EQ(error.find("port " + std::to_string(port) + ": "), 0U) << error;
    EXPECT_EQ(error.find('\n'), std::string::npos);
}

TEST_F(SocketFeed, NeverWaits) {
    Lines lines;
    EXPECT_TRUE(feed->take(lines));
    const auto client = connect();
    EXPECT_TRUE(feed->take(lines));
    EXPECT_EQ(lines, Lines{});
}

TEST_F(SocketFeed, TakesLinesWhenTheyAreComplete) {
    auto client = connect();
    send(client, "one\r\ntw");
    EXPECT_EQ(takeSome(*feed, 1), Lines{"one"});
    send(client, "o\nthree");
    EXPECT_EQ(takeSome(*feed, 1), Lines{"two"});
    client.close();
    EXPECT_EQ(takeSome(*feed, 1), Lines{"three"});
}

TEST_F(SocketFeed, ServesClientsAtTheSameTimeAndOneAfterTheOther) {
    auto first = connect();
    auto second = connect();
    send(first, "fir");
    send(second, "second\n");
    EXPECT_EQ(takeSome(*feed, 1), Lines{"second"});
    send(first, "st\n");
    EXPECT_EQ(takeSome(*feed, 1), Lines{"first"});
    first.close();
    second.close();
    auto third = connect();
    send(third, "third\n");
    EXPECT_EQ(takeSome(*feed, 1), Lines{"third"});
}

TEST_F(SocketFeed, ServesMoreClientsThanAtATime) {
    Lines lines;
    for (int count = 0; count < 250; ++count) {
        auto client = connect();
        send(client, std::to_string(count));
    }
    EXPECT_EQ(takeSome(*feed, 250).size(), 250U);
}

TEST_F(SocketFeed, LetsAClientThatIsFarAheadWait) {
    std::thread writer([this] {
        auto client = connect();
        std::string text;
        for (int line = 0; line < 300'000; ++line)
            text += "a line of no matter what length\n";
        send(client, text);
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    Lines lines;
    feed->take(lines);
    EXPECT_LE(lines.size(), 100'000U);
    lines = takeSome(*feed, 300'000 - lines.size());
    writer.join();
    EXPECT_EQ(lines.back(), "a line of no matter what length");
}

TEST_F(SocketFeed, EndsWhileClientsAreConnectedAndWait) {
    auto idle = connect();
    auto busy = connect();
    std::string text(3'000'000, '\n');
    std::thread writer([&] {
        asio::error_code closed;
        asio::write(busy, asio::buffer(text), closed);
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    feed.reset();
    writer.join();
}

} // namespace
