#ifndef ORBEL_TOOLS_DIFF_CONFIGURATIONREADER_H
#define ORBEL_TOOLS_DIFF_CONFIGURATIONREADER_H

#include "Facts.h"

#include <string>

/// What the library makes of an operator's folder: settings, and the tables, presets, pairs of letters and types that
/// they lead to. Throws `Trouble` when the folder cannot be read.
///
///     settings/MultiOrbel               the value, the default where the file sets none
///     tables/Sky/01                     what a table makes of a key
///     presets/Clock/Short/Format        a column of a preset
///     letters/upper/0061                the partner of a letter
///     types/City/week                   the type of a field, with its count and default text
Facts readConfiguration(const std::string& folder);

#endif
