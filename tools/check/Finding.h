#ifndef ORBEL_TOOLS_CHECK_FINDING_H
#define ORBEL_TOOLS_CHECK_FINDING_H

#include <tools/SourceText.h>
#include <tools/check/Rules.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// What the text that is reported does.
enum class Effect {
    /// Nothing: the library has the same without it.
    none,
    /// Something else than it seems to do.
    other,
};

/// "none" or "other".
std::string_view nameOf(Effect effect);

/// Part of a file that has no effect, or another one than it seems to have.
struct Finding {
    const Rule* rule = nullptr;
    Effect effect = Effect::other;
    std::string file;
    TextPosition from;
    /// Behind its last character.
    TextPosition to;
    std::string message;
};

/// The findings of one run, in the order of the files.
class Findings {
public:
    /// What is found from now on is about this file.
    void beginFile(const std::string& path);
    void add(Finding finding) { m_findings.push_back(std::move(finding)); }

    /// Those of each file by their place, files in the order they were begun.
    std::vector<Finding> sorted() const;
    const std::vector<std::string>& files() const { return m_files; }

private:
    std::vector<std::string> m_files;
    std::vector<Finding> m_findings;
};

#endif
