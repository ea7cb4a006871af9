#ifndef ORBEL_TESTS_SUPPORT_WORKINGFOLDER_H
#define ORBEL_TESTS_SUPPORT_WORKINGFOLDER_H

#include <support/TemporaryFolder.h>

#include <filesystem>

/// An empty folder that is the current directory while it exists.
class WorkingFolder {
public:
    WorkingFolder() { std::filesystem::current_path(m_folder.path()); }
    WorkingFolder(const WorkingFolder&) = delete;
    WorkingFolder& operator=(const WorkingFolder&) = delete;
    // Windows does not remove the current directory.
    ~WorkingFolder() { std::filesystem::current_path(m_before); }

    std::string write(const std::string& name, std::string_view bytes) const { return m_folder.write(name, bytes); }

    std::string makeFolder(const std::string& name) const {
        std::filesystem::create_directory(m_folder.path(name));
        return m_folder.path(name);
    }

private:
    std::filesystem::path m_before = std::filesystem::current_path();
    TemporaryFolder m_folder;
};

#endif
