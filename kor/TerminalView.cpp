#include "TerminalView.h"

#include "CharacterGrid.h"

#include <algorithm>
#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

namespace {

std::string lineStart(int row) {
    return "\x1b[" + std::to_string(row) + ";1H";
}

} // namespace

TerminalView::TerminalView(std::ostream& os) : m_os(os) {
    // What does not fit into a line is cut off instead of wrapped.
    m_os << "\x1b[?25l\x1b[?7l" << std::flush;
}

TerminalView::~TerminalView() {
    m_os << "\x1b[0m\x1b[?7h\x1b[?25h";
    if (m_drawn)
        m_os << lineStart(m_size.rows) << '\n';
    m_os << std::flush;
}

void TerminalView::draw(const Frame& frame, std::optional<TerminalSize> terminal) {
    const TerminalSize size = terminal.value_or(smallest);
    if (m_drawn == frame && m_size == size)
        return;
    // In one piece, so that no half frame is seen.
    std::string bytes = m_size == size ? "" : "\x1b[2J";
    const CharacterGrid grid(frame, std::max(size.columns, smallest.columns), std::max(size.rows, smallest.rows));
    const std::vector<std::string> lines = grid.colouredLines();
    for (int row = 0; row < size.rows; ++row)
        bytes += lineStart(row + 1) + lines[static_cast<std::size_t>(row)];
    m_os << bytes << std::flush;
    m_drawn = frame;
    m_size = size;
}

void printPlain(std::ostream& os, const Frame& frame) {
    for (const std::string& line :
         CharacterGrid(frame, TerminalView::smallest.columns, TerminalView::smallest.rows).plainLines())
        os << line << '\n';
}
