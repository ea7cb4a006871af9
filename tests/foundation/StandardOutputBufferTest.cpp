#include <orbel/foundation/DataPrintf.h>
#include <orbel/foundation/StandardOutputBuffer.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>

namespace {

class OpenBuffer : public StandardOutputBuffer {
public:
    using StandardOutputBuffer::epptr;
    using StandardOutputBuffer::overflow;
    using StandardOutputBuffer::pbase;
    using StandardOutputBuffer::pptr;
};

TEST(StandardOutputBufferTest, WritesAStreamToStandardOutput) {
    testing::internal::CaptureStdout();
    std::ostream os(&outbuf);
    os << "scene" << '/' << 42;
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "scene/42");
    EXPECT_TRUE(os.good());
}

TEST(StandardOutputBufferTest, KeepsTheOrderWithOtherOutputWithoutFlushing) {
    testing::internal::CaptureStdout();
    std::ostream os(&outbuf);
    os << "a";
    std::fputs("b", stdout);
    os << "c";
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "abc");
}

TEST(StandardOutputBufferTest, HasNoPutArea) {
    OpenBuffer buffer;
    EXPECT_EQ(buffer.pbase(), nullptr);
    EXPECT_EQ(buffer.pptr(), nullptr);
    EXPECT_EQ(buffer.epptr(), nullptr);
    testing::internal::CaptureStdout();
    EXPECT_EQ(buffer.sputc('x'), 'x');
    EXPECT_EQ(buffer.pbase(), nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "x");
}

TEST(StandardOutputBufferTest, OverflowReturnsTheCharacterWritten) {
    OpenBuffer buffer;
    testing::internal::CaptureStdout();
    EXPECT_EQ(buffer.overflow('A'), 'A');
    EXPECT_EQ(buffer.overflow(0xE4), 0xE4);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "A\xE4");
}

TEST(StandardOutputBufferTest, SyncAndPositionAreThoseOfAnyBuffer) {
    EXPECT_EQ(outbuf.pubsync(), 0);
    EXPECT_EQ(outbuf.pubseekoff(0, std::ios::cur), std::streampos(std::streamoff(-1)));
}

TEST(StandardOutputBufferTest, InitIOStreamsAttachesItToNoStream) {
    std::streambuf* const before[] = {std::cout.rdbuf(), std::cerr.rdbuf(), std::clog.rdbuf()};
    InitIOStreams();
    EXPECT_EQ(std::cout.rdbuf(), before[0]);
    EXPECT_EQ(std::cerr.rdbuf(), before[1]);
    EXPECT_EQ(std::clog.rdbuf(), before[2]);
    EXPECT_NE(std::cout.rdbuf(), &outbuf);
}

// In a process of its own, which may lose its standard output.
TEST(StandardOutputBufferDeathTest, OverflowReturnsEndOfFileWhenTheWriteFails) {
    const std::string file = testing::TempDir() + "orbel_read_only_output";
    EXPECT_EXIT(
        {
            std::fclose(std::fopen(file.c_str(), "w"));
            if (!std::freopen(file.c_str(), "r", stdout))
                std::exit(2);
            OpenBuffer buffer;
            std::ostream os(&buffer);
            os << 'x';
            std::exit(buffer.overflow('x') == OpenBuffer::traits_type::eof() && os.bad() ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
    std::remove(file.c_str());
}

} // namespace
