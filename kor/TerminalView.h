#ifndef KOR_TERMINALVIEW_H
#define KOR_TERMINALVIEW_H

#include "Shapes.h"
#include "Terminal.h"

#include <iosfwd>
#include <optional>

/// Draws frames on a terminal, each over the one before, as large as the terminal is. Hides the cursor as long as it
/// lives and leaves the last frame on the screen.
class TerminalView {
public:
    /// Of a frame that nobody sees the size of; what a smaller terminal has no room for is cut off.
    static constexpr TerminalSize smallest{80, 24};

    explicit TerminalView(std::ostream& os);
    TerminalView(const TerminalView&) = delete;
    TerminalView& operator=(const TerminalView&) = delete;
    ~TerminalView();

    /// Nothing is written while frame and size stay the same.
    void draw(const Frame& frame, std::optional<TerminalSize> terminal);

private:
    std::ostream& m_os;
    std::optional<Frame> m_drawn;
    TerminalSize m_size{0, 0};
};

/// The frame as a text of the smallest size, without colours.
void printPlain(std::ostream& os, const Frame& frame);

#endif
