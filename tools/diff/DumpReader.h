#ifndef ORBEL_TOOLS_DIFF_DUMPREADER_H
#define ORBEL_TOOLS_DIFF_DUMPREADER_H

#include "Facts.h"

#include <string>

/// Reads what a tree has printed: a dump as text, or JSON of paths and values. Throws `Trouble` for anything else.
///
/// A dump does not quote its texts, so some are taken for others: a text that holds ";" and a line end, and in the next
/// line something that looks like a part of a dump, ends there; a text "{" looks like an array. Several texts whose
/// commas cannot be told from those between them stay together, as "tags[0-2]".
Facts readDump(const std::string& text);

/// A text of several values together is told like this when the other side has them apart.
void joinWhereTheOtherHasJoined(Facts& facts, const Facts& other);

#endif
