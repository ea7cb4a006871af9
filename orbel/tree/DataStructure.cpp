#include <orbel/tree/DataStructure.h>

#include <orbel/foundation/DataClassType.h>
#include <orbel/tree/DataHashTable.h>
#include <orbel/tree/DataValue.h>
#include <orbel/tree/Orbel.h>

#include "../foundation/text/FixedText.h"
#include "../foundation/text/Scanner.h"
#include "../foundation/text/Writer.h"
#include "ChildTable.h"
#include "CommandText.h"
#include "DumpUnderWay.h"
#include "ExactClass.h"
#include "FieldCreation.h"
#include "FieldPath.h"
#include "FieldTies.h"
#include "FieldWatch.h"
#include "HandlerList.h"
#include "Limits.h"
#include "NewField.h"
#include "TreeState.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <iostream>
#include <optional>

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

/// The lines of values that follow each other in a dump. Where nobody looks on half way they are written together.
class DumpLines {
public:
    explicit DumpLines(std::ostream& os) : m_os(os), m_lines(treeState.texts) {}

    static bool fits(DataField& child) {
        return treeState.dumpFlushesOnce && DataBaseType::indentation < limits::maxTreeDepth &&
               child.isExactType(DataValue::classType) != 0 && isExactly<DataValue>(child);
    }

    /// Begins a line, whose text is to be added.
    std::string& next() {
        if (m_lines.view().size() >= atOnce)
            write();
        text::appendLineEnd(m_lines.get(), DataBaseType::indentation);
        return m_lines.get();
    }

    void write() {
        if (m_lines.view().empty())
            return;
        text::writeTabs(m_os, 0);
        text::write(m_os, m_lines.view());
        m_lines.get().clear();
    }

private:
    static constexpr std::size_t atOnce = 16'384;

    std::ostream& m_os;
    text::LentText m_lines;
};

/// Whether the field is `above`, or is listed anywhere below it. Not by parents: an element that was moved elsewhere is
/// still one of its array.
bool isWithin(DataField& above, DataField& field) {
    if (&above == &field)
        return true;
    if (!above.isOfType(DataNode::getClassType()))
        return false;
    if (above.isOfType(DataArray::getClassType())) {
        auto& array = static_cast<DataArray&>(above);
        for (int index = 0; index < array.getSize(); ++index)
            if (DataObject* element = array.getObject(index); element && isWithin(*element, field))
                return true;
        return false;
    }
    std::vector<DataField*> children;
    static_cast<DataNode&>(above).getFieldsVector(&children);
    return std::any_of(children.begin(), children.end(), [&](DataField* child) { return isWithin(*child, field); });
}

} // namespace

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

DataStructure::DataStructure(char* name) : DataStructure(getClassType(), text::viewOf(name)) {}

DataStructure::DataStructure(DataType* type, std::string_view name)
    : DataNode(type, name), m_children(new ChildTable) {}

DataStructure::DataStructure(const DataStructure& other) = default;

DataStructure& DataStructure::operator=(const DataStructure& other) {
    if (this == &other)
        return *this;
    DataNode::operator=(other);
    if (m_children->hasOneStructure())
        removeChildren();
    treeState.paths.drop();
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
    DumpLines lines(os);
    m_children->forEach([&](const char*, DataField& child) {
        if (DumpLines::fits(child)) {
            static_cast<DataValue&>(child).appendDump(lines.next(), first, last, 1);
            return;
        }
        lines.write();
        if (child.isExactType(valueType) != 0 || child.isOfType(nodeType) == 0)
            text::writeLineEnd(os, getIndent());
        else
            text::write(os, "\n");
        child.dump(os, first, last, 1);
    });
    lines.write();
    text::writeLineEnd(os, decrIndent());
    text::write(os, "}");
    dump.end();
}

void DataStructure::dumpXML(std::ostream& os) {
    DumpUnderWay dump(os);
    indent(os);
    os << '<' << getName() << ">\n";
    incrIndent();
    m_children->forEach([&](const char*, DataField& child) {
        child.dump(os, -1, -1, 1);
        os << '\n';
    });
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
    m_children->forEach([](const char*, DataField& child) { child.ClearLinks(); });
}

int DataStructure::getSize() {
    return 1;
}

