#ifndef ORBEL_TESTS_SUPPORT_TEMPORARYFOLDER_H
#define ORBEL_TESTS_SUPPORT_TEMPORARYFOLDER_H

#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <string_view>
#include <system_error>

/// An empty folder of its own, removed with everything in it.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::random_device random;
        do
            m_path = std::filesystem::temp_directory_path() / ("orbel-test-" + std::to_string(random()));
        while (!std::filesystem::create_directory(m_path));
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code leftBehind;
        std::filesystem::remove_all(m_path, leftBehind);
    }

    std::string path() const { return m_path.string(); }
    std::string path(const std::string& name) const { return (m_path / name).string(); }

    /// Writes a file of these bytes, and returns its path.
    std::string write(const std::string& name, std::string_view bytes) const {
        std::ofstream file(m_path / name, std::ios::binary);
        file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        return path(name);
    }

private:
    std::filesystem::path m_path;
};

#endif
