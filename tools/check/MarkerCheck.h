#ifndef ORBEL_TOOLS_CHECK_MARKERCHECK_H
#define ORBEL_TOOLS_CHECK_MARKERCHECK_H

#include <orbel/tables/TableListener.h>
#include <tools/check/LineCheck.h>

#include <span>
#include <string>
#include <string_view>

/// What conversion tables and presets share: sections behind markers, a version on the first line, comments that begin
/// with a comma.
class MarkerCheck : protected tables::TableListener, protected LineCheck {
protected:
    /// `section` is the marker of sections; `markers` are all that such a file may have.
    MarkerCheck(Findings& findings, std::string_view section, std::span<const std::string_view> markers);

    /// Throws Trouble when the file cannot be read.
    void beginTables(const std::string& path);
    void onLine(std::string_view line, tables::LineUse use, std::string_view what) override;

    /// Comes first for each line, whatever is said about it.
    virtual void remember(tables::LineUse use, std::string_view what) = 0;
    /// A line that is neither a section nor a version nor a comment, unless something else was said about it.
    virtual void onOtherLine(tables::LineUse use, Effect effect, std::string_view what) = 0;
    /// A section that goes on.
    virtual void onSectionAgain() {}
    /// What the line is that a marker was meant to be.
    virtual std::string_view kindOf(tables::LineUse use) const = 0;

    /// Text between the marker and its comma, and behind the second comma.
    void checkMarkerLine(std::string_view marker);
    bool looksLikeComment() const;

private:
    Effect effectOf(tables::LineUse use);
    bool checkMarker(tables::LineUse use, Effect effect);
    std::string_view meantMarker() const;
    std::string whyNoMarker(std::string_view marker) const;

    std::string_view m_section;
    std::span<const std::string_view> m_markers;
    /// Whether the next line can tell the version.
    bool m_isFirst = true;
};

#endif
