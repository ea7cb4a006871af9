#ifndef ORBEL_TESTS_SUPPORT_REENTRANCYSTAGE_H
#define ORBEL_TESTS_SUPPORT_REENTRANCYSTAGE_H

#include <orbel/orbel.h>
#include <support/Shape.h>
#include <support/Text.h>
#include <support/TreeCleanup.h>

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

/// Writes down what it hears, with what the field holds at that moment, then does once what it was told to do.
class Witness : public DataHandler {
public:
    Witness(std::vector<std::string>& record, char name)
        : DataHandler(std::string(1, name).data()), m_record(&record) {}

    /// On the next call only. The deed may destroy the witness.
    void onceThen(std::function<void()> deed) { m_deed = std::move(deed); }

    void onChange(DataField& field, bool changed) override { hear(changed ? "changed " : "same ", field); }
    void onChange(DataField& field, bool changed, int from, int to) override {
        hear((changed ? "changed " : "same ") + std::to_string(from) + '-' + std::to_string(to) + ' ', field);
    }
    void onTypeChange(DataField& field, char* typeName) override { hear(std::string(typeName) + ' ', field); }

private:
    void hear(const std::string& what, DataField& field) {
        m_record->push_back(getName() + (' ' + what) + shapeOf(field));
        if (const auto deed = std::exchange(m_deed, nullptr))
            deed();
    }

    std::vector<std::string>* m_record;
    std::function<void()> m_deed;
};

/// A root with the structure "a" and in it the field x, with three handlers: E, who came earlier, A, who acts, and L,
/// who came later. Each kind of notification derives a fixture from it that says how x notifies.
class ReentrancyStage : public testing::Test {
protected:
    ReentrancyStage() { root.addField(m_parent, 0); }
    ReentrancyStage(const ReentrancyStage&) = delete;
    ReentrancyStage& operator=(const ReentrancyStage&) = delete;
    ~ReentrancyStage() override {
        m_witnesses.clear();
        deleteSubtree(root);
        if (m_isDetached)
            deleteField();
    }

    virtual void happen() = 0;

    void put(DataField* field) {
        m_field = field;
        m_parent->addField(field, 0);
    }
    DataField& x() { return *m_field; }

    /// A puts its deed into its callback.
    void when(std::function<void()> deed) { witness('A').onceThen(std::move(deed)); }
    /// Lets it happen: who heard what, in order.
    std::string told() {
        m_record.clear();
        happen();
        std::string all;
        for (const std::string& entry : m_record)
            all += (all.empty() ? "" : ", ") + entry;
        return all;
    }
    /// All there is, with the handlers of each field: "a{x<E,A,L>=1}". What has left the root stands behind a "+".
    std::string tree() {
        const std::string whole = show(root);
        const std::string inside = whole.substr(whole.find('{') + 1);
        return inside.substr(0, inside.size() - 1) + (m_isDetached && m_field ? '+' + show(*m_field) : "");
    }

    Witness& witness(char name) {
        std::unique_ptr<Witness>& found = m_witnesses[name];
        if (!found)
            found = std::make_unique<Witness>(m_record, name);
        return *found;
    }

    void join(char name) { m_field->registerHandler(&witness(name)); }
    void remove(char name) { m_field->unregisterHandler(&witness(name)); }
    void destroy(char name) { m_witnesses.erase(name); }
    void deleteField() {
        if (m_field && m_field->getParent())
            m_field->getParent()->removeField(m_field->getName(), 0);
        if (m_field && m_field->isOfType(DataNode::getClassType()) != 0)
            deleteSubtree(static_cast<DataNode&>(*m_field));
        delete std::exchange(m_field, nullptr);
    }
    /// x stays, with nobody above.
    void deleteParent() {
        root.removeField(m_parent->getName(), 0);
        delete m_parent;
        m_isDetached = true;
    }

    Orbel root{Text("root")};

private:
    static std::string handlersOf(DataField& field) {
        std::string names;
        for (int index = 0; index < field.getNumHandlers(); ++index)
            names += (names.empty() ? "<" : ",") + std::string(field.getHandlerByID(index)->getName());
        return names.empty() ? names : names + '>';
    }
    /// As shapeOf, with the handlers behind each name.
    static std::string show(DataField& field) {
        const std::string name = field.getName();
        if (field.isOfType(DataStructure::getClassType()) == 0)
            return name + handlersOf(field) + shapeOf(field).substr(name.size());
        std::vector<DataField*> children;
        static_cast<DataStructure&>(field).getFieldsVector(&children);
        std::string below;
        for (DataField* child : children)
            below += (below.empty() ? "" : ",") + show(*child);
        return name + handlersOf(field) + '{' + below + '}';
    }

    std::vector<std::string> m_record;
    std::map<char, std::unique_ptr<Witness>> m_witnesses;
    DataStructure* m_parent = new DataStructure(Text("a"));
    bool m_isDetached = false;
    DataField* m_field = nullptr;
};

#endif
