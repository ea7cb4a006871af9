#include "Show.h"

#include "Target.h"

#include <orbel/tree/TreeState.h>
#include <support/Environment.h>

#include <algorithm>
#include <set>
#include <sstream>
#include <vector>

namespace {

/// Once per process, and the same for all inputs.
void declareTypes() {
    if (DataObject::getTypesTable())
        return;
    clearTypeVariables();
    DataObject::init();
    DataObject::getTypesTable()->parse(Text("Point = {string x=0; string y=0;};"
                                            "Label = {string text=Hello; Point pos; string tags[4]=none;};"));
}

void checkValue(DataField& value) {
    const std::vector<std::string>* texts = value.getDataVector();
    check(texts && static_cast<int>(texts->size()) == value.getSize(), "a value has as many texts as its size says");
    std::vector<char*> pointers;
    value.getData(&pointers, 0, -1);
    check(pointers.size() == texts->size(), "all texts of a value can be read at once");
    for (int index = 0; index < value.getSize(); ++index) {
        char* text = nullptr;
        const std::string& stored = (*texts)[static_cast<std::size_t>(index)];
        check(value.getData(&text, index) && text && stored.c_str() == std::string_view(text), "a text reads back");
        check(*value.getData(index) == stored, "a text reads back as a string");
        check(pointers[static_cast<std::size_t>(index)] == stored, "a text reads back among all");
    }
    for (const int outside : {-1, value.getSize()})
        check(!value.getData(outside) || value.getSize() == 1, "there is no text outside");
}

bool isPlain(std::string_view name) {
    return !name.empty() && std::all_of(name.begin(), name.end(), [](char character) {
        return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
               (character >= '0' && character <= '9') || character == '_';
    });
}

class Walk {
public:
    explicit Walk(Orbel& root) : m_root(&root) {}

