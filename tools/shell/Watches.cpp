#include "Watches.h"

#include "TreePaths.h"

#include <orbel/tree/DataHandler.h>
#include <orbel/tree/DataNode.h>

#include <algorithm>
#include <utility>

namespace {

std::string rangeOf(int from, int to) {
    return '[' + std::to_string(from) + (to == from ? "" : '-' + std::to_string(to)) + ']';
}

std::string valuesOf(DataField& field, int from, int to) {
    std::string values;
    for (int index = from; index <= to; ++index)
        if (const std::string* value = field.getData(index))
            values += (index == from ? "" : ", ") + *value;
    return values;
}

std::string lineOf(DataField& field, int from, int to) {
    const std::string range = field.getSize() > 1 ? rangeOf(from, to) : "";
    return paths::pathOf(field) + range + " = " + valuesOf(field, from, to);
}

bool isBelow(DataField& field, DataNode& root) {
    DataField* top = &field;
    while (DataNode* parent = top->getParent())
        top = parent;
    return top == &root;
}

/// The node and all nodes and values below it.
void collectItems(DataField& field, std::vector<DataField*>& items) {
    items.push_back(&field);
    for (DataField* value : paths::valuesBelow(field)) {
        std::vector<DataField*> up;
        for (DataField* at = value; at && at != &field; at = at->getParent())
            up.push_back(at);
        items.insert(items.end(), up.rbegin(), up.rend());
    }
}

} // namespace

class Watches::Watcher final : public DataHandler {
public:
    explicit Watcher(const Print& print) : m_print(print) { setNotifyOnValueChange(1); }

    void join(DataField& field) {
        // The notice that a handler has joined goes to all of them, and is no change.
        m_isJoining = true;
        field.registerHandler(this);
        m_isJoining = false;
    }

    void onChange(DataField& field, bool changed) override { tell(field, changed, 0, 0); }

    void onChange(DataField& field, bool changed, int from, int to) override {
        // Contract: a single store tells the range "index to 0".
        tell(field, changed, from, std::max(from, to));
    }

    void onTypeChange(DataField& field, char* typeName) override {
        const std::string line = paths::pathOf(field) + " : " + (typeName ? typeName : "");
        // An object and its type both tell, one after the other.
        if (line != std::exchange(m_lastType, line))
            m_print(line);
    }

private:
    void tell(DataField& field, bool changed, int from, int to) {
        if (!m_isJoining && !paths::isNode(field))
            m_print(lineOf(field, from, to) + (changed ? "" : " (unchanged)"));
    }

    const Print& m_print;
    std::string m_lastType;
    bool m_isJoining = false;
};

Watches::Watches(DataNode& root, Print print) : m_root(root), m_print(std::move(print)) {}

Watches::~Watches() = default;

bool Watches::add(const std::string& path) {
    const std::vector<DataField*> fields = paths::fieldsAt(m_root, path);
    if (fields.empty())
        return false;
    if (std::find(m_paths.begin(), m_paths.end(), path) == m_paths.end())
        m_paths.push_back(path);
    prune();
    std::set<DataField*> wanted;
    collect(path, false, wanted);
    return true;
}

bool Watches::remove(const std::string& path) {
    const auto found = std::find(m_paths.begin(), m_paths.end(), path);
    if (found == m_paths.end())
        return false;
    m_paths.erase(found);
    prune();
    std::set<DataField*> wanted;
    for (const std::string& left : m_paths)
        collect(left, false, wanted);
    std::erase_if(m_watchers, [&](const auto& entry) { return !wanted.contains(entry.first); });
    return true;
}

void Watches::refresh() {
    if (m_paths.empty())
        return;
    prune();
    std::set<DataField*> wanted;
    for (const std::string& path : m_paths)
        collect(path, true, wanted);
}

void Watches::prune() {
    std::vector<DataField*> gone;
    std::erase_if(m_watchers, [&](const auto& entry) {
        DataField* const field = entry.second->getField();
        const bool isOut = !field || !isBelow(*field, m_root);
        if (isOut && field && !field->getParent())
            gone.push_back(field);
        return isOut;
    });
    // The library spares what is watched when an object gets another type; then nobody else has it.
    for (DataField* field : gone) {
        if (field->getRef() > 0 || field->getNumHandlers() > 0)
            continue;
        if (paths::isNode(*field))
            paths::deleteBelow(static_cast<DataNode&>(*field));
        delete field;
    }
}

void Watches::collect(const std::string& path, bool tell, std::set<DataField*>& wanted) {
    for (DataField* field : paths::fieldsAt(m_root, path)) {
        std::vector<DataField*> items;
        collectItems(*field, items);
        for (DataField* item : items)
            if (wanted.insert(item).second)
                watch(*item, tell);
    }
}

void Watches::watch(DataField& field, bool tell) {
    auto& watcher = m_watchers[&field];
    if (watcher)
        return;
    watcher = std::make_unique<Watcher>(m_print);
    watcher->join(field);
    if (tell && !paths::isNode(field) && field.getDataInitialized() != 0)
        m_print(lineOf(field, 0, field.getSize() - 1));
}
