#ifndef ORBEL_TOOLS_SHELL_TERMINAL_H
#define ORBEL_TOOLS_SHELL_TERMINAL_H

#include "Completion.h"

#include <cstdio>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

/// Somebody who types and reads, as far as platforms differ in it.
namespace terminal {

/// Whether commands are typed and results read by a person.
bool isInteractive();
/// Whether what is written may be coloured: it is read on a terminal that can, and nobody has set NO_COLOR.
bool hasColours(std::FILE* stream);

/// What may stand in a line up to the cursor.
using Complete = std::function<Completions(std::string_view line)>;

/// Reads lines that can be edited. Only one can exist at a time.
class LineEditor {
public:
    virtual ~LineEditor() = default;

    /// The next line, without its end; nothing when there is none any more.
    virtual std::optional<std::string> read(const std::string& prompt) = 0;
};

/// Lines of earlier sessions are kept where the platform keeps such things.
std::unique_ptr<LineEditor> makeLineEditor(Complete complete);

} // namespace terminal

#endif
