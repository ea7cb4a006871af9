#include "TreePaths.h"

#include "../Nearest.h"

#include <orbel/foundation/text/Scanner.h>
#include <orbel/tree/DataArray.h>
#include <orbel/tree/DataHashTable.h>
#include <orbel/tree/DataObject.h>
#include <orbel/tree/DataStructure.h>
#include <orbel/tree/FieldPath.h>
#include <orbel/tree/TreeState.h>

#include <algorithm>

namespace paths {

namespace {

DataArray* asArray(DataField& field) {
    return field.isOfType(DataArray::getClassType()) != 0 ? static_cast<DataArray*>(&field) : nullptr;
}

DataObject* entryOf(DataHashTable& table, std::string_view key) {
    return table.getObject(std::string(key).data());
}

DataField* childOf(DataNode& node, std::string_view name) {
    return node.getField(std::string(name).data(), 0, 1);
}

std::string keyOfEntry(DataHashTable& table, DataField& entry) {
    for (int index = 0; index < table.getSize(); ++index)
        if (table.getObject(index) == &entry)
            return table.getObjectKey(index);
    return {};
}

std::string bracketsOf(DataArray& array, DataField& element) {
    if (DataHashTable* table = asTable(array))
        return '[' + keyOfEntry(*table, element) + ']';
    return '[' + std::to_string(element.getParentInstance()) + ']';
}

/// The element or entry that an index text selects; null when there is none.
DataNode* elementOf(DataArray& array, const std::optional<std::string_view>& indexText) {
    if (DataHashTable* table = asTable(array))
        return indexText ? entryOf(*table, keyOf(*indexText)) : nullptr;
    std::string_view index = indexText.value_or("0");
    return array.getObject(std::max(text::readIndexRange(index).start, 0));
}

/// The brackets that come nearest to those written, empty when there are none.
std::string bracketsNear(DataArray& array, const std::optional<std::string_view>& indexText) {
    if (!indexText)
        return {};
    if (elementOf(array, indexText))
        return '[' + std::string(*indexText);
    if (DataHashTable* table = asTable(array)) {
        const std::vector<std::string> keys = namesNear(keyOf(*indexText), childNames(*table));
        return keys.empty() ? std::string() : '[' + keys.front() + ']';
    }
    return array.getSize() > 0 ? '[' + std::to_string(array.getSize() - 1) + ']' : std::string();
}

std::optional<std::string> nearestBelow(DataNode& node, const std::string& name, const PathSegment& segment,
                                        const std::optional<std::string_view>& rest) {
    DataField* child = childOf(node, name);
    if (!child)
        return std::nullopt;
    std::string written = name;
    if (DataArray* array = asArray(*child))
        written += bracketsNear(*array, segment.indexText);
    else if (segment.indexText)
        written += '[' + std::string(*segment.indexText);
    if (!rest || !isNode(*child))
        return written;
    DataNode* next = stepInto(node, written);
    if (!next)
        return std::nullopt;
    const std::optional<std::string> behind = nearestPath(*next, *rest);
    return behind ? std::optional(written + '/' + *behind) : std::nullopt;
}

void collectValues(DataField& field, std::vector<DataField*>& values) {
    if (!isNode(field)) {
        values.push_back(&field);
        return;
    }
    if (DataArray* array = asArray(field)) {
        for (int index = 0; index < array->getSize(); ++index)
            collectValues(*array->getObject(index), values);
        return;
    }
    std::vector<DataField*> children;
    static_cast<DataNode&>(field).getFieldsVector(&children);
    for (DataField* child : children)
        collectValues(*child, values);
}

} // namespace

bool isNode(DataField& field) {
    return field.isOfType(DataNode::getClassType()) != 0;
}

DataHashTable* asTable(DataField& field) {
    return field.isOfType(DataHashTable::getClassType()) != 0 ? static_cast<DataHashTable*>(&field) : nullptr;
}

std::string pathOf(DataField& field) {
    std::string path;
    std::string brackets;
    for (DataField* at = &field; DataNode* parent = at->getParent(); at = parent) {
        if (DataArray* array = asArray(*parent)) {
            brackets = bracketsOf(*array, *at);
            continue;
        }
        path.insert(0, at->getName() + brackets + (path.empty() ? "" : "/"));
        brackets.clear();
    }
    return path;
}

std::vector<DataField*> fieldsAt(DataNode& from, const std::string& path) {
    treeState.wildcard = false;
    if (DataField* field = from.getField(std::string(path).data(), 0, 1))
        return {field};
    if (!treeState.wildcard || !treeState.lastSearched)
        return {};
    treeState.wildcard = false;
    DataNode& node = *treeState.lastSearched;
    const std::string rest = treeState.wildcardRest;
    std::vector<DataField*> children;
    node.getFieldsVector(&children);
    if (rest.empty())
        return children;
    std::vector<DataField*> fields;
    for (DataField* child : children) {
        if (!isNode(*child))
            continue;
        const std::vector<DataField*> found = fieldsAt(node, std::string(child->getName()) + '/' + rest);
        fields.insert(fields.end(), found.begin(), found.end());
    }
    return fields;
}

std::vector<DataField*> valuesBelow(DataField& field) {
    std::vector<DataField*> values;
    collectValues(field, values);
    return values;
}

void deleteBelow(DataNode& node) {
    std::vector<DataField*> children;
    if (node.isOfType(DataArray::getClassType()) != 0) {
        auto& array = static_cast<DataArray&>(node);
        for (int index = 0; index < array.getSize(); ++index) {
            children.push_back(array.DataArray::getObject(index));
            // With a reference of its own no element is deleted before the loop below is done with it.
            children.back()->ref(&children, nullptr);
        }
    } else {
        node.getFieldsVector(&children);
    }
    node.removeChildren();
    for (DataField* child : children) {
        if (isNode(*child))
            deleteBelow(static_cast<DataNode&>(*child));
        delete child;
    }
}

std::vector<std::string> childNames(DataNode& node) {
    std::vector<std::string> names;
    if (DataHashTable* table = asTable(node)) {
        for (int index = 0; index < table->getSize(); ++index)
            names.emplace_back(table->getObjectKey(index));
        return names;
    }
    std::vector<DataField*> children;
    node.getFieldsVector(&children);
    for (DataField* child : children)
        names.emplace_back(child->getName());
    return names;
}

DataNode* stepInto(DataNode& node, std::string_view segment) {
    const PathSegment parts = readSegment(segment);
    if (parts.isParent() && node.getParent())
        return node.getParent();
    DataField* child = parts.isWildcard() ? nullptr : childOf(node, parts.name);
    if (!child || !isNode(*child))
        return nullptr;
    DataArray* array = asArray(*child);
    return array ? elementOf(*array, parts.indexText) : static_cast<DataNode*>(child);
}

std::optional<std::string> nearestPath(DataNode& from, std::string_view path) {
    const std::size_t slash = path.find('/');
    const PathSegment segment = readSegment(path.substr(0, slash));
    std::optional<std::string_view> rest;
    if (slash != std::string_view::npos)
        rest = path.substr(slash + 1);
    for (const std::string& name : namesNear(segment.name, childNames(from)))
        if (auto found = nearestBelow(from, name, segment, rest))
            return found;
    return std::nullopt;
}

std::vector<std::string> typeNames() {
    std::vector<char*> names;
    DataObject::getTypeNames(&names);
    return {names.begin(), names.end()};
}

} // namespace paths
