#ifndef ORBEL_TESTS_SUPPORT_LOCKED_H
#define ORBEL_TESTS_SUPPORT_LOCKED_H

#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>
#include <utility>

/// Takes all permissions of a file or folder away while it exists. Some users may read it nevertheless, and so may
/// everybody on Windows.
class Locked {
public:
    explicit Locked(std::string path) : m_path(std::move(path)) {
        std::filesystem::permissions(m_path, std::filesystem::perms::none);
    }
    Locked(const Locked&) = delete;
    Locked& operator=(const Locked&) = delete;
    ~Locked() {
        std::error_code leftBehind;
        std::filesystem::permissions(m_path, std::filesystem::perms::owner_all, leftBehind);
    }

    bool isReadable() const {
        std::error_code error;
        std::filesystem::directory_iterator entries(m_path, error);
        return !error || std::ifstream(m_path).good();
    }

private:
    std::string m_path;
};

#endif
