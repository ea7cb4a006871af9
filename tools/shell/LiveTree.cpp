#include "LiveTree.h"

#include "../CommandLine.h"
#include "TreePaths.h"

#include <orbel/tree/DataArray.h>
#include <orbel/tree/DataObject.h>
#include <orbel/types/DataObjectTypesTable.h>
#include <orbel/types/TypeLoading.h>
#include <orbel/types/TypesState.h>

#include <filesystem>
#include <iostream>
#include <sstream>
#include <system_error>

namespace {

/// What the library prints about types goes to standard error while this exists: standard output is for results.
class OutputToErrors {
public:
    OutputToErrors() : m_before(std::cout.rdbuf(std::cerr.rdbuf())) {}
    OutputToErrors(const OutputToErrors&) = delete;
    OutputToErrors& operator=(const OutputToErrors&) = delete;
    ~OutputToErrors() { std::cout.rdbuf(m_before); }

private:
    std::streambuf* m_before;
};

/// deleteChildren spares what has a marker or an observer, and nothing is to be left here.
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
        if (paths::isNode(*child))
            deleteBelow(static_cast<DataNode&>(*child));
        delete child;
    }
}

std::string rootName() {
    return "Orbel";
}

} // namespace

LiveTree::LiveTree(const std::vector<std::string>& types) : m_root(rootName().data()) {
    const OutputToErrors errors;
    DataObject::init();
    if (types.empty())
        return;
    retireTypesTable(DataObject::s_tTypes);
    DataObject::s_tTypes = new DataObjectTypesTable;
    for (const std::string& path : types)
        if (!addTypes(path))
            throw Trouble("cannot read types from " + path);
    DataObject::s_tTypes->sortTypes();
}

LiveTree::~LiveTree() {
    deleteBelow(m_root);
}

bool LiveTree::addTypes(const std::string& path) {
    const OutputToErrors errors;
    std::error_code unreadable;
    if (!std::filesystem::is_directory(path, unreadable))
        return loadTypeFile(DataObject::s_tTypes, path);
    const std::filesystem::directory_iterator entries(path, unreadable);
    if (unreadable)
        return false;
    loadTypeFolder(DataObject::s_tTypes, path);
    return true;
}

std::string LiveTree::dump(const std::string& path) {
    std::ostringstream os;
    // An empty array leaves the level of whatever is printed behind it one lower.
    DataBaseType::setIndent(0);
    m_root.dumpField((path.empty() ? rootName() : std::string(path)).data(), os);
    DataBaseType::setIndent(0);
    std::string text = os.str();
    if (!text.empty() && text.back() != '\n')
        text += '\n';
    return text;
}
