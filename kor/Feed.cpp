#include "Feed.h"

#include "StandardInput.h"

#include <asio/buffer.hpp>
#include <asio/io_context.hpp>
#include <asio/ip/address_v4.hpp>
#include <asio/ip/tcp.hpp>
#include <asio/steady_timer.hpp>

#include <algorithm>
#include <array>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <iterator>
#include <mutex>
#include <stdexcept>
#include <string_view>
#include <thread>
#include <utility>

namespace {

constexpr std::size_t maxLine = 1'000'000;
constexpr std::size_t maxLines = 100'000;
constexpr std::size_t maxBytes = 64'000'000;
constexpr std::size_t portion = 65'536;

/// Makes lines of bytes that come bit by bit.
class LineSplitter {
public:
    /// Calls `take` with each line that is complete.
    template <class Take>
    void add(std::string_view bytes, Take take) {
        for (std::size_t end = 0; (end = bytes.find('\n')) != std::string_view::npos; bytes.remove_prefix(end + 1)) {
            append(bytes.substr(0, end));
            finish(take);
        }
        append(bytes);
    }

    /// The same with what is left without a line end.
    template <class Take>
    void end(Take take) {
        if (!m_line.empty() || m_isTooLong)
            finish(take);
    }

private:
    void append(std::string_view bytes) {
        // A carriage return may still go.
        m_isTooLong = m_isTooLong || m_line.size() + bytes.size() > maxLine + 1;
        if (m_isTooLong)
            m_line.clear();
        else
            m_line += bytes;
    }

    template <class Take>
    void finish(Take take) {
        if (!m_line.empty() && m_line.back() == '\r')
            m_line.pop_back();
        if (m_isTooLong || m_line.size() > maxLine)
            std::cerr << "Kor: a command line of more than " + std::to_string(maxLine) + " bytes is left out\n";
        else
            take(std::move(m_line));
        m_line.clear();
        m_isTooLong = false;
    }

    std::string m_line;
    bool m_isTooLong = false;
};

/// The lines between who reads and who takes them. Who is too far ahead waits.
class LineQueue {
public:
    /// False when nobody will take any more.
    bool push(std::string line) {
        std::unique_lock lock(m_mutex);
        m_isRoom.wait(lock, [this] { return m_isAbandoned || (m_lines.size() < maxLines && m_bytes < maxBytes); });
        if (m_isAbandoned)
            return false;
        m_bytes += line.size();
        m_lines.push_back(std::move(line));
        return true;
    }

    void end() {
        const std::lock_guard lock(m_mutex);
        m_isEnded = true;
    }

    bool isAbandoned() {
        const std::lock_guard lock(m_mutex);
        return m_isAbandoned;
    }

    void abandon() {
        const std::lock_guard lock(m_mutex);
        m_isAbandoned = true;
        m_isRoom.notify_all();
    }

    /// False after the end.
    bool take(std::vector<std::string>& lines) {
        const std::lock_guard lock(m_mutex);
        lines.insert(lines.end(), std::make_move_iterator(m_lines.begin()), std::make_move_iterator(m_lines.end()));
        m_lines.clear();
        m_bytes = 0;
        m_isRoom.notify_all();
        return !m_isEnded;
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_isRoom;
    std::vector<std::string> m_lines;
    std::size_t m_bytes = 0;
    bool m_isEnded = false;
    bool m_isAbandoned = false;
};

/// A file that has an end, read in portions without waiting.
class RegularFile : public Feed {
public:
    explicit RegularFile(std::ifstream file) : m_file(std::move(file)) {}

    bool take(std::vector<std::string>& lines) override {
        const auto add = [&](std::string line) { lines.push_back(std::move(line)); };
        std::string bytes(maxLine, '\0');
        m_file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        m_splitter.add({bytes.data(), static_cast<std::size_t>(m_file.gcount())}, add);
        if (m_file && m_file.peek() != std::ifstream::traits_type::eof())
            return true;
        m_splitter.end(add);
        return false;
    }

private:
    std::ifstream m_file;
    LineSplitter m_splitter;
};

/// What may keep its reader waiting for ever: a thread of its own reads, and is left behind when the feed ends.
class Pipe : public Feed {
public:
    /// Like readStandardInput.
    using Read = std::function<std::size_t(char* bytes, std::size_t capacity)>;

