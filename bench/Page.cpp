#include "Page.h"

#include "Detail.h"

#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string_view>

namespace {

constexpr std::string_view begin = "<!-- what ./dev bench writes begins here -->\n";
constexpr std::string_view end = "<!-- what ./dev bench writes ends here -->\n";

std::string content(const Results& results, const Goals& goals, const std::string& machine) {
    std::ostringstream out;
    out << machine << "\n\n### Goals\n\n";
    goals.table().printMarkdown(out);
    for (const char* operation : {"set", "get", "build", "delete"}) {
        const Table table = bySubject(results, operation);
        if (table.empty())
            continue;
        out << "\n### Nanoseconds per " << operation << "\n\n";
        table.printMarkdown(out);
        if (std::string(operation) == "set" && results.has("set", boostTree))
            out << '\n' << silentSets << '\n';
    }
    return out.str();
}

std::string read(const std::filesystem::path& file) {
    std::ostringstream text;
    text << std::ifstream(file).rdbuf();
    return text.str();
}

void write(const std::filesystem::path& file, const std::string& text) {
    std::ofstream out(file);
    out << text;
    if (!out.flush())
        throw std::runtime_error("cannot write " + file.string());
}

/// The page as it is, with what is between the markers replaced; a page of its own where there are none.
std::string page(const std::string& before, const std::string& inside) {
    const std::string marked = std::string(begin) + '\n' + inside + '\n' + std::string(end);
    const std::size_t from = before.find(begin);
    const std::size_t to = before.find(end, from == std::string::npos ? 0 : from);
    if (from == std::string::npos || to == std::string::npos)
        return "# Performance\n\n" + marked + "\n![Nanoseconds per set by path](performance.svg)\n";
    return before.substr(0, from) + marked + before.substr(to + end.size());
}

} // namespace

void writePage(const std::filesystem::path& folder, const Results& results, const Goals& goals,
               const std::string& machine) {
    if (goals.empty())
        return;
    std::filesystem::create_directories(folder);
    const std::filesystem::path file = folder / "performance.md";
    write(file, page(read(file), content(results, goals, machine)));
    const Table curves = bySubject(results, "set");
    if (curves.empty())
        return;
    std::ostringstream data;
    curves.print(data);
    write(folder / "performance.dat", data.str());
}