DataField* DataStructure::clone() {
    auto* copy = static_cast<DataStructure*>(type()->alloc(getName(), getSize()));
    NewField made(*copy);
    m_children->forEach([&](const char*, DataField& child) {
        NewField childCopy(*child.clone());
        copy->addField(childCopy.get(), -1);
        childCopy.release();
    });
    made.release();
    return copy;
}

void DataStructure::parse(char* indexSpec, char* textToRead) {
    std::string_view groups = text::viewOf(textToRead);
    if (!indexSpec) {
        const auto commands = text::braceGroup(groups);
        // What clients override wants a text of its own.
        if (commands && isOwnStructure(*this))
            runCommands(*commands, 0);
        else if (commands)
            parseCommand(text::LentText(treeState.texts, *commands).chars(), 0);
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
    ChildTable::Cursor cursor(m_children);
    while (!watch.ended()) {
        DataField* child = cursor.next();
        if (!child)
            return;
        child->clearData();
    }
}

bool DataStructure::copyData(DataField* source, int /*sourceIndex*/, int /*targetIndex*/, int /*count*/) {
    if (!source || source->isOfType(getClassType()) == 0)
        return false;
    const FieldWatch watch(*this);
    const FieldWatch sourceWatch(*source);
    ChildTable::Cursor cursor(static_cast<DataStructure*>(source)->m_children);
    while (!watch.ended() && !sourceWatch.ended()) {
        DataField* child = cursor.next();
        if (!child)
            break;
        if (cursor.name()[0] == '#')
            continue;
        if (DataField* target = getField(cursor.name(), 0, 1))
            target->copyData(child, 0, 0, -1);
    }
    return true;
}

bool DataStructure::addField(DataField* field, int instance) {
    if (!field)
        return false;
    return !takeInAgain(*field, instance) && takeIn(*field, instance);
}

/// Paths with kinds take in what is there already. That only counts, as long as the child is nobody else's.
inline bool DataStructure::takeInAgain(DataField& child, int instance) {
    if (child.m_listedIn != &*m_children || child.m_parent.get() != this || !child.m_owners.isOnly(this))
        return false;
    ++child.m_referenceCalls;
    child.m_parentInstance = instance;
    return true;
}

/// addField for those who know that it is the library's own.
inline void DataStructure::takeInQuietly(DataField& field) {
    if (!takeInAgain(field, -1))
        takeIn(field, -1);
}

bool DataStructure::takeIn(DataField& field, int instance) {
    // What else takes memory of naming a parent.
    hold();
    const bool added = m_children->insert(field);
    try {
        field.ref(this, this);
    } catch (...) {
        if (added)
            m_children->erase(field.getName());
        throw;
    }
    field.setParent(this, instance);
    return added;
}

void DataStructure::getFieldsVector(std::vector<DataField*>* out) {
    if (!out)
        return;
    out->clear();
    out->reserve(m_children->size());
    m_children->forEach([&](const char*, DataField& child) { out->push_back(&child); });
}

void DataStructure::clearFieldsVector(std::vector<DataField*>* out) {
    if (out)
        out->clear();
}

DataField* DataStructure::findChild(std::string_view name) {
    return m_children->find(name);
}

/// The walk from a structure down a path.
class DataStructure::Resolution {
public:
    Resolution(DataStructure& start, const char* path, int index, int flag)
        : m_at(&start), m_path(path), m_index(index), m_flag(flag), m_isOwn(isOwnStructure(start)) {
        m_chain[0] = &start;
    }

    DataField* run() {
        DataField* found = nullptr;
        while (step(found) == Next::Segment) {
        }
        return found;
    }

    /// Whether the same path leads to the same field until something leaves the tree, and nobody was called to find it.
    bool isPlain() const { return m_isPlain; }

    /// Notes the structure in which the last segment was looked up, behind `path`, when nothing but kinds led there and
    /// nobody was called.
    void note(PathPlace& place, std::string_view path) const {
        if (!m_isQuiet || m_steps == 0 || m_steps > PathPlace::maxDepth || path.size() > PathPlace::maxLength)
            return;
        // A value ends the walk, whatever the path has behind it.
        if (m_path != path.data() + path.size() + 1)
            return;
        place.depth = m_steps;
        std::copy(m_chain.begin(), m_chain.begin() + static_cast<std::ptrdiff_t>(m_steps) + 1, place.chain.begin());
        place.length = path.copy(place.path.data(), path.size());
    }

private:
    enum class Next { Segment, End };

    /// Resolves one segment: `found` is final at the end of the walk.
    Next step(DataField*& found) {
        treeState.lastSearched = m_at;
        treeState.wildcard = false;
        const char* rest = m_path;
        const PathSegment segment = cutSegment(rest);
        if (segment.isWildcard()) {
            treeState.wildcard = true;
            text::copyCut(treeState.wildcardRest, rest);
            return Next::End;
        }
        // Without a parent it is a name like any other, but only until there is one.
        m_isPlain = m_isPlain && !segment.isParent();
        if (segment.isParent() && m_at->getParent()) {
            m_isQuiet = false;
            found = m_at->getParent()->getField(const_cast<char*>(rest), m_index, m_flag);
            return Next::End;
        }
        if (segment.kind)
            return create(segment, rest, found);
        DataField* child = m_at->findChild(segment.name);
        return child ? descend(*child, segment.indexText, rest, found) : Next::End;
    }

    Next create(const PathSegment& segment, const char* rest, DataField*& found) {
        m_isPlain = false;
        if (DataField* child = m_isOwn ? m_at->findOrCreateQuietly(*segment.kind, segment.name) : nullptr) {
            m_isKind = true;
            return descend(*child, segment.indexText, rest, found);
        }
        return createAloud(found);
    }

    Next createAloud(DataField*& found) {
        m_isQuiet = false;
        // Creating and marking run callbacks, and the path may stand in a buffer that those write to.
        if (!m_isCopied) {
            text::copyCut(m_copy, m_path);
            m_path = m_copy;
            m_isCopied = true;
        }
        const char* rest = m_path;
        const PathSegment segment = cutSegment(rest);
        const FieldWatch watch(*m_at);
        DataField* child = m_at->findOrCreate(*segment.kind, segment.name);
        return child && !watch.ended() ? descend(*child, segment.indexText, rest, found) : Next::End;
    }

    Next descend(DataField& child, const std::optional<std::string_view>& indexText, const char* rest,
                 DataField*& found) {
        found = &child;
        if (child.isExactType(DataValue::classType) != 0 || child.isOfType(DataNode::getClassType()) == 0)
            return Next::End;
        const bool isStructure = child.isExactType(classType) != 0;
        if (!isStructure && child.isOfType(DataHashTable::getClassType()) != 0)
            return enterTable(static_cast<DataHashTable&>(child), indexText, rest, found);
        if (!rest)
            return Next::End;
        int start = 0;
        if (std::string_view range = indexText.value_or(""); indexText)
            start = text::readIndexRange(range).start;
        if (isStructure || !isExactly<DataArray>(child))
            return enter(static_cast<DataNode&>(child), rest, start, found);
        found = nullptr;
        DataObject* element = static_cast<DataArray&>(child).getObject(start);
        return element ? enter(*element, rest, start, found) : Next::End;
    }

    Next enterTable(DataHashTable& table, const std::optional<std::string_view>& indexText, const char* rest,
                    DataField*& found) {
        if (!indexText)
            return Next::End;
        // Behind a table without anything else it depends on the flag what is meant.
        m_isPlain = m_isPlain && rest && isExactly<DataHashTable>(table);
        m_isQuiet = m_isQuiet && isExactly<DataHashTable>(table);
        if (!rest && m_flag == 0)
            return Next::End;
        const std::string_view key = keyOf(*indexText);
        if (rest && key.find(',') != std::string_view::npos)
            return Next::End;
        found = nullptr;
        if (key.empty())
            return Next::End;
        char keyText[limits::maxPathLength + 1];
        key.copy(keyText, key.size());
        keyText[key.size()] = '\0';
        DataObject* entry = table.getObject(keyText);
        if (entry && rest)
            return enter(*entry, rest, m_index, found);
        found = entry;
        return Next::End;
    }

    /// Classes of clients may find their fields in a way of their own.
    Next enter(DataNode& node, const char* rest, int index, DataField*& found) {
        if (!isOwnStructure(node)) {
            m_isPlain = false;
            m_isQuiet = false;
            found = node.getField(const_cast<char*>(rest), index, 1);
            return Next::End;
        }
        found = nullptr;
        m_isOwn = true;
        m_at = static_cast<DataStructure*>(&node);
        m_isQuiet = m_isQuiet && m_isKind && isExactly<DataStructure>(node);
        m_isKind = false;
        if (++m_steps < m_chain.size())
            m_chain[m_steps] = m_at;
        m_path = rest;
        m_index = index;
        m_flag = 1;
        return Next::Segment;
    }

    DataStructure* m_at;
    const char* m_path;
    int m_index;
    int m_flag;
    /// Whether the structure is of the library's own class.
    bool m_isOwn;
    bool m_isPlain = true;
    bool m_isCopied = false;
    /// Whether the segment at hand has a kind and was found or made quietly; whether all that led on were, and nobody
    /// was called at all.
    bool m_isKind = false;
    bool m_isQuiet = true;
    std::size_t m_steps = 0;
    std::array<DataStructure*, PathPlace::maxDepth + 1> m_chain;
    char m_copy[limits::maxPathLength + 1];
};

DataField* DataStructure::getField(char* path, int index, int flag) {
    if (!path)
        return nullptr;
    const std::size_t length = strnlen(path, limits::maxPathLength + 1);
    if (const PathCacheEntry* known = treeState.resolveKnown(*this, {path, length}))
        return known->field;
    return length <= limits::maxPathLength ? resolve(path, length, index, flag) : nullptr;
}

/// What leads to the leaf at a plain path in use, if nobody can have overridden what is asked of it.
inline PathCacheEntry* DataStructure::knownEntry(char* path) {
    if (!path)
        return nullptr;
    PathCacheEntry* const known =
        treeState.resolveKnown(*this, std::string_view(path, strnlen(path, PathCache::maxLength + 1)));
    return known && known->isDirect ? known : nullptr;
}

inline DataValue* DataStructure::knownValue(char* path) {
    const PathCacheEntry* known = knownEntry(path);
    return known ? static_cast<DataValue*>(known->field) : nullptr;
}

DataField* DataStructure::resolve(char* path, std::size_t length, int index, int flag) {
    const std::string_view whole(path, length);
    PathPlace& place = treeState.paths.place();
    if (const auto segment = place.behind(*this, whole); segment && goAgain(place)) {
        DataStructure& reached = *place.chain[place.depth];
        if (DataField* child = reached.resolveQuietly(*segment))
            return child;
        return Resolution(reached, segment->data(), 0, 1).run();
    }
    Resolution resolution(*this, path, index, flag);
    DataField* found = resolution.run();
    if (found && resolution.isPlain())
        treeState.paths.insert(*this, whole, *found, *treeState.lastSearched);
    else if (found)
        resolution.note(place, whole.substr(0, whole.rfind('/')));
    return found;
}

/// Does once more what the kinds on the way to a place do. False when that is not quiet any more; then nothing is done.
bool DataStructure::goAgain(const PathPlace& place) {
    for (std::size_t step = 1; step <= place.depth; ++step)
        if (!place.chain[step]->m_handlers.hasMarkerInFront())
            return false;
    for (std::size_t step = 1; step <= place.depth; ++step)
        place.chain[step - 1]->takeInQuietly(*place.chain[step]);
    return true;
}

/// The child that one segment leads to when it has a kind and no key, and nobody is called. Null for all other cases,
/// in which nothing is done.
DataField* DataStructure::resolveQuietly(std::string_view segment) {
    const std::size_t colon = segment.find(':');
    if (colon == std::string_view::npos)
        return nullptr;
    const PathSegment parts{segment.substr(0, colon), segment.substr(colon + 1), std::nullopt};
    if (parts.isWildcard() || parts.isParent() || parts.name.find('[') != std::string_view::npos)
        return nullptr;
    DataField* child = findOrCreateQuietly(*parts.kind, parts.name);
    if (child) {
        treeState.lastSearched = this;
        treeState.wildcard = false;
    }
    return child;
}

/// Whether a child is within the depth that trees may have.
bool DataStructure::mayGoDeeper() const {
    int depth = 1;
    for (const DataField* ancestor = m_parent.get(); ancestor && depth <= limits::maxTreeDepth; ++depth)
        ancestor = ancestor->m_parent.get();
    return depth <= limits::maxTreeDepth;
}

/// A new value for the kind "string", a new structure for "node"; null for other kinds.
std::unique_ptr<DataField> DataStructure::createPlain(std::string_view kind, std::string_view name) {
    if (kind == "string")
        return std::unique_ptr<DataField>(new DataValue(DataValue::getClassType(), name));
    if (kind == "node")
        return std::unique_ptr<DataField>(new DataStructure(getClassType(), name));
    return nullptr;
}

/// Contract: a kind retypes what exists, as far as it can have an object type.
void DataStructure::setObjectTypeOf(DataField& child, std::string_view kind) {
    if (child.isExactType(DataValue::classType) != 0 || child.isExactType(classType) != 0)
        return;
    // Without a record there is no object either; asking for it would load the types for nothing.
    if (child.isOfType(DataObject::classType) != 0)
        static_cast<DataObject&>(child).setObjectType(std::string(kind).data());
    else if (child.isOfType(DataArray::getClassType()) != 0)
        static_cast<DataArray&>(child).setObjectType(std::string(kind).data());
}

/// The way of nearly all paths that build a tree, where nobody is called: the structure is of the library's own class,
/// and the child is there and marked, or is a new value or structure. Null for all other cases, in which nothing is
/// done.
DataField* DataStructure::findOrCreateQuietly(std::string_view kind, std::string_view name) {
    if (kind == hashTableKind)
        return nullptr;
    name = limits::cutName(name);
    const std::uint32_t hash = namehash::of(name);
    if (const auto listed = m_children->look(name, hash)) {
        DataField* child = *listed;
        const bool isPlainChild = child && (child->isExactType(DataValue::classType) != 0 ||
                                            child->isExactType(DataStructure::classType) != 0);
        if (!isPlainChild || !child->m_handlers.hasMarkerInFront())
            return nullptr;
        takeInQuietly(*child);
        return child;
    }
    if (!mayGoDeeper())
        return nullptr;
    std::unique_ptr<DataField> child = createPlain(kind, name);
    if (!child)
        return nullptr;
    child->m_handlers.appendMarker(*child);
    child->m_parent = FieldRef(hold());
    child->m_parentInstance = -1;
    child->ref(this, this);
    m_children->insertNew(*child, hash);
    return child.release();
}

DataField* DataStructure::findOrCreate(std::string_view kind, std::string_view name) {
    std::string_view childName = name;
    if (kind == hashTableKind)
        if (const auto table = readTableName(name))
            childName = table->table;
    DataField* child = findChild(limits::cutName(childName));
    const bool isNew = !child;
    if (isNew && mayGoDeeper()) {
        std::unique_ptr<DataField> plain = createPlain(kind, name);
        child = plain ? plain.release() : createField(kind, name).release();
    }
    if (!child)
        return nullptr;

    std::optional<NewField> made;
    if (isNew)
        made.emplace(*child);
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
    if (made)
        made->release();
    return child;
}

void DataStructure::removeField(char* name, int index) {
    if (m_children->size() == 0)
        return;
    const bool isListed = m_children->contains(text::viewOf(name));
    DataField* field = isListed ? m_children->erase(text::viewOf(name)) : getField(name, index, 1);
    if (!field)
        return;
    field->unref(this, this);
    if (!isListed)
        return;
    // A field that is no child any more must not name a parent that may be gone by the time it is asked.
    if (field->getParent() == this)
        field->setParent(nullptr, field->getParentInstance());
}

void DataStructure::removeChildren() {
    m_children->takeAll([&](DataField& child, std::size_t ordinal) {
        child.setParent(nullptr, static_cast<int>(ordinal));
        child.unref(this, this);
    });
}

void DataStructure::deleteChildren() {
    for (std::size_t left = m_children->size(); left > 0; --left) {
        DataField* child = m_children->takeFirst();
        if (!child)
            continue;
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
    return static_cast<int>(m_children->size());
}

DataField* DataStructure::getFieldByIndex(int index) {
    return m_children->at(static_cast<std::size_t>(std::max(index, 0)));
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
    DataField* old = HandlerList::fieldOf(*handler);
    if (old && old == found)
        return true;
    // All that takes memory comes first: whoever fails to move is still where it was.
    const bool isLast = old && old->getNumHandlers() == (old->m_handlers.contains(*handler) ? 1 : 0);
    // A node that is moved into itself would be a circle: what there is stays then, and a new field is made.
    const bool leavesNobody = isLast && (found || !isWithin(*old, *this));
    if (!found && leavesNobody)
        makeRoomForChild();
    else if (!found)
        found = makeFor(*handler, path, index);
    else
        makeRoomForHandler(*found);
    if (old)
        old->unregisterHandler(handler);
    if (leavesNobody) {
        if (DataNode* parent = old->getParent())
            parent->removeField(old->getName(), -1);
        if (!found) {
            old->setName(path);
            addField(old, index);
            found = old;
        }
    }
    found->registerHandler(handler);
    return true;
}

void DataStructure::makeRoomForHandler(DataField& field) {
    field.m_handlers.makeRoom(field);
}

/// After this, adding a field that only its parent holds and lists does not fail.
void DataStructure::makeRoomForChild() {
    hold();
    m_children->makeRoom();
}

DataField* DataStructure::makeFor(DataHandler& handler, char* path, int index) {
    auto* field = static_cast<DataField*>(handler.getFieldType()->alloc(path, 0));
    NewField made(*field);
    addField(field, index);
    made.release();
    return field;
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
    PathCacheEntry* const known = knownEntry(path);
    if (!known)
        return setFoundData(path, value);
    // Of a large tree nothing is in the processor's caches.
    known->bringObserverNear();
    auto& field = static_cast<DataValue&>(*known->field);
    known->noteObserver(field.m_handlers.single());
    field.DataValue::setData(value);
    return true;
}

bool DataStructure::setFoundData(char* path, char* value) {
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
    if (DataValue* known = knownValue(path)) {
        known->DataValue::getData(value, 0);
        return true;
    }
    return getFoundData(path, value);
}

bool DataStructure::getFoundData(char* path, char** value) {
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
    DataField* source = getField(sourcePath, 0, 1);
    if (watch.ended())
        return false;
    std::optional<FieldWatch> sourceWatch;
    if (source)
        sourceWatch.emplace(*source);
    // Contract: a kind in the target's path creates also when there is no source to follow.
    DataField* target = getField(targetPath, 0, 1);
    if (!target || !source || sourceWatch->ended())
        return false;
    source->addTargetLink(target);
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
    runList(*this, text::viewOf(textToRun), [&](char* command, std::size_t) { executeLinkCommand(command); });
}

void DataStructure::executeLinkCommand(char* command) {
    const std::string_view whole = text::viewOf(command);
    if (whole.substr(0, 1) == "~") {
        removeLink(command + 1);
        return;
    }
    if (whole.find('=') == std::string_view::npos)
        return;
    text::LentText copy(treeState.texts, whole);
    std::string_view sourceText = copy.view();
    const std::string_view targetText = text::cutAt(sourceText, '=');
    char* const target = copy.cut(text::trim(targetText));
    char* const source = copy.cut(text::trim(sourceText));
    if (linkKnownValues(target, source))
        return;
    // Another copy, for a look-up by a class of a client may overwrite the path that it is given.
    text::LentText copied(treeState.texts, whole);
    const FieldWatch watch(*this);
    if (addLink(source, target) && !watch.ended())
        executeCopyCommand(copied.chars());
}

/// Links and copies when both paths lead to plain values in use, where nobody is called but the observers of the copy.
bool DataStructure::linkKnownValues(char* targetPath, char* sourcePath) {
    const auto known = [this](char* path) { return text::viewOf(path).ends_with(']') ? nullptr : knownValue(path); };
    DataValue* const target = known(targetPath);
    DataValue* const source = target ? known(sourcePath) : nullptr;
    if (!source)
        return false;
    source->addTargetLink(target);
    target->copyData(source, 0, 0, -1);
    return true;
}

void DataStructure::dumpListOfFields() {
    std::cout << "Fields: ";
    m_children->forEach([](const char* name, DataField&) { std::cout << name; });
    std::cout << std::endl;
}

void DataStructure::dumpInternal(std::ostream& os, int first, int last) {
    DumpUnderWay dump(os);
    m_children->forEach([&](const char*, DataField& child) {
        writeLabel(os, child);
        child.dump(os, first, last, 1);
        os << (child.isOfType(DataObject::classType) != 0 ? ";\n" : "\n");
    });
    dump.end();
}
