#ifndef ORBEL_TABLES_TABLELISTENER_H
#define ORBEL_TABLES_TABLELISTENER_H

#include <string>
#include <string_view>

namespace tables {

/// What becomes of a line of a text table. Comments tell what is heard with it.
enum class LineUse {
    /// The version, normalised.
    version,
    /// A version line without a version: the reader stops here.
    abandoned,
    /// Begins with "," (with "#" or nothing in a case table).
    skipped,
    /// Of fewer characters than the reader wants.
    tooShort,

    /// The name of the section, normalised, like that of the next two.
    sectionNew,
    sectionAgain,
    /// Names the section that it stands in.
    sectionCurrent,
    sectionWithoutName,

    /// The delimiters from here on.
    delimiters,
    delimitersUnchanged,

    /// The key; of a preset the name, which others may have as well.
    row,
    /// The key, which stands in the table already: the first row counts.
    rowAgain,
    /// Before the first section.
    rowOutside,
    /// A row without a value, a preset without a name.
    rowTooShort,
    /// A row of a section whose header has no name column.
    rowWithoutHeader,

    header,
    headerWithoutName,

    /// Of fewer than two fields.
    pairTooShort,
    /// One of the two codes is missing or out of range.
    pairWithoutCode,
    pair,
    /// One of the characters has a partner already, and keeps it.
    pairHalf,
    /// Both have.
    pairAgain,
};

/// Hears what a reader of text tables makes of its lines.
class TableListener {
public:
    virtual ~TableListener() = default;

    /// Comes before the lines of a file that could be opened.
    virtual void onFile(const std::string& /*path*/) {}
    /// Once for each line that is read, with its line end, or for each piece of a line that is too long. Views are
    /// valid during the call.
    virtual void onLine(std::string_view line, LineUse use, std::string_view what) = 0;
};

} // namespace tables

#endif
