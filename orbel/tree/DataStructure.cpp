#include <orbel/tree/DataStructure.h>

#include <orbel/foundation/DataClassType.h>
#include <orbel/tree/DataHashTable.h>
#include <orbel/tree/DataValue.h>

#include "../foundation/text/FixedText.h"
#include "../foundation/text/Scanner.h"
#include "../foundation/text/Writer.h"
#include "CommandText.h"
#include "DumpUnderWay.h"
#include "FieldCreation.h"
#include "FieldPath.h"
#include "FieldWatch.h"
#include "HandlerList.h"
#include "Limits.h"
#include "TreeState.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <iostream>
#include <iterator>
#include <map>

namespace {

/// Contract: an array tells how many fields its first element has, not how many elements there are.
void writeLabel(std::ostream& os, DataField& child) {
    if (child.isOfType(DataArray::getClassType()) != 0) {
        auto& array = static_cast<DataArray&>(child);
        if (!array.getObjectType())
            return;
        os << array.getObjectTypeName();
        if (array.isOfType(DataHashTable::getClassType()) == 0)
            os << '[' << std::to_string(array.getNumFields()) << ']';
        os << ':';
        return;
    }
    if (child.isOfType(DataStructure::getClassType()) != 0) {
        const bool isObject = child.isOfType(DataObject::classType) != 0;
        const char* typeName = isObject ? static_cast<DataObject&>(child).getObjectTypeName() : nullptr;
        os << (typeName ? typeName : "node") << ':';
        return;
    }
    if (child.isOfType(DataValue::getClassType()) != 0) {
        DataBaseType::indent(os);
        os << "string:";
    }
}

/// Whether a child of this node is within the depth that trees may have.
bool mayGoDeeper(DataNode& node) {
    int depth = 1;
    for (DataNode* ancestor = node.getParent(); ancestor && depth <= limits::maxTreeDepth; ++depth)
        ancestor = ancestor->getParent();
    return depth <= limits::maxTreeDepth;
}

} // namespace

struct DataStructure::Children {
    int owners = 0;
    std::map<std::string, DataField*, std::less<>> byName;
};

DataType* DataStructure::classType = nullptr;

void DataStructure::init() {
    if (classType)
        return;
    DataNode::init();
    char name[] = "DataStructure";
    classType = new DataClassType<DataStructure, DataNode>(name);
}

DataType* DataStructure::getClassType() {
    init();
    return classType;
}

DataStructure::DataStructure(char* name) : DataNode(name), m_children(new Children) {
    setType(getClassType());
}

DataStructure::DataStructure(const DataStructure& other) = default;

DataStructure& DataStructure::operator=(const DataStructure& other) {
    if (this == &other)
        return *this;
    if (m_children->owners == 1)
        removeChildren();
    DataNode::operator=(other);
    m_children = other.m_children;
    return *this;
}

DataStructure::~DataStructure() {
    if (treeState.lastSearched == this)
        treeState.lastSearched = nullptr;
}

const char* DataStructure::getTypeName() {
    return "DataStructure";
}

void DataStructure::dump(std::ostream& os, int first, int last, int withName) {
    DumpUnderWay dump(os);
    DataType* const valueType = DataValue::getClassType();
    DataType* const nodeType = DataNode::getClassType();
    indent(os);
    if (withName != 0) {
        text::write(os, getName());
        text::write(os, " =");
    }
    text::write(os, "{");
    incrIndent();
    for (const auto& [name, child] : m_children->byName) {
        if (child->isExactType(valueType) != 0 || child->isOfType(nodeType) == 0)
            text::writeLineEnd(os, getIndent());
        else
            text::write(os, "\n");
        child->dump(os, first, last, 1);
    }
    text::writeLineEnd(os, decrIndent());
    text::write(os, "}");
    dump.end();
}

void DataStructure::dumpXML(std::ostream& os) {
    DumpUnderWay dump(os);
    indent(os);
    os << '<' << getName() << ">\n";
    incrIndent();
    for (const auto& [name, child] : m_children->byName) {
        child->dump(os, -1, -1, 1);
        os << '\n';
    }
    decrIndent();
    indent(os);
    os << "</" << getName() << ">\n";
    dump.endFlushed();
}

void DataStructure::dump() {
    dump(std::cout, -1, -1, 1);
}

void DataStructure::ClearLinks() {
    DataField::ClearLinks();
    for (const auto& [name, child] : m_children->byName)
        child->ClearLinks();
}

int DataStructure::getSize() {
    return 1;
}

DataField* DataStructure::clone() {
    auto* copy = static_cast<DataStructure*>(type()->alloc(getName(), getSize()));
    for (const auto& [name, child] : m_children->byName)
        copy->addField(child->clone(), -1);
    return copy;
}

