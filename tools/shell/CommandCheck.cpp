#include "CommandCheck.h"

#include "../Nearest.h"
#include "TreePaths.h"

#include <orbel/foundation/text/Scanner.h>
#include <orbel/tree/CommandText.h>
#include <orbel/tree/DataArray.h>
#include <orbel/tree/DataHashTable.h>
#include <orbel/tree/DataObject.h>
#include <orbel/tree/DataStructure.h>
#include <orbel/tree/FieldPath.h>
#include <orbel/tree/Limits.h>
#include <orbel/tree/TreeState.h>

#include <algorithm>

namespace effects {

namespace {

std::string below(DataNode& from, std::string_view path) {
    const std::string start = paths::pathOf(from);
    return start.empty() ? std::string(path) : start + '/' + std::string(path);
}

/// A kind that names no type is why a path creates nothing.
std::string unknownType(std::string_view path) {
    while (!path.empty()) {
        const PathSegment segment = readSegment(text::cutAt(path, '/'));
        if (!segment.kind || *segment.kind == "string" || *segment.kind == "node" || *segment.kind == "DataHashTable")
            continue;
        const std::string type(segment.kind->substr(0, segment.kind->find('[')));
        if (!DataObject::getObjectTypeByName(std::string(type).data()))
            return "no type " + type + suggestionFor(type, paths::typeNames());
    }
    return {};
}

void add(Complaints& all, Complaints more) {
    all.insert(all.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
}

std::string counted(int count, const std::string& what) {
    return std::to_string(count) + ' ' + what + (count == 1 ? "" : "s");
}

std::string outOfRange(const std::string& path, int size, const std::string& what, int index) {
    return path + " has " + counted(size, what) + ", so there is no [" + std::to_string(index) + "]";
}

/// The indices of a range text that are there; complains of the first that is not.
std::vector<int> indicesOf(std::string_view ranges, const std::string& path, int size, const std::string& what,
                           Complaints& complaints) {
    std::vector<int> indices;
    while (!ranges.empty()) {
        const text::IndexRange range = text::readIndexRange(ranges);
        if (range.start == -1) {
            complaints.push_back("the brackets behind " + path + " hold no number");
            return indices;
        }
        if (range.start >= size) {
            complaints.push_back(outOfRange(path, size, what, range.start));
            continue;
        }
        const int last = std::min(range.end == -1 ? range.start : range.end, size - 1);
        for (int index = range.start; index <= last; ++index)
            indices.push_back(index);
    }
    return indices;
}

Complaints ofGroup(DataNode& node, std::string_view group);

Complaints ofElements(DataArray& array, const char* range, std::string_view value) {
    Complaints complaints;
    const std::string path = paths::pathOf(array);
    const auto inside = text::behindBrace(value);
    if (!inside)
        return {path + " is an array: write {{name = value}, ...}"};
    std::vector<int> indices;
    if (range) {
        indices = indicesOf(range, path, array.getSize(), "element", complaints);
    } else {
        for (int index = 0; index < array.getSize(); ++index)
            indices.push_back(index);
        if (indices.empty())
            complaints.push_back(path + " has no elements");
    }
    std::string_view groups = *inside;
    for (const int index : indices) {
        if (groups.empty())
            break;
        add(complaints, ofGroup(*array.DataArray::getObject(index), text::cutListItem(groups, ',')));
    }
    return complaints;
}

Complaints ofEntries(DataHashTable& table, const char* keys, std::string_view value) {
    const std::string path = paths::pathOf(table);
    if (!keys)
        return {path + " is a hash table: write " + path + "[KEY]"};
    const auto inside = text::behindBrace(value);
    if (!inside)
        return {path + " is a hash table: write {{name = value}, ...}"};
    Complaints complaints;
    std::string_view groups = *inside;
    std::string_view list = keys;
    list = list.substr(0, list.find(']'));
    while (!list.empty() && !groups.empty()) {
        const std::string key(text::cutAt(list, ','));
        const std::string_view group = text::cutListItem(groups, ',');
        if (DataObject* entry = table.getObject(std::string(key).data()))
            add(complaints, ofGroup(*entry, group));
        else
            complaints.push_back("no entry " + key + " in " + path + suggestionFor(key, paths::childNames(table)));
    }
    return complaints;
}

Complaints ofCommands(DataNode& node, std::string_view list) {
    Complaints complaints;
    text::ListScanner commands(list);
    commands.skipBlanks();
    for (; !commands.atEnd(); commands.skipBlanks())
        add(complaints, ofSet(node, commands.cut(';')));
    return complaints;
}

Complaints ofGroup(DataNode& node, std::string_view group) {
    const auto commands = text::braceGroup(group);
    if (!commands)
        return {paths::pathOf(node) + " is a node: write {name = value; ...}"};
    return ofCommands(node, *commands);
}

Complaints ofValues(DataField& field, const char* range, std::string_view value) {
    if (!range)
        return {};
    const std::string path = paths::pathOf(field);
    Complaints complaints;
    indicesOf(range, path, field.getSize(), "value", complaints);
    if (complaints.empty() && value.empty())
        complaints.push_back("no text for " + path + '[' + range);
    return complaints;
}

Complaints ofField(DataField& field, const char* range, std::string_view value) {
    if (!paths::isNode(field))
        return ofValues(field, range, value);
    if (DataHashTable* table = paths::asTable(field))
        return ofEntries(*table, range, value);
    if (field.isOfType(DataArray::getClassType()) != 0)
        return ofElements(static_cast<DataArray&>(field), range, value);
    return ofGroup(static_cast<DataNode&>(field), value);
}

/// A command on "*" has an effect when it has one on a child.
Complaints ofBroadcast(DataNode& from, const SetCommand& parts) {
    treeState.wildcard = false;
    DataNode& node = *treeState.lastSearched;
    const std::string rest = treeState.wildcardRest;
    std::vector<DataField*> children;
    node.getFieldsVector(&children);
    for (DataField* child : children) {
        if (!rest.empty() && !paths::isNode(*child))
            continue;
        const std::string path = child->getName() + (rest.empty() ? "" : '/' + rest);
        if (ofSet(node, path + " = " + parts.value).empty())
            return {};
    }
    return {"nothing at " + below(from, parts.path)};
}

/// The field at one side of a copy or link; null with a complaint.
DataField* findSide(DataNode& from, std::string_view path, Complaints& complaints) {
    DataField* field = from.getField(std::string(path).data(), 0, 1);
    if (!field)
        complaints.push_back(nothingAt(from, path));
    return field;
}

std::string kindOf(DataField& field) {
    if (!paths::isNode(field))
        return "a value";
    return field.isOfType(DataArray::getClassType()) != 0 ? "an array" : "a node";
}

Complaints ofRange(DataField& field, const AddressedRange& address) {
    if (!address.range)
        return {};
    Complaints complaints;
    const std::string path = paths::pathOf(field);
    if (!paths::isNode(field)) {
        indicesOf(*address.range, path, field.getSize(), "value", complaints);
        return complaints;
    }
    const std::vector<DataField*> fields = address.fieldsOf(static_cast<DataNode&>(field));
    if (std::all_of(fields.begin(), fields.end(), [](DataField* selected) { return !selected; }))
        complaints.push_back("nothing at " + path + '[' + std::string(*address.range));
    return complaints;
}

} // namespace

std::string nothingAt(DataNode& from, std::string_view path) {
    if (path.size() > limits::maxPathLength)
        return "a path of " + std::to_string(path.size()) + " characters finds nothing; the longest has 511";
    if (std::string complaint = unknownType(path); !complaint.empty())
        return complaint;
    std::optional<std::string> near = paths::nearestPath(from, path);
    if (near)
        near = below(from, *near);
    return "nothing at " + below(from, path) + suggestion(near);
}

Complaints ofSet(DataNode& from, std::string_view command) {
    std::string text(command);
    SetCommand parts;
    if (!parts.cut(text.data()))
        return {"no \"=\" in " + text};
    treeState.wildcard = false;
    if (DataField* field = from.getField(std::string(parts.path).data(), 0, 0))
        return ofField(*field, parts.indexText, parts.value);
    if (treeState.wildcard && treeState.lastSearched)
        return ofBroadcast(from, parts);
    return {nothingAt(from, parts.path)};
}

Complaints ofCopy(DataNode& from, std::string_view command) {
    const std::size_t equals = command.find('=');
    if (equals == std::string_view::npos)
        return {"no \"=\" in " + std::string(command)};
    const AddressedRange to(command.substr(0, equals));
    const AddressedRange source(command.substr(equals + 1));
    Complaints complaints;
    DataField* targetField = findSide(from, to.path, complaints);
    DataField* sourceField = findSide(from, source.path, complaints);
    if (!targetField || !sourceField)
        return complaints;
    // A range of an array selects objects, which are nodes.
    if (!to.range && !source.range && kindOf(*targetField) != kindOf(*sourceField))
        return {paths::pathOf(*sourceField) + " is " + kindOf(*sourceField) + " and " + paths::pathOf(*targetField) +
                " is " + kindOf(*targetField) + ", so nothing is copied"};
    if (paths::isNode(*targetField) != paths::isNode(*sourceField))
        return {"a node and a value are not copied to each other"};
    add(complaints, ofRange(*targetField, to));
    add(complaints, ofRange(*sourceField, source));
    return complaints;
}

Complaints ofLink(DataNode& from, std::string_view command) {
    Complaints complaints;
    if (command.substr(0, 1) == "~") {
        DataField* field = findSide(from, command.substr(1), complaints);
        if (field && !field->getLinkSource())
            complaints.push_back(paths::pathOf(*field) + " follows nothing");
        return complaints;
    }
    if (command.find('=') == std::string_view::npos)
        return {"no \"=\" in " + std::string(command)};
    std::string_view sourcePath = command;
    DataField* target = findSide(from, text::trim(text::cutAt(sourcePath, '=')), complaints);
    DataField* source = findSide(from, text::trim(sourcePath), complaints);
    if (target && source && (target == source || source->findLinkSource(target)))
        complaints.push_back(paths::pathOf(*target) + " would follow itself");
    return complaints;
}

Complaints ofClear(DataNode& from, std::string_view list) {
    Complaints complaints;
    while (!list.empty()) {
        const std::string_view path = text::trim(text::cutAt(list, ';'));
        const AddressedRange address(path);
        if (path.empty() || text::equalsIgnoringCase(path, "Orbel"))
            continue;
        DataField* field = from.getField(std::string(path).data(), 0, 0);
        if (!field)
            complaints.push_back(nothingAt(from, path));
        else if (address.range && !paths::isNode(*field))
            complaints.push_back("values are cleared together: clear " + std::string(address.path));
        else
            add(complaints, ofRange(*field, address));
    }
    return complaints;
}

} // namespace effects
