#ifndef ORBEL_TREE_COMMANDTEXT_H
#define ORBEL_TREE_COMMANDTEXT_H

#include "../foundation/text/LentText.h"
#include "../foundation/text/Scanner.h"
#include "FieldWatch.h"
#include "TreeState.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

class DataField;
class DataNode;

/// The pieces of "path[range] = value", cut in place in the command.
struct SetCommand {
    char* path = nullptr;
    /// What follows the last "[" of a path that ends with "]"; null otherwise.
    char* indexText = nullptr;
    char* value = nullptr;

    /// False when the command holds no "=".
    bool cut(char* command);

private:
    std::string m_index;
};

/// A path that may end in a range in brackets: "list[0-3]". Its parts lie in the text that it is taken from.
struct AddressedRange {
    explicit AddressedRange(std::string_view text) : path(text::trim(text)) {
        if (path.ends_with(']'))
            cutRange();
    }

    std::string_view path;
    /// The text behind the "[", with its "]".
    std::optional<std::string_view> range;

    /// The first index and the number of values that the first segment of the range selects.
    std::pair<int, int> valuesOf(DataField& field) const;
    /// The fields that the range selects, the node alone without one. Entries may be null.
    std::vector<DataField*> fieldsOf(DataNode& node) const;

private:
    void cutRange();
};

/// Calls `run` with each command of a copy of the list and its length, until the node is destroyed. Commands may be cut
/// up in place.
template <class Run>
void runList(DataField& node, std::string_view list, Run run) {
    const FieldWatch watch(node);
    text::LentText copy(treeState.texts, list);
    text::ListScanner commands(copy.view());
    commands.skipBlanks();
    // Several are cut off before they run: to read a text right behind the write that ends it makes the processor wait.
    std::array<std::pair<char*, std::size_t>, 16> next;
    while (!commands.atEnd() && !watch.ended()) {
        std::size_t count = 0;
        for (; count < next.size() && !commands.atEnd(); commands.skipBlanks()) {
            const std::string_view command = commands.cut(';');
            next[count++] = {copy.cut(command), command.size()};
        }
        for (std::size_t at = 0; at < count && !watch.ended(); ++at)
            run(next[at].first, next[at].second);
    }
}

#endif
