#ifndef KOR_FEED_H
#define KOR_FEED_H

#include <memory>
#include <string>
#include <vector>

/// Where command lines come from while the scene runs.
class Feed {
public:
    virtual ~Feed();

    /// Moves the lines that have come since the last call to the end of `lines`; false once no more can come. Never
    /// waits.
    virtual bool take(std::vector<std::string>& lines) = 0;
};

/// Lines of a file; "-" is standard input. Throws std::runtime_error with one clear line.
std::unique_ptr<Feed> fileFeed(const std::string& path);

/// Lines that come through a socket of this machine. Throws std::runtime_error with one clear line.
std::unique_ptr<Feed> socketFeed(int port);

#endif
