#include "World.h"

#include <gtest/gtest.h>

#include <sstream>
#include <vector>

namespace memory {

namespace {

constexpr int fullLinkList = 8;
constexpr int fullChildList = 6;

std::string writable(const char* text) {
    return text;
}

/// Writes down a tree and checks it on the way.
class Inspection {
public:
    explicit Inspection(World& world) : m_world(world) {}

    std::string run() {
        note(m_world.root, "");
        for (Listener* listener : {&m_world.first, &m_world.second, &m_world.third, &m_world.alone, &m_world.idle})
            noteListener(*listener);
        return m_out.str();
    }

private:
    void note(DataField& field, const std::string& indent) {
        m_out << indent << field.getName() << ' ' << field.getTypeName() << " held " << field.getRef() << " by "
              << field.getRefCalls() << " at " << field.getParentInstance() << " told " << field.getNumHandlers()
              << " asked " << field.getCountNotifyOnValueChange();
        if (DataField* source = field.getLinkSource())
            m_out << " follows " << source->getFullPath();
        if (field.isOfType(DataHashTable::getClassType()) != 0)
            noteTable(static_cast<DataHashTable&>(field), indent);
        else if (field.isOfType(DataArray::getClassType()) != 0)
            noteArray(static_cast<DataArray&>(field), indent);
        else if (field.isOfType(DataStructure::getClassType()) != 0)
            noteStructure(static_cast<DataStructure&>(field), indent);
        else
            noteValue(field);
    }

    void noteValue(DataField& field) {
        m_out << (field.getDataInitialized() != 0 ? " =" : " ?");
        for (int index = 0; index < field.getSize(); ++index)
            m_out << ' ' << *field.getData(index);
        m_out << '\n';
    }

    void noteStructure(DataStructure& node, const std::string& indent) {
        if (node.isOfType(DataObject::classType) != 0)
            m_out << " of type " << typeName(static_cast<DataObject&>(node).getObjectTypeName());
        m_out << '\n';
        std::vector<DataField*> children;
        node.getFieldsVector(&children);
        EXPECT_GE(static_cast<std::size_t>(node.getNumFields()), children.size()) << node.getName();
        for (std::size_t at = 0; at < children.size(); ++at) {
            DataField& child = *children[at];
            if (!m_world.isOdd) {
                EXPECT_EQ(node.getFieldByIndex(static_cast<int>(at)), &child);
            }
            if (!m_world.isOdd && child.getRef() == 1) {
                EXPECT_EQ(child.getParent(), &node) << child.getName();
            }
            EXPECT_GE(child.getRef(), 1) << child.getName();
            if (!m_world.isOdd && std::string(child.getName()).find_first_of("/:[.*") == std::string::npos) {
                EXPECT_EQ(node.getField(child.getName(), 0, 1), &child) << child.getName();
                if (!m_isBelowTable) {
                    EXPECT_EQ(m_world.root.getField(writable(child.getFullPath()).data(), 0, 1), &child)
                        << child.getFullPath();
                }
            }
            note(child, indent + "  ");
        }
    }

    void noteArray(DataArray& array, const std::string& indent) {
        m_out << " of type " << typeName(array.getObjectTypeName()) << '\n';
        for (int index = 0; index < array.getSize(); ++index) {
            EXPECT_EQ(array.getObject(index)->getParent(), &array);
            EXPECT_EQ(array.getObject(index)->getParentInstance(), index);
            note(*array.getObject(index), indent + "  ");
        }
    }

    void noteTable(DataHashTable& table, const std::string& indent) {
        m_out << " of type " << typeName(table.getObjectTypeName()) << '\n';
        const bool outer = std::exchange(m_isBelowTable, true);
        for (int index = 0; index < table.getSize(); ++index) {
            char* key = table.getObjectKey(index);
            if (!key) {
                ADD_FAILURE() << "an entry without a key";
                continue;
            }
            EXPECT_EQ(table.getObject(key), table.getObject(index)) << key;
            EXPECT_EQ(table.DataArray::getObject(index), table.getObject(index)) << key;
            m_out << indent << ' ' << key << '\n';
            note(*table.getObject(index), indent + "  ");
        }
        EXPECT_EQ(table.getObjectKey(table.getSize()), nullptr);
        m_isBelowTable = outer;
    }

    void noteListener(Listener& listener) {
        m_out << listener.getName() << " on "
              << (listener.getField() ? listener.getField()->getFullPath() : std::string("nothing")) << '\n';
    }

    static std::string typeName(char* name) { return name ? name : "nothing"; }

