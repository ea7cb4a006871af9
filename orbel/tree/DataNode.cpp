#include <orbel/tree/DataNode.h>

#include <orbel/foundation/DataClassType.h>
#include <orbel/tree/DataHashTable.h>
#include <orbel/tree/DataValue.h>
#include <orbel/tree/Orbel.h>

#include "../foundation/text/FixedText.h"
#include "../foundation/text/Scanner.h"
#include "CommandText.h"
#include "ExactClass.h"
#include "FieldTies.h"
#include "FieldWatch.h"
#include "Limits.h"
#include "NestedCall.h"
#include "TreeState.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <optional>
#include <string>

namespace {

/// What commands call the root of a tree, in any letter case.
constexpr std::string_view rootName = "Orbel";

bool isNode(DataField& field) {
    // Most fields are plain values, which is told sooner than what a field derives from.
    return !isExactly<DataValue>(field) && field.isOfType(DataNode::getClassType()) != 0;
}

bool mayRepeat() {
    return treeState.repeatedText <= limits::maxRepeatedText;
}

/// Counts the command when it is part of a repetition.
bool mayRun(std::size_t length) {
    if (treeState.repetitionDepth == 0)
        return true;
    treeState.repeatedText += std::max(limits::minRepeatedText, static_cast<long long>(length));
    return mayRepeat();
}

/// The plain value at a path in use, which is found without calling anybody; null for everything else, also for some
/// of several values.
DataValue* knownValue(DataNode& node, std::string_view written) {
    const std::string_view path = text::trim(written);
    return path.ends_with(']') ? nullptr : static_cast<DataValue*>(treeState.resolveKnownValue(node, path));
}

/// Copies between plain values in use, which most copies are. False for all others, where nothing is done.
bool copyKnownValue(DataNode& node, std::string_view targetPath, std::string_view sourcePath) {
    DataValue* const target = knownValue(node, targetPath);
    DataValue* const source = target ? knownValue(node, sourcePath) : nullptr;
    if (!source)
        return false;
    target->copyData(source, 0, 0, std::min(source->getSize(), target->getSize()));
    return true;
}

/// Clears a plain value in use, which most clears are of. False for all others, where nothing is done.
bool clearKnownValue(DataNode& node, std::string_view path) {
    if (text::equalsIgnoringCase(path, rootName))
        return false;
    DataValue* const value = knownValue(node, path);
    if (value)
        value->clearData();
    return value != nullptr;
}

void repeat(DataNode& node, text::LentText& command, int index) {
    const NestedCall repetition(treeState.repetitionDepth);
    node.executeCommand(command.get().data(), index);
}

} // namespace

DataType* DataNode::classType = nullptr;

void DataNode::init() {
    if (classType)
        return;
    DataField::init();
    char name[] = "DataNode";
    classType = new DataClassType<DataNode, DataField>(name);
}

DataType* DataNode::getClassType() {
    init();
    return classType;
}

DataNode::DataNode(char* name) : DataNode(getClassType(), text::viewOf(name)) {}

DataNode::DataNode(DataType* type, std::string_view name) : DataField(type, name) {}

DataNode::DataNode(const DataNode& other) = default;

DataNode& DataNode::operator=(const DataNode& other) = default;

DataNode::~DataNode() = default;

const char* DataNode::getTypeName() {
    return "DataNode";
}

bool DataNode::addField(DataField* /*field*/, int /*instance*/) {
    return false;
}

void DataNode::getFieldsVector(std::vector<DataField*>* out) {
    if (out)
        out->clear();
}

DataField* DataNode::getField(char* /*path*/, int /*index*/, int /*flag*/) {
    return nullptr;
}

void DataNode::removeField(char* /*name*/, int /*index*/) {}

void DataNode::removeChildren() {}

void DataNode::deleteChildren() {}

int DataNode::getNumFields() {
    return 0;
}

DataField* DataNode::getFieldByIndex(int /*index*/) {
    return nullptr;
}

void DataNode::dump() {}

void DataNode::dumpData(char* paths, int /*ignored*/, std::ostream& os) {
    std::string_view rest = text::viewOf(paths);
    while (!rest.empty()) {
        text::skipBlanks(rest);
        text::LentText path(treeState.texts, text::cutAt(rest, ';'));
        dumpField(path.get().data(), os);
    }
}