    void goDown(DataNode& node, int depth, bool hasPlainPath) {
        check(depth <= 1'001, "no tree is deeper than paths make it");
        if (node.isOfType(DataArray::getClassType()) != 0) {
            checkArray(static_cast<DataArray&>(node), depth, hasPlainPath);
            return;
        }
        std::vector<DataField*> children;
        node.getFieldsVector(&children);
        check(static_cast<int>(children.size()) == node.getNumFields(), "as many children as a node counts");
        for (std::size_t index = 0; index < children.size(); ++index) {
            DataField& child = *children[index];
            check(child.getParent() == &node, "a child knows its parent");
            check(node.getFieldByIndex(static_cast<int>(index)) == &child, "a child is found by its position");
            check(index == 0 || std::string_view(children[index - 1]->getName()) < child.getName(),
                  "children are ordered by name");
            visit(child, depth, hasPlainPath && isPlain(child.getName()));
        }
        check(!node.getFieldByIndex(static_cast<int>(children.size())), "there is no child past the end");
    }

private:
    void checkArray(DataArray& array, int depth, bool hasPlainPath) {
        for (int index = 0; index < array.getSize(); ++index) {
            DataObject* element = array.DataArray::getObject(index);
            check(element && element->getParent() == &array, "an element knows its array");
            check(element->getParentInstance() == index, "an element knows its position");
            visit(*element, depth, hasPlainPath && array.isOfType(DataHashTable::getClassType()) == 0);
        }
        check(!array.DataArray::getObject(-1) && !array.DataArray::getObject(array.getSize()), "no element outside");
        if (array.isOfType(DataHashTable::getClassType()) != 0)
            checkKeys(static_cast<DataHashTable&>(array));
    }

    static void checkKeys(DataHashTable& table) {
        for (int index = 0; index < table.getSize(); ++index) {
            char* const key = table.getObjectKey(index);
            check(key && table.getObject(key) == table.getObject(index), "an entry is found by its key");
        }
    }

    void visit(DataField& field, int depth, bool hasPlainPath) {
        check(m_seen.insert(&field).second, "a field is at one place");
        check(field.getRef() >= 1, "a field in a tree is referred to");
        checkLink(field);
        if (hasPlainPath && depth < 28)
            checkPath(field);
        if (field.isOfType(DataNode::getClassType()) != 0)
            goDown(static_cast<DataNode&>(field), depth + 1, hasPlainPath);
        else if (field.isOfType(DataValue::getClassType()) != 0)
            checkValue(field);
    }

    void checkPath(DataField& field) {
        std::string path = field.getFullPath();
        if (path.size() <= 511 && path.back() != ']')
            check(m_root->getField(path.data(), 0, 1) == &field, "a full path leads back to its field");
    }

    static void checkLink(DataField& field) {
        DataField* const source = field.getLinkSource();
        check(!source || field.findLinkSource(source), "a source is on the chain of sources");
        int steps = 0;
        for (DataField* at = source; at; at = at->getLinkSource())
            check(at != &field && ++steps < 10'000, "links close no circle");
    }

    Orbel* m_root;
    std::set<DataField*> m_seen;
};

} // namespace

void Listener::onChange(DataField& field, bool changed) {
    m_heard += changed ? 1 : 0;
    if (const std::string* text = field.getData(0))
        m_heard += text->size();
}

void Listener::onChange(DataField& field, bool changed, int from, int to) {
    m_heard += static_cast<std::size_t>(changed) + (from <= to);
    onChange(field, changed);
}

void Listener::onTypeChange(DataField&, char* typeName) {
    m_heard += std::string_view(typeName).size();
}

Show::Show() {
    declareTypes();
    DataBaseType::setIndent(0);
    m_root.reset(new Orbel(Text("show")));
    for (const char* path : {"string:a", "string:b", "string:list", "node:scene/string:title", "node:scene/node:text",
                             "scene/text/string:size", "Label:caption", "Point[3]:points", "DataHashTable:cities:Point",
                             "string:follower", "node:twin/string:title"})
        root().getField(Text(path), 0, 0);
    at("list")->setSize(3);
    auto* cities = static_cast<DataHashTable*>(at("cities"));
    cities->setObjectType(DataObject::getTypesTable()->getTypeByName("Point"));
    for (const char* key : {"Oslo", "Rome"})
        cities->newObject(Text(key));
    root().parseCommand(Text("a = 1; b = \"\"2, 3\"\"; list[0-2] = x,y,z; scene/title = Hello; cities[Oslo]/x = 11"),
                        0);
    root().addLink(Text("a"), Text("follower"));
    root().addLink(Text("scene"), Text("twin"));
    at("a")->registerHandler(&m_onValue);
    at("scene")->registerHandler(&m_onNode);
    at("points")->registerHandler(&m_onArray);
}

Show::~Show() {
    m_root.reset();
    check(treeState.childTables == 0, "a tree that has gone leaves no list of children");
    check(!treeState.lastSearched, "a tree that has gone was not searched last");
    check(!treeState.watches && !treeState.listWatches && !treeState.builds, "no operation is under way");
    check(treeState.commandDepth == 0 && treeState.repetitionDepth == 0, "no command is under way");
    check(treeState.linkDepth == 0, "no change is being passed along");
    check(!treeState.dumpStream, "no dump is under way");
    treeState.wildcard = false;
    DataBaseType::setIndent(0);
}

std::string Show::textAt(const std::string& path) {
    DataField* const field = at(path);
    const std::string* const text = field ? field->getData(0) : nullptr;
    return text ? *text : std::string();
}

void Show::checkSound() {
    Walk(root()).goDown(root(), 0, true);
}

std::string Show::dumped() {
    DataBaseType::setIndent(0);
    std::ostringstream os;
    root().dump(os, -1, -1, 1);
    root().dumpXML(os);
    root().dumpInternal(os, -1, -1);
    Orbel::dumpSpec(os, &root());
    return os.str();
}

namespace {

bool isTypeKind(std::string_view textBehindName) {
    return textBehindName.starts_with(':') || textBehindName.starts_with('[');
}

} // namespace

bool asksForMuch(std::string_view text) {
    if (std::count(text.begin(), text.end(), '*') > 2)
        return true;
    bool makesArray = false;
    for (std::size_t at = text.find('['); at != std::string_view::npos; at = text.find('[', at + 1)) {
        const std::size_t end = text.find_first_of("/=;", at);
        const std::string_view segment = text.substr(at, end == std::string_view::npos ? end : end - at);
        const auto digits = std::count_if(segment.begin(), segment.end(),
                                          [](char character) { return character >= '0' && character <= '9'; });
        if (segment.find(':') == std::string_view::npos)
            continue;
        makesArray = true;
        if (digits > 2)
            return true;
    }
    int typeKinds = 0;
    for (const std::string_view name : {"Point", "Label"})
        for (std::size_t at = text.find(name); at != std::string_view::npos; at = text.find(name, at + 1))
            typeKinds += isTypeKind(text.substr(at + name.size())) ? 1 : 0;
    return makesArray && typeKinds > 1;
}
