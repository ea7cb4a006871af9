#ifndef ORBEL_TOOLS_CHECK_LINECHECK_H
#define ORBEL_TOOLS_CHECK_LINECHECK_H

#include <tools/SourceText.h>
#include <tools/check/Finding.h>
#include <tools/check/Texts.h>

#include <cstddef>
#include <string>
#include <string_view>

/// Where a line is, for what is reported later.
struct LinePlace {
    std::string file;
    TextPosition from;
    TextPosition to;
};

/// Goes along with a reader of lines: takes the same lines of the same file, and knows where they are.
class LineCheck {
protected:
    LineCheck(Findings& findings, std::size_t maxLineLength);

    /// Throws Trouble when the file cannot be read.
    void beginFile(const std::string& path);
    /// The next line, or piece of a line that is too long, is what is reported from now on.
    void nextLine();
    /// What is wrong with a line whatever it says. True when there is nothing more to say about it.
    bool checkLine(Effect effect);

    /// As its reader sees it, with its line end.
    std::string_view line() const { return m_line; }
    bool isBlank() const;
    LinePlace place() const;
    /// "line 3", or with the file when it is another.
    std::string nameOf(const LinePlace& place) const;

    void report(const Rule& rule, Effect effect, const std::string& message);
    /// `part` is a view into line().
    void report(const Rule& rule, Effect effect, std::string_view part, const std::string& message);
    void report(const Rule& rule, Effect effect, const LinePlace& place, const std::string& message);
    /// What stands behind the sixty-fourth field.
    void reportDroppedFields(char separator);
    /// From the next line to the end of the file; nothing when all that is blank.
    void reportRest(const Rule& rule, Effect effect, const std::string& message);

    Findings& findings() { return m_findings; }
    const std::string& path() const { return m_path; }

private:
    void reportSpan(const Rule& rule, Effect effect, std::size_t from, std::size_t to, const std::string& message);
    std::size_t endWithoutLineEnd() const;

    Findings& m_findings;
    std::size_t m_maxLineLength;
    std::string m_path;
    std::string m_text;
    LineIndex m_lines;
    std::string_view m_line;
    /// Of the line, what is hidden in it included.
    std::size_t m_from = 0;
    std::size_t m_to = 0;
};

#endif