void DataNode::dumpField(char* path, std::ostream& os) {
    text::LentText copy(treeState.texts, text::viewOf(path));
    const AddressedRange address(copy.view());
    DataField* field =
        text::equalsIgnoringCase(address.path, rootName) ? findRoot() : getField(copy.cut(address.path), 0, 0);
    if (!field)
        return;
    if (!address.range) {
        field->dump(os, -1, -1, 1);
        return;
    }
    if (field->isOfType(DataHashTable::getClassType()) != 0) {
        std::string_view range = *address.range;
        static_cast<DataHashTable*>(field)->dumpKeys(os, std::string(text::cutAt(range, ']')).data(), 1);
        return;
    }
    for (std::string_view ranges = *address.range; !ranges.empty();) {
        const text::IndexRange range = text::readIndexRange(ranges);
        field->dump(os, range.start, range.end, 1);
    }
}

bool DataNode::registerHandler(char* /*path*/, DataHandler* /*handler*/, int /*index*/) {
    return false;
}

bool DataNode::unregisterHandler(DataHandler* /*handler*/) {
    return false;
}

bool DataNode::setFieldSize(char* /*path*/, int /*size*/) {
    return false;
}

bool DataNode::getFieldSize(char* /*path*/, int* /*size*/) {
    return false;
}

bool DataNode::setFieldData(char* /*path*/, std::string* /*value*/) {
    return false;
}

bool DataNode::setFieldData(char* /*path*/, char* /*value*/) {
    return false;
}

bool DataNode::setFieldData(char* /*path*/, char* /*value*/, int /*index*/) {
    return false;
}

bool DataNode::setFieldData(char* /*path*/, std::vector<char*>* /*values*/, int /*from*/, int /*to*/) {
    return false;
}

bool DataNode::getFieldData(char* /*path*/, std::string* /*value*/) {
    return false;
}

bool DataNode::getFieldData(char* /*path*/, char** /*value*/) {
    return false;
}

bool DataNode::getFieldData(char* /*path*/, std::vector<char*>* /*out*/, int /*from*/, int /*to*/) {
    return false;
}

void DataNode::executeCommand(char* command, int index) {
    if (command)
        runCommand(command, std::strlen(command), index);
}

void DataNode::runCommand(char* command, std::size_t length, int index) {
    const NestedCall depth(treeState.commandDepth);
    if (depth.isDeeperThan(limits::maxCommandDepth))
        return;
    if (depth.isOutermost())
        treeState.repeatedText = 0;
    if (!mayRun(length))
        return;
    const bool isFollowed = targetsIfAny() != nullptr;
    const bool isAlive = walkTargets([&](DataField& target) {
        if (!isNode(target))
            return;
        text::LentText copy(treeState.texts, command);
        repeat(static_cast<DataNode&>(target), copy, index);
    });
    if (!isAlive)
        return;
    // By now it may be another text.
    if (isFollowed)
        length = std::strlen(command);
    if (setKnownValue({command, length}))
        return;
    SetCommand parts;
    if (!parts.cut(command))
        return;
    // Not every look-up gets as far as clearing what an earlier one has left.
    treeState.wildcard = false;
    if (DataField* field = getField(parts.path, index, 0)) {
        field->parse(parts.indexText, parts.value);
        return;
    }
    if (!treeState.wildcard || !treeState.lastSearched)
        return;
    treeState.wildcard = false;
    broadcast(*treeState.lastSearched, treeState.wildcardRest, parts.value, index);
}

/// Sets a plain value in use, which most commands do. False for all others, where nothing is done.
bool DataNode::setKnownValue(std::string_view command) {
    const std::size_t equals = command.find('=');
    if (equals == std::string_view::npos)
        return false;
    DataValue* const value = knownValue(*this, command.substr(0, equals));
    if (value)
        value->parseOne(command.substr(equals + 1));
    return value != nullptr;
}

void DataNode::broadcast(DataNode& node, std::string_view rest, std::string_view value, int index) {
    // Copies, for the first is where the next "*" is reported, and the second may stand in a text of a handler.
    const text::LentText keptRest(treeState.texts, rest);
    const text::LentText keptValue(treeState.texts, value);
    rest = keptRest.view();
    value = keptValue.view();
    text::Lent<std::vector<DataField*>> list(treeState.fieldLists);
    std::vector<DataField*>& children = list.get();
    node.getFieldsVector(&children);
    treeState.repeatedText += static_cast<long long>(children.size() * sizeof(void*));
    const FieldWatch watch(node);
    const FieldListWatch childrenWatch(children);
    for (std::size_t at = 0; at < children.size() && !watch.ended() && mayRepeat(); ++at) {
        DataField* child = children[at];
        if (!child || child->getParent() != &node || (!rest.empty() && !isNode(*child)))
            continue;
        text::LentText command(treeState.texts, child->getName());
        if (!rest.empty())
            command.get().append("/").append(rest);
        command.get().append(" = ").append(value);
        repeat(node, command, index);
    }
}