    World& m_world;
    std::ostringstream m_out;
    bool m_isBelowTable = false;
};

template <class Call>
void forEachValue(DataField& field, const Call& call) {
    if (field.isOfType(DataArray::getClassType()) != 0) {
        auto& array = static_cast<DataArray&>(field);
        for (int index = 0; index < array.getSize(); ++index)
            forEachValue(*array.DataArray::getObject(index), call);
    } else if (field.isOfType(DataStructure::getClassType()) != 0) {
        std::vector<DataField*> children;
        static_cast<DataStructure&>(field).getFieldsVector(&children);
        for (DataField* child : children)
            forEachValue(*child, call);
    } else {
        call(field);
    }
}

bool isOn(DataField& field, DataHandler& handler) {
    for (int index = 0; index < field.getNumHandlers(); ++index)
        if (field.getHandlerByID(index) == &handler)
            return true;
    return false;
}

void destroy(DataField& field) {
    if (field.isOfType(DataNode::getClassType()) != 0)
        deleteSubtree(static_cast<DataNode&>(field));
    delete &field;
}

void add(DataNode& node, const std::string& name, const std::string& text) {
    auto* value = new DataValue(writable(name.c_str()).data());
    node.addField(value, -1);
    value->setData(text.c_str());
}

} // namespace

World::World()
    : first(writable("first").data()), second(writable("second").data()), third(writable("third").data()),
      alone(writable("alone").data()), idle(writable("idle").data()), root(writable("show").data()) {
    add(root, "title", "a title that needs memory of its own");
    add(root, "subtitle", "a subtitle that needs memory of its own");
    add(root, "list", "the first of three longer texts");
    add(root, "loose", "a text that somebody observes");
    add(root, "source", "a text that many others follow");
    at("title")->addTargetLink(at("subtitle"));
    at("title")->registerHandler(&first);
    at("title")->registerHandler(&second);
    at("list")->setSize(3);
    at("list")->setData("the second of three longer texts", 1);
    at("list")->setData("the third of three longer texts", 2);
    third.setNotifyOnValueChange(1);
    at("list")->registerHandler(&third);
    at("loose")->registerHandler(&alone);

    auto* six = new DataStructure(writable("six").data());
    root.addField(six, -1);
    for (int index = 0; index < fullChildList; ++index)
        add(*six, "child " + std::to_string(index), "one of six texts of some length");
    auto* followers = new DataStructure(writable("followers").data());
    root.addField(followers, -1);
    for (int index = 0; index < fullLinkList; ++index) {
        add(*followers, "follower" + std::to_string(index), "one of eight that follow the source");
        at("source")->addTargetLink(
            followers->getField(writable("follower").append(std::to_string(index)).data(), 0, 1));
    }

    for (const char* command : {"Label:label/text = the text of the label, quite long",
                                "Point[2]:points/x = longer than it was", "DataHashTable:cities:Point = "})
        root.executeCommand(writable(command).data(), 0);
    for (const char* key : {"Oslo", "Rome"})
        cities()->newObject(writable(key).data());
    for (const char* command : {"node:others/node:six/string:child 1 = copied into a child of six",
                                "others/Point[2]:points = {{x=the first of the others},{x=the second of the others}}"})
        root.executeCommand(writable(command).data(), 0);
}

World::~World() {
    if (m_kept && !m_kept->getParent())
        destroy(*m_kept);
    for (DataField* field : m_owned)
        if (field)
            destroy(*field);
}

void World::own(DataField* field) {
    m_owned[m_owned[0] ? 1 : 0] = field;
}

void World::keep(const char* path) {
    if (!m_kept)
        m_kept = at(path);
}

DataField* World::at(const char* path) {
    return root.getField(writable(path).data(), 0, 1);
}

std::string World::state() {
    return Inspection(*this).run();
}

void World::probe() {
    for (Listener* listener : {&first, &second, &third, &alone, &idle})
        if (DataField* field = listener->getField()) {
            EXPECT_TRUE(isOn(*field, *listener)) << listener->getName();
        }
    int number = 0;
    forEachValue(root, [&](DataField& field) {
        std::vector<Listener*> listeners;
        for (int index = 0; index < field.getNumHandlers(); ++index)
            if (auto* listener = dynamic_cast<Listener*>(field.getHandlerByID(index))) {
                listener->calls = 0;
                listeners.push_back(listener);
            }
        const std::string text = "what the probe with this number stores: " + std::to_string(++number);
        field.setData(text.c_str());
        EXPECT_EQ(*field.getData(0), text);
        for (Listener* listener : listeners)
            EXPECT_EQ(listener->calls, 1) << listener->getName() << " on " << field.getFullPath();
    });
    forEachValue(root, [&](DataField& field) {
        DataField* source = field.getLinkSource();
        if (!source)
            return;
        const std::string text = "what the source of a link stores: " + std::to_string(++number);
        source->setData(text.c_str());
        EXPECT_EQ(*field.getData(0), text) << field.getFullPath();
    });
}

} // namespace memory
