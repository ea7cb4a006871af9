#include <orbel/foundation/DataPrintf.h>
#include <orbel/foundation/WideStandardOutputBuffer.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>

namespace {

class OpenWideBuffer : public WideStandardOutputBuffer {
public:
    using WideStandardOutputBuffer::epptr;
    using WideStandardOutputBuffer::overflow;
    using WideStandardOutputBuffer::pbase;
    using WideStandardOutputBuffer::pptr;
};

std::string contentOf(const std::string& file) {
    std::string content;
    if (FILE* in = std::fopen(file.c_str(), "r")) {
        for (int character = std::fgetc(in); character != EOF; character = std::fgetc(in))
            content += static_cast<char>(character);
        std::fclose(in);
    }
    return content;
}

TEST(WideStandardOutputBufferTest, HasNoPutArea) {
    OpenWideBuffer buffer;
    EXPECT_EQ(buffer.pbase(), nullptr);
    EXPECT_EQ(buffer.pptr(), nullptr);
    EXPECT_EQ(buffer.epptr(), nullptr);
}

TEST(WideStandardOutputBufferTest, SyncIsThatOfAnyBuffer) {
    EXPECT_EQ(woutbuf.pubsync(), 0);
}

TEST(WideStandardOutputBufferTest, InitIOStreamsAttachesItToNoStream) {
    std::wstreambuf* const before = std::wcout.rdbuf();
    InitIOStreams();
    EXPECT_EQ(std::wcout.rdbuf(), before);
    EXPECT_NE(before, &woutbuf);
}

// Standard output is for bytes once bytes were written to it, so these need a process and a fresh output of their own.

TEST(WideStandardOutputBufferDeathTest, WritesAStreamToStandardOutput) {
    const std::string file = testing::TempDir() + "orbel_wide_output";
    EXPECT_EXIT(
        {
            if (!std::freopen(file.c_str(), "w", stdout))
                std::exit(2);
            OpenWideBuffer own;
            const bool returned = own.overflow(L'<') == L'<';
            std::wostream os(&woutbuf);
            os << L"scene" << L'/' << 42;
            const bool good = os.good();
            std::fclose(stdout);
            std::exit(returned && good ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
    EXPECT_EQ(contentOf(file), "<scene/42");
    std::remove(file.c_str());
}

TEST(WideStandardOutputBufferDeathTest, OverflowReturnsEndOfFileWhenTheWriteFails) {
    const std::string file = testing::TempDir() + "orbel_wide_read_only_output";
    EXPECT_EXIT(
        {
            std::fclose(std::fopen(file.c_str(), "w"));
            if (!std::freopen(file.c_str(), "r", stdout))
                std::exit(2);
            OpenWideBuffer buffer;
            std::wostream os(&buffer);
            os << L'x';
            std::exit(buffer.overflow(L'x') == OpenWideBuffer::traits_type::eof() && os.bad() ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
    std::remove(file.c_str());
}

} // namespace
