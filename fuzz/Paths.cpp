#include "Input.h"
#include "Show.h"
#include "Target.h"

#include <orbel/handlers/RegisteredPath.h>
#include <orbel/tree/FieldPath.h>

namespace {

void checkSegments(const std::string& path) {
    const char* rest = path.c_str();
    int segments = 0;
    while (rest) {
        const PathSegment segment = cutSegment(rest);
        const char* const begin = path.data();
        const char* const end = begin + path.size();
        check(segment.name.empty() ||
                  (segment.name.data() >= begin && segment.name.data() + segment.name.size() <= end),
              "the parts of a segment lie in its path");
        check(!segment.isWildcard() || !segment.isParent(), "a segment has one meaning");
        check(++segments <= static_cast<int>(path.size()) + 1, "a path has no more segments than characters");
    }
}

void checkPath(Show& show, const std::string& path) {
    checkSegments(path);
    const RegisteredPath registered(path);
    check(registered.path.size() <= path.size(), "a registered path is part of its text");

    for (const int flag : {0, 1}) {
        Lent lent(path);
        DataField* const found = show.root().getField(lent, 0, flag);
        check(lent.isStill(path), "a path is not changed");
        check(show.root().getField(lent, 0, flag) == found, "a path leads to the same field again");
        if (!found)
            continue;
        check(path.size() <= 511, "a longer path leads nowhere");
        if (found->isOfType(DataValue::getClassType()) != 0) {
            check(show.root().setFieldData(lent, Text("stored")), "what a path leads to can be set");
            check(*found->getData(0) == "stored", "and is");
        }
    }
}

/// Contract: a field that its last handler leaves goes from its tree, and what is in it stays behind when it is an
/// array or is observed. Nobody owns that then, so a node is left by itself and not through the tree.
void checkRegistration(Show& show, const std::string& path) {
    Listener listener(Text("listener"));
    if (!show.root().registerHandler(Lent(path), &listener, 0))
        return;
    check(listener.getField() != nullptr, "a handler that was registered has a field");
    if (listener.getField()->isOfType(DataNode::getClassType()) != 0)
        listener.getField()->unregisterHandler(&listener);
    else
        check(show.root().unregisterHandler(&listener), "and can be unregistered");
    check(!listener.getField(), "and has no field then");
}

// Each line is a path.
const Target target("paths", [](std::string_view input) {
    if (asksForMuch(upToNul(input)))
        return;
    Show show;
    forEachLine(upToNul(input), [&](std::string_view line) { checkPath(show, std::string(line)); });
    show.checkSound();
    forEachLine(upToNul(input), [&](std::string_view line) { checkRegistration(show, std::string(line)); });
    show.checkSound();
    check(!show.dumped().empty(), "a tree can be printed");
});

} // namespace