    explicit Pipe(Read read) {
        std::thread([queue = m_queue, read = std::move(read)] { readAll(*queue, read); }).detach();
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    ~Pipe() override { m_queue->abandon(); }

    bool take(std::vector<std::string>& lines) override { return m_queue->take(lines); }

private:
    static void readAll(LineQueue& queue, const Read& read) {
        const auto push = [&](std::string line) { queue.push(std::move(line)); };
        LineSplitter splitter;
        std::array<char, portion> bytes;
        for (std::size_t count = 1; count > 0 && !queue.isAbandoned();) {
            count = read(bytes.data(), bytes.size());
            splitter.add({bytes.data(), count}, push);
        }
        splitter.end(push);
        queue.end();
    }

    std::shared_ptr<LineQueue> m_queue = std::make_shared<LineQueue>();
};

/// Opens the file with the first read, since that may wait too.
Pipe::Read readerOf(const std::string& path) {
    auto file = std::make_shared<std::ifstream>();
    return [file, path](char* bytes, std::size_t capacity) -> std::size_t {
        if (!file->is_open())
            file->open(path, std::ios::binary);
        std::streambuf& buffer = *file->rdbuf();
        if (!file->is_open() || buffer.sgetc() == std::ifstream::traits_type::eof())
            return 0;
        const auto count = std::min(buffer.in_avail(), static_cast<std::streamsize>(capacity));
        return static_cast<std::size_t>(buffer.sgetn(bytes, std::max<std::streamsize>(count, 1)));
    };
}

/// A client of the socket.
class Session : public std::enable_shared_from_this<Session> {
public:
    Session(asio::ip::tcp::socket socket, LineQueue& queue, std::function<void()> onEnd)
        : m_socket(std::move(socket)), m_queue(queue), m_onEnd(std::move(onEnd)) {}

    void read() {
        m_socket.async_read_some(asio::buffer(m_bytes),
                                 [self = shared_from_this()](const asio::error_code& error, std::size_t count) {
                                     self->handle(error, count);
                                 });
    }

private:
    void handle(const asio::error_code& error, std::size_t count) {
        const auto push = [this](std::string line) { m_queue.push(std::move(line)); };
        m_splitter.add({m_bytes.data(), count}, push);
        if (!error) {
            read();
            return;
        }
        m_splitter.end(push);
        m_onEnd();
    }

    asio::ip::tcp::socket m_socket;
    LineQueue& m_queue;
    std::function<void()> m_onEnd;
    LineSplitter m_splitter;
    std::array<char, portion> m_bytes{};
};

/// Clients on this machine send lines. While they wait for room, all of them wait.
class Socket : public Feed {
public:
    explicit Socket(int port) : m_acceptor(m_context), m_timer(m_context) {
        try {
            open(port);
        } catch (const std::exception& error) {
            throw std::runtime_error("port " + std::to_string(port) + ": " + error.what());
        }
        std::cerr << "Kor: listening on 127.0.0.1:" + std::to_string(m_acceptor.local_endpoint().port()) + '\n';
        accept();
        m_thread = std::thread([this] { m_context.run(); });
    }
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;
    ~Socket() override {
        m_queue.abandon();
        m_context.stop();
        m_thread.join();
    }

    bool take(std::vector<std::string>& lines) override { return m_queue.take(lines); }

private:
    /// Further ones wait until one ends.
    static constexpr int maxClients = 100;

    void open(int port) {
        if (port < 0 || port > 65'535)
            throw std::runtime_error("must be from 0 to 65535");
        asio::error_code error;
        m_acceptor.open(asio::ip::tcp::v4());
        // On Windows it would let two programs listen at once; elsewhere a port in use stays refused.
        constexpr bool isWindows = std::filesystem::path::preferred_separator == '\\';
        m_acceptor.set_option(asio::ip::tcp::acceptor::reuse_address(!isWindows));
        m_acceptor.bind({asio::ip::address_v4::loopback(), static_cast<asio::ip::port_type>(port)}, error);
        if (!error)
            m_acceptor.listen(asio::socket_base::max_listen_connections, error);
        if (error)
            throw std::runtime_error(error.message());
    }

    void accept() {
        m_acceptor.async_accept([this](const asio::error_code& error, asio::ip::tcp::socket socket) {
            if (error) {
                acceptLater();
                return;
            }
            ++m_clients;
            std::make_shared<Session>(std::move(socket), m_queue, [this] { forgetClient(); })->read();
            if (m_clients < maxClients)
                accept();
        });
    }

    void forgetClient() {
        if (m_clients-- == maxClients)
            accept();
    }

    /// Such as when the machine has no more sockets at the moment.
    void acceptLater() {
        m_timer.expires_after(std::chrono::milliseconds(100));
        m_timer.async_wait([this](const asio::error_code& error) {
            if (!error)
                accept();
        });
    }

    LineQueue m_queue;
    int m_clients = 0;
    // The last of what the sessions use, since it destroys them.
    asio::io_context m_context;
    asio::ip::tcp::acceptor m_acceptor;
    asio::steady_timer m_timer;
    std::thread m_thread;
};

} // namespace

Feed::~Feed() = default;

std::unique_ptr<Feed> fileFeed(const std::string& path) {
    if (path == "-")
        return std::make_unique<Pipe>(readStandardInput);
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    if (!std::filesystem::exists(status))
        throw std::runtime_error(path + ": cannot be read");
    if (std::filesystem::is_directory(status))
        throw std::runtime_error(path + ": is a folder");
    if (!std::filesystem::is_regular_file(status))
        return std::make_unique<Pipe>(readerOf(path));
    std::ifstream file(path, std::ios::binary);
    if (!file)
        throw std::runtime_error(path + ": cannot be read");
    return std::make_unique<RegularFile>(std::move(file));
}

std::unique_ptr<Feed> socketFeed(int port) {
    return std::make_unique<Socket>(port);
}
