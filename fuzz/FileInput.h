#ifndef FUZZ_FILEINPUT_H
#define FUZZ_FILEINPUT_H

#include <support/Environment.h>
#include <support/TemporaryFolder.h>

#include <cstdio>
#include <string>
#include <string_view>

/// A file that takes one input after the other, in a folder of the process that goes when the process ends.
class FileInput {
public:
    explicit FileInput(const std::string& name) : m_path(m_folder.path(name)) { clearTypeVariables(); }

    std::string folder() const { return m_folder.path(); }
    const std::string& path() const { return m_path; }

    void write(std::string_view bytes) const {
        std::FILE* const file = std::fopen(m_path.c_str(), "wb");
        std::fwrite(bytes.data(), 1, bytes.size(), file);
        std::fclose(file);
    }

private:
    TemporaryFolder m_folder;
    std::string m_path;
};

#endif