void DataStructure::parse(char* indexSpec, char* textToRead) {
    std::string_view groups = text::viewOf(textToRead);
    if (!indexSpec) {
        if (const auto commands = text::braceGroup(groups))
            parseCommand(std::string(*commands).data(), 0);
        return;
    }
    const FieldWatch watch(*this);
    std::string_view ranges = text::viewOf(indexSpec);
    while (!ranges.empty()) {
        const text::IndexRange range = text::readIndexRange(ranges);
        if (range.start == -1)
            return;
        const int last = range.end == -1 ? range.start : range.end;
        for (long long index = range.start; index <= last; ++index) {
            if (groups.empty() || watch.ended())
                return;
            if (const auto commands = text::braceGroup(text::cutListItem(groups, ',')))
                parseCommand(std::string(*commands).data(), static_cast<int>(index));
        }
    }
}

bool DataStructure::getData(char** /*value*/, int /*index*/) {
    return false;
}

void DataStructure::clearData() {
    const FieldWatch watch(*this);
    for (auto child = m_children->byName.begin(); child != m_children->byName.end();) {
        // A handler may take children out while they are cleared: go on behind the name, not the entry.
        const std::string name = child->first;
        child->second->clearData();
        if (watch.ended())
            return;
        child = m_children->byName.upper_bound(name);
    }
}

bool DataStructure::copyData(DataField* source, int /*sourceIndex*/, int /*targetIndex*/, int /*count*/) {
    if (!source || source->isOfType(getClassType()) == 0)
        return false;
    const FieldWatch watch(*this);
    const FieldWatch sourceWatch(*source);
    // Assigning to the source in a callback gives it other children.
    const auto children = static_cast<DataStructure*>(source)->m_children;
    for (auto child = children->byName.begin(); child != children->byName.end();) {
        std::string name = child->first;
        if (name.substr(0, 1) != "#")
            if (DataField* target = getField(name.data(), 0, 1))
                target->copyData(child->second, 0, 0, -1);
        if (watch.ended() || sourceWatch.ended())
            return true;
        child = children->byName.upper_bound(name);
    }
    return true;
}

bool DataStructure::addField(DataField* field, int instance) {
    if (!field)
        return false;
    const bool added = m_children->byName.try_emplace(field->getName(), field).second;
    field->setParent(this, instance);
    field->ref(this, this);
    return added;
}

void DataStructure::getFieldsVector(std::vector<DataField*>* out) {
    if (!out)
        return;
    out->clear();
    out->reserve(m_children->byName.size());
    for (const auto& [name, child] : m_children->byName)
        out->push_back(child);
}

void DataStructure::clearFieldsVector(std::vector<DataField*>* out) {
    if (out)
        out->clear();
}

DataField* DataStructure::findChild(std::string_view name) {
    const auto found = m_children->byName.find(name);
    return found == m_children->byName.end() ? nullptr : found->second;
}

DataField* DataStructure::getField(char* path, int index, int flag) {
    if (!path)
        return nullptr;
    const std::string_view whole(path, strnlen(path, limits::maxPathLength + 1));
    if (whole.size() > limits::maxPathLength)
        return nullptr;
    treeState.lastSearched = this;
    treeState.wildcard = false;

    const std::size_t slash = whole.find('/');
    const PathSegment segment = readSegment(whole.substr(0, slash));
    char* rest = slash == std::string_view::npos ? nullptr : path + slash + 1;

    if (segment.isWildcard()) {
        treeState.wildcard = true;
        text::copyCut(treeState.wildcardRest, rest);
        return nullptr;
    }
    if (segment.isParent() && getParent())
        return getParent()->getField(rest, index, flag);

    if (!segment.kind) {
        DataField* child = findChild(segment.name);
        return child ? descend(child, segment.indexText, rest, index, flag) : nullptr;
    }

    // Creating and marking run callbacks, and the path may stand in a buffer that those write to.
    std::array<char, limits::maxPathLength + 1> copy{};
    whole.copy(copy.data(), whole.size());
    const PathSegment copied = readSegment({copy.data(), std::min(slash, whole.size())});
    const FieldWatch watch(*this);
    DataField* child = findOrCreate(*copied.kind, copied.name);
    if (!child || watch.ended())
        return nullptr;
    return descend(child, copied.indexText, rest ? copy.data() + slash + 1 : nullptr, index, flag);
}

