#include "Commands.h"

#include <vector>

namespace {

int linksAbove(DataField& field) {
    int count = 0;
    for (DataField* at = field.getLinkSource(); at; at = at->getLinkSource())
        ++count;
    return count;
}

void collectValues(DataNode& node, std::vector<DataField*>& values) {
    std::vector<DataField*> children;
    node.getFieldsVector(&children);
    for (DataField* child : children)
        if (child->isOfType(DataNode::getClassType()) != 0)
            collectValues(static_cast<DataNode&>(*child), values);
        else
            values.push_back(child);
}

void checkFollowing(Show& show) {
    std::vector<DataField*> values;
    collectValues(show.root(), values);
    int number = 0;
    for (DataField* follower : values) {
        DataField* const source = follower->getLinkSource();
        if (!source || source->isOfType(DataValue::getClassType()) == 0 || linksAbove(*follower) > 200)
            continue;
        const std::string text = std::to_string(number++);
        source->setData(text.c_str());
        check(*follower->getData(0) == text, "a value follows its source");
    }
    show.root().ClearLinks();
    for (const DataField* value : values)
        check(!const_cast<DataField*>(value)->getLinkSource(), "no link is left");
}

// A set list behind the first NUL is run when the links are there.
const Target target("link-lists", [](std::string_view input) {
    const std::string_view values = input.substr(std::min(upToNul(input).size() + 1, input.size()));
    if (asksForMuch(upToNul(values)))
        return;
    runCommands(
        input,
        [&](Show& show, char* text) {
            show.root().parseLinkCommand(text);
            show.root().parseCommand(Lent(values), 0);
        },
        checkFollowing);
});

} // namespace
