#include "Target.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

std::string bytesOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::vector<fs::path> filesOf(const fs::path& place) {
    if (!fs::is_directory(place))
        return {place};
    std::vector<fs::path> files;
    for (const fs::directory_entry& entry : fs::directory_iterator(place))
        if (entry.is_regular_file())
            files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

} // namespace

// fuzz_replay TARGET [--verbose] FILE-OR-FOLDER... gives a target the inputs of files, with any compiler.
int main(int argc, char** argv) {
    std::vector<std::string> arguments(argv + std::min(argc, 1), argv + argc);
    const bool isVerbose = std::erase(arguments, "--verbose") != 0;
    const auto target = std::find_if(targets().begin(), targets().end(), [&](const Target* candidate) {
        return !arguments.empty() && candidate->name == arguments.front();
    });
    if (target == targets().end() || arguments.size() < 2) {
        std::cerr << "usage: fuzz_replay TARGET [--verbose] FILE-OR-FOLDER...\ntargets:";
        for (const Target* candidate : targets())
            std::cerr << ' ' << candidate->name;
        std::cerr << '\n';
        return 2;
    }
    std::size_t count = 0;
    for (auto place = arguments.begin() + 1; place != arguments.end(); ++place)
        for (const fs::path& file : filesOf(fs::absolute(*place))) {
            if (isVerbose)
                std::cerr << file.string() << std::endl;
            runSilently(**target, bytesOf(file));
            ++count;
        }
    std::cout << (*target)->name << ": " << count << " inputs\n";
    return count == 0 ? 1 : 0;
}
