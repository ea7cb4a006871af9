#include "Finding.h"

#include <algorithm>
#include <tuple>

std::string_view nameOf(Effect effect) {
    return effect == Effect::none ? "none" : "other";
}

void Findings::beginFile(const std::string& path) {
    if (std::find(m_files.begin(), m_files.end(), path) == m_files.end())
        m_files.push_back(path);
}

std::vector<Finding> Findings::sorted() const {
    std::vector<Finding> sorted = m_findings;
    const auto place = [&](const Finding& finding) {
        const auto file = std::find(m_files.begin(), m_files.end(), finding.file) - m_files.begin();
        return std::tuple(file, finding.from.line, finding.from.column);
    };
    std::stable_sort(sorted.begin(), sorted.end(),
                     [&](const Finding& one, const Finding& other) { return place(one) < place(other); });
    return sorted;
}