void DataNode::parseCommand(char* textToRun, int index) {
    runCommands(text::viewOf(textToRun), index);
}

void DataNode::runCommands(std::string_view list, int index) {
    // Those of clients may override what a command does.
    const bool isOwn = isOwnStructure(*this);
    runList(*this, list, [&](char* command, std::size_t length) {
        if (isOwn)
            runCommand(command, length, index);
        else
            executeCommand(command, index);
    });
}

void DataNode::getFieldsByRange(char* /*range*/, std::vector<DataField*>* out) {
    if (out)
        out->assign(1, this);
}

void DataNode::executeCopyCommand(char* command) {
    const std::string_view whole = text::viewOf(command);
    const std::size_t equals = whole.find('=');
    if (equals == std::string_view::npos || copyKnownValue(*this, whole.substr(0, equals), whole.substr(equals + 1)))
        return;
    text::LentText copy(treeState.texts, whole);
    const AddressedRange to(copy.view().substr(0, equals));
    const AddressedRange from(copy.view().substr(equals + 1));
    char* const targetPath = copy.cut(to.path);
    char* const sourcePath = copy.cut(from.path);
    const FieldWatch watch(*this);
    DataField* target = getField(targetPath, 0, 1);
    if (!target || watch.ended())
        return;
    const FieldWatch targetWatch(*target);
    DataField* source = getField(sourcePath, 0, 1);
    if (!source || targetWatch.ended())
        return;

    const bool targetIsNode = isNode(*target);
    if (targetIsNode != isNode(*source))
        return;
    if (!targetIsNode) {
        const auto [sourceStart, sourceCount] = from.valuesOf(*source);
        const auto [targetStart, targetCount] = to.valuesOf(*target);
        target->copyData(source, sourceStart, targetStart, std::min(sourceCount, targetCount));
        return;
    }
    std::vector<DataField*> targets = to.fieldsOf(*static_cast<DataNode*>(target));
    std::vector<DataField*> sources = from.fieldsOf(*static_cast<DataNode*>(source));
    const FieldListWatch targetsWatch(targets);
    const FieldListWatch sourcesWatch(sources);
    for (std::size_t at = 0; at < targets.size() && !sources.empty(); ++at) {
        DataField* sourceField = sources[std::min(at, sources.size() - 1)];
        if (targets[at] && sourceField)
            targets[at]->copyData(sourceField, 0, 0, -1);
    }
}

void DataNode::parseCopyCommand(char* textToRun) {
    runList(*this, text::viewOf(textToRun), [&](char* command, std::size_t) { executeCopyCommand(command); });
}

void DataNode::executeClearField(char* path) {
    const std::string_view written = text::viewOf(path);
    const std::string_view trimmed = text::trim(written);
    const bool endsThere = path && trimmed.data() + trimmed.size() == written.data() + written.size();
    std::optional<text::LentText> copy;
    if (!endsThere)
        copy.emplace(treeState.texts, trimmed);
    char* const whole = copy ? copy->chars() : path + (written.size() - trimmed.size());
    AddressedRange address(trimmed);
    std::string range;
    if (address.range) {
        // A copy, for the look-up may overwrite the text that it is given.
        range = *address.range;
        address.range = range;
    }
    DataField* field = text::equalsIgnoringCase(trimmed, rootName) ? findRoot() : getField(whole, 0, 0);
    if (!field)
        return;
    if (!address.range) {
        field->clearData();
        return;
    }
    if (!isNode(*field))
        return;
    std::vector<DataField*> fields = address.fieldsOf(*static_cast<DataNode*>(field));
    const FieldListWatch watch(fields);
    for (DataField* const& selected : fields)
        if (selected)
            selected->clearData();
}

void DataNode::executeClearCommand(char* textToRun) {
    if (!textToRun)
        return;
    std::string_view rest = textToRun;
    if (rest.empty()) {
        executeClearField(std::string(rootName).data());
        return;
    }
    // Those of clients may override how a field is cleared.
    const bool isOwn = isOwnStructure(*this);
    text::LentText copy(treeState.texts, rest);
    const FieldWatch watch(*this);
    for (rest = copy.view(); !rest.empty() && !watch.ended();) {
        const std::string_view path = text::trim(text::cutAt(rest, ';'));
        if (!isOwn || !clearKnownValue(*this, path))
            executeClearField(copy.cut(path));
    }
}

void DataNode::setData(char* /*value*/, int /*index*/) {}

void DataNode::setData(char* /*value*/) {}

DataNode* DataNode::findRoot() {
    for (DataNode* node = this; node; node = node->getParent())
        if (node->isOfType(Orbel::getClassType()) != 0)
            return node;
    return nullptr;
}
