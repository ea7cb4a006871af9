#include "Growth.h"

#include "GrowthTools.h"
#include "OwnedTree.h"
#include "PlugInGrowth.h"
#include "SceneGrowth.h"

#include <orbel/orbel.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

namespace {

namespace fs = std::filesystem;

/// "*/x = 1" over nodes with a value x each.
Growth::Pass broadcast(std::size_t items) {
    auto tree = std::make_shared<OwnedTree>();
    for (std::size_t item = 0; item < items; ++item)
        tree->addValue(tree->addNode(tree->root, numbered("node", item)), "x");
    const auto work = [tree] { tree->root.executeCommand(chars("*/x = 1"), 0); };
    const auto clean = [tree, items] {
        char* text = nullptr;
        tree->root.getFieldData(chars(numbered("node", items - 1) + "/x"), &text);
        require(text && *text == '1', "broadcast did not reach the last node");
    };
    return {work, clean};
}

void declarePoint() {
    DataObject::init();
    if (!DataObject::s_tTypes->getTypeByName("Point"))
        DataObject::s_tTypes->parse(chars("Point = {string x=0; string y=0;};"));
}

Growth::Pass typedArray(std::size_t items) {
    declarePoint();
    auto array = std::make_shared<std::unique_ptr<DataArray>>();
    const auto work = [array, items] {
        array->reset(new DataArray(chars("points")));
        (*array)->setObjectType(DataObject::getObjectTypeByName(chars("Point")));
        (*array)->setSize(static_cast<int>(items));
    };
    const auto clean = [array, items] {
        require((*array)->getSize() == static_cast<int>(items), "array did not grow");
        (*array)->removeChildren();
    };
    return {work, clean};
}

Growth::Pass hashTable(std::size_t items) {
    auto keys = std::make_shared<std::vector<std::string>>();
    for (std::size_t item = 0; item < items; ++item)
        keys->push_back(numbered("key", item));
    auto table = std::make_shared<DataHashTable>(chars("table"));
    const auto work = [table, keys] {
        for (std::string& key : *keys)
            table->newObject(chars(key));
    };
    const auto clean = [table, items] {
        require(table->getSize() == static_cast<int>(items), "table did not grow");
        table->removeChildren();
    };
    return {work, clean};
}

/// A folder of type files with a hundred types each, the last file with the rest.
class TypeFolder {
public:
    explicit TypeFolder(std::size_t types) : m_path(fs::temp_directory_path() / numbered("orbel-bench-", types)) {
        constexpr std::size_t typesPerFile = 100;
        fs::create_directories(m_path);
        for (std::size_t first = 0; first < types; first += typesPerFile) {
            std::ofstream file(m_path / numbered("types", 1'000'000 + first).append(".qx"));
            for (std::size_t type = first; type < types && type < first + typesPerFile; ++type)
                file << "Type" << type << " = {string name=x; // shown\n string values[3];};\n";
        }
    }
    TypeFolder(const TypeFolder&) = delete;
    TypeFolder& operator=(const TypeFolder&) = delete;
    ~TypeFolder() { fs::remove_all(m_path); }

    std::string text() const { return m_path.string(); }

private:
    fs::path m_path;
};

Growth::Pass loadTypes(std::size_t items) {
    auto folder = std::make_shared<TypeFolder>(items);
    DataObject::init();
    const auto work = [folder] {
        delete DataObject::s_tTypes;
        DataObject::s_tTypes = nullptr;
        DataObject::readConfigFilesDir(chars(folder->text()));
    };
    const auto clean = [items] {
        require(DataObject::s_tTypes->getNumTypes() == static_cast<int>(items), "not all types were loaded");
    };
    return {work, clean};
}

/// "value0 = 1; value1 = 1; ..."
Growth::Pass commandList(std::size_t items) {
    auto tree = std::make_shared<OwnedTree>();
    auto commands = std::make_shared<std::string>();
    for (std::size_t item = 0; item < items; ++item) {
        const std::string name = numbered("value", item);
        tree->addValue(tree->root, name);
        *commands += name + " = 1; ";
    }
    const auto work = [tree, commands] { tree->root.parseCommand(chars(*commands), 0); };
    return {work, [] {}};
}

/// One expression with ten references, spread over a tree of as many values as there are evaluations.
struct Evaluation {
    OwnedTree tree;
    // Behind the tree, because it holds references on its fields.
    DataExpression expression;
};

Growth::Pass evaluate(std::size_t items) {
    constexpr std::size_t references = 10;
    auto evaluation = std::make_shared<Evaluation>();
    for (std::size_t item = 0; item < items; ++item)
        evaluation->tree.addValue(evaluation->tree.root, numbered("value", item)).setData("12.8");
    std::string text;
    for (std::size_t reference = 0; reference < references; ++reference)
        text += "$(" + numbered("value", reference * (items / references)) + ") ";
    evaluation->expression.setHostField(&evaluation->tree.root, nullptr);
    evaluation->expression.parse(chars(text));
    require(evaluation->expression.evaluate(0) == std::string("12.8 12.8 12.8 12.8 12.8 12.8 12.8 12.8 12.8 12.8 "),
            "the expression is wrong");
    const auto work = [evaluation, items] {
        for (std::size_t item = 0; item < items; ++item)
            evaluation->expression.evaluate(0);
    };
    return {work, [] {}};
}

} // namespace

const std::vector<Growth>& growths() {
    static const std::vector<Growth> all{
        {"broadcast", broadcast, true},
        {"typed-array", typedArray, false},
        {"hash-table", hashTable, false},
        {"type-files", loadTypes, false},
        {"command-list", commandList, true},
        {"expression", evaluate, true},
        {"plug-ins", plugIns, true},
        {"converted", convertedPlugIns, true},
        {"conversion", conversion, true},
        {"table-file", loadTable, false},
        {"scenes", scenes, true},
        {"wide-scene", wideScene, false},
        {"deep-scene", deepScene, false},
    };
    return all;
}
