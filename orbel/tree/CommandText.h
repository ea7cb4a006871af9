#ifndef ORBEL_TREE_COMMANDTEXT_H
#define ORBEL_TREE_COMMANDTEXT_H

#include "../foundation/text/FixedText.h"
#include "../foundation/text/Scanner.h"
#include "FieldWatch.h"

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

/// A path that may end in a range in brackets: "list[0-3]".
struct AddressedRange {
    explicit AddressedRange(std::string_view text);

    std::string path;
    /// The text behind the "[", with its "]".
    std::optional<std::string> range;

    /// The first index and the number of values that the first segment of the range selects.
    std::pair<int, int> valuesOf(DataField& field) const;
    /// The fields that the range selects, the node alone without one. Entries may be null.
    std::vector<DataField*> fieldsOf(DataNode& node) const;
};

/// Calls `run` with a copy of each command of a list, until the node is destroyed.
template <class Run>
void runList(DataField& node, const char* list, Run run) {
    if (!list)
        return;
    const FieldWatch watch(node);
    const std::string copy(list);
    std::string_view rest = copy;
    text::skipBlanks(rest);
    while (!rest.empty() && !watch.ended()) {
        std::string command(text::cutListItem(rest, ';'));
        run(command.data());
        text::skipBlanks(rest);
    }
}

#endif