/// Contract: a kind retypes what exists, as far as it can have an object type.
void DataStructure::setObjectTypeOf(DataField& child, std::string_view kind) {
    std::string typeName(kind);
    // Without a record there is no object either; asking for it would load the types for nothing.
    if (child.isOfType(DataObject::classType) != 0)
        static_cast<DataObject&>(child).setObjectType(typeName.data());
    else if (child.isOfType(DataArray::getClassType()) != 0)
        static_cast<DataArray&>(child).setObjectType(typeName.data());
}

DataField* DataStructure::findOrCreate(std::string_view kind, std::string_view name) {
    std::string_view childName = name;
    if (kind == hashTableKind)
        if (const auto table = readTableName(name))
            childName = table->table;
    DataField* child = findChild(limits::cutName(childName));
    const bool isNew = !child;
    if (isNew && mayGoDeeper(*this))
        child = createField(kind, name).release();
    if (!child)
        return nullptr;

    const FieldWatch watch(*this);
    const FieldWatch childWatch(*child);
    if (!isNew)
        setObjectTypeOf(*child, kind);
    if (watch.ended() || childWatch.ended())
        return nullptr;
    child->registerMarker();
    if (watch.ended() || childWatch.ended())
        return nullptr;
    addField(child, -1);
    return child;
}

DataField* DataStructure::descend(DataField* child, std::optional<std::string_view> indexText, char* rest, int index,
                                  int flag) {
    if (child->isOfType(DataNode::getClassType()) == 0)
        return child;
    const bool isTable = child->isOfType(DataHashTable::getClassType()) != 0;
    if (!isTable) {
        if (!rest)
            return child;
        const int start = indexText ? text::readIndexRange(*indexText).start : 0;
        return static_cast<DataNode*>(child)->getField(rest, start, 1);
    }
    if (!indexText || (!rest && flag == 0))
        return child;
    const std::string_view key = keyOf(*indexText);
    if (rest && key.find(',') != std::string_view::npos)
        return child;
    if (key.empty())
        return nullptr;
    std::array<char, limits::maxPathLength + 1> keyText{};
    key.copy(keyText.data(), key.size());
    DataObject* entry = static_cast<DataHashTable*>(child)->getObject(keyText.data());
    if (!entry || !rest)
        return entry;
    return entry->getField(rest, index, 1);
}

void DataStructure::removeField(char* name, int index) {
    if (m_children->byName.empty())
        return;
    const auto entry = m_children->byName.find(text::viewOf(name));
    DataField* field = entry != m_children->byName.end() ? entry->second : getField(name, index, 1);
    if (!field)
        return;
    field->unref(this, this);
    if (entry == m_children->byName.end())
        return;
    m_children->byName.erase(entry);
    // A field that is no child any more must not name a parent that may be gone by the time it is asked.
    if (field->getParent() == this)
        field->setParent(nullptr, field->getParentInstance());
}

void DataStructure::removeChildren() {
    const int count = getNumFields();
    for (int ordinal = 0; ordinal < count && !m_children->byName.empty(); ++ordinal) {
        const auto entry = m_children->byName.begin();
        DataField* child = entry->second;
        m_children->byName.erase(entry);
        child->setParent(nullptr, ordinal);
        child->unref(this, this);
    }
}

void DataStructure::deleteChildren() {
    for (std::size_t left = m_children->byName.size(); left > 0 && !m_children->byName.empty(); --left) {
        const auto entry = m_children->byName.begin();
        DataField* child = entry->second;
        m_children->byName.erase(entry);
        child->unref(this, this);
        child->setParent(nullptr, 0);
        disposeIfUnused(child);
    }
}

void DataStructure::disposeIfUnused(DataField* field) {
    if (field->getRef() != 0 || field->getNumHandlers() != 0)
        return;
    if (field->isOfType(DataNode::getClassType()) != 0) {
        auto* node = static_cast<DataNode*>(field);
        if (node->getNumFields() > 0)
            node->deleteChildren();
        if (node->getNumFields() > 0)
            return;
    }
    delete field;
}

int DataStructure::getNumFields() {
    return static_cast<int>(m_children->byName.size());
}

DataField* DataStructure::getFieldByIndex(int index) {
    if (index >= getNumFields() || m_children->byName.empty())
        return nullptr;
    return std::next(m_children->byName.begin(), std::max(index, 0))->second;
}

bool DataStructure::registerHandler(char* path, DataHandler* handler, int index) {
    if (!handler)
        return false;
    const FieldWatch watch(*this);
    DataField* found = getField(path, index, 1);
    if (watch.ended())
        return false;
    if (!found)
        found = findChild(limits::cutName(text::viewOf(path)));
    if (DataField* old = HandlerList::fieldOf(*handler)) {
        if (old == found)
            return true;
        old->unregisterHandler(handler);
        if (old->getNumHandlers() == 0) {
            if (DataNode* parent = old->getParent())
                parent->removeField(old->getName(), -1);
            if (!found) {
                old->setName(path);
                addField(old, index);
                found = old;
            }
            found->registerHandler(handler);
            return true;
        }
    }
    if (!found) {
        found = static_cast<DataField*>(handler->getFieldType()->alloc(path, 0));
        addField(found, index);
    }
    found->registerHandler(handler);
    return true;
}

bool DataStructure::unregisterHandler(DataHandler* handler) {
    DataField* field = handler ? HandlerList::fieldOf(*handler) : nullptr;
    if (!field)
        return false;
    field->unregisterHandler(handler);
    DataNode* parent = field->getParent();
    if (field->getNumHandlers() != 0 || !parent)
        return true;
    parent->removeField(field->getName(), field->getParentInstance());
    disposeIfUnused(field);
    return true;
}

bool DataStructure::setFieldSize(char* path, int size) {
    DataField* field = getField(path, 0, 1);
    if (field)
        field->setSize(size);
    return field != nullptr;
}

bool DataStructure::getFieldSize(char* path, int* size) {
    DataField* field = getField(path, 0, 1);
    if (field && size)
        *size = field->getSize();
    return field != nullptr;
}

bool DataStructure::setFieldData(char* path, std::string* value) {
    DataField* field = getField(path, 0, 1);
    if (field)
        field->setData(value, 0);
    return field != nullptr;
}

bool DataStructure::setFieldData(char* path, char* value) {
    DataField* field = getField(path, 0, 1);
    if (field)
        field->setData(value);
    return field != nullptr;
}

bool DataStructure::setFieldData(char* path, char* value, int index) {
    DataField* field = getField(path, 0, 1);
    if (field)
        field->setData(value, index);
    return field != nullptr;
}

bool DataStructure::setFieldData(char* path, std::vector<char*>* values, int from, int to) {
    DataField* field = getField(path, 0, 1);
    if (field)
        field->setData(values, from, to);
    return field != nullptr;
}

bool DataStructure::getFieldData(char* path, std::string* value) {
    DataField* field = getField(path, 0, 1);
    const std::string* stored = field ? field->getData(0) : nullptr;
    if (stored && value)
        *value = *stored;
    return stored != nullptr;
}

bool DataStructure::getFieldData(char* path, char** value) {
    DataField* field = getField(path, 0, 1);
    if (field)
        field->getData(value, 0);
    return field != nullptr;
}

bool DataStructure::getFieldData(char* path, std::vector<char*>* out, int from, int to) {
    DataField* field = getField(path, 0, 1);
    if (field)
        field->getData(out, from, to);
    return field != nullptr;
}

bool DataStructure::addLink(char* sourcePath, char* targetPath) {
    const FieldWatch watch(*this);
    std::vector<DataField*> source(1, getField(sourcePath, 0, 1));
    const FieldListWatch sourceWatch(source);
    if (watch.ended())
        return false;
    // Contract: a kind in the target's path creates also when there is no source to follow.
    DataField* target = getField(targetPath, 0, 1);
    if (!target || !source.front())
        return false;
    source.front()->addTargetLink(target);
    return true;
}

bool DataStructure::removeLink(char* targetPath) {
    DataField* target = getField(targetPath, 0, 1);
    if (target)
        target->removeSourceLink();
    return target != nullptr;
}

void DataStructure::parseLinkCommand(char* textToRun) {
    if (!textToRun)
        return;
    if (DataNode* root = findRoot())
        root->ClearLinks();
    runList(*this, textToRun, [&](char* command) { executeLinkCommand(command); });
}

void DataStructure::executeLinkCommand(char* command) {
    const std::string_view whole = text::viewOf(command);
    if (whole.substr(0, 1) == "~") {
        removeLink(command + 1);
        return;
    }
    std::string_view source = whole;
    std::string target(text::trim(text::cutAt(source, '=')));
    const FieldWatch watch(*this);
    if (whole.find('=') != std::string_view::npos && addLink(std::string(text::trim(source)).data(), target.data()) &&
        !watch.ended())
        executeCopyCommand(std::string(whole).data());
}

void DataStructure::dumpListOfFields() {
    std::cout << "Fields: ";
    for (const auto& [name, child] : m_children->byName)
        std::cout << name;
    std::cout << std::endl;
}

void DataStructure::dumpInternal(std::ostream& os, int first, int last) {
    DumpUnderWay dump(os);
    for (const auto& [name, child] : m_children->byName) {
        writeLabel(os, *child);
        child->dump(os, first, last, 1);
        os << (child->isOfType(DataObject::classType) != 0 ? ";\n" : "\n");
    }
    dump.end();
}
