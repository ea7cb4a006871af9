#ifndef BENCH_PEERS_QTPROPERTIES_H
#define BENCH_PEERS_QTPROPERTIES_H

#include "../Workload.h"

#include <QByteArray>
#include <QHash>
#include <QProperty>

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

/// Qt 6: a bindable property with a change handler for each leaf, found in a hash of whole paths.
class QtProperties {
public:
    static constexpr std::string_view name = "qt-property";
    static constexpr bool observes = true;

    void build(Workload& workload) {
        for (const Workload::Path& path : workload.paths())
            m_leaves.insert(QByteArray(path.view().data(), size(path)), std::make_shared<Property>());
    }

    void makeObservers(std::size_t count) { m_observers.reserve(count); }

    void observeAll(Workload& workload) {
        for (Workload::Path path : workload.paths())
            observeOne(path);
    }

    void observeOne(Workload::Path& path) { m_observers.push_back(find(path)->onValueChanged(Count())); }

    bool set(Workload::Path& path, Workload::Value& value) {
        Property* leaf = find(path);
        if (leaf)
            leaf->setValue(QByteArray(value.view().data(), size(value)));
        return leaf != nullptr;
    }

    const char* get(Workload::Path& path) {
        const Property* leaf = find(path);
        // The copy shares the characters with the property, which keeps them.
        return leaf ? leaf->value().constData() : nullptr;
    }

    void destroy() { m_leaves = {}; }
    static std::size_t calls() { return callCount; }

private:
    using Property = QProperty<QByteArray>;
    struct Count {
        void operator()() const { ++callCount; }
    };

    template <class Text>
    static qsizetype size(const Text& text) {
        return static_cast<qsizetype>(text.view().size());
    }

    /// The path is lent to the hash, without a copy.
    Property* find(const Workload::Path& path) {
        const auto leaf = m_leaves.constFind(QByteArray::fromRawData(path.view().data(), size(path)));
        return leaf == m_leaves.constEnd() ? nullptr : leaf->get();
    }

    static inline std::size_t callCount = 0;

    QHash<QByteArray, std::shared_ptr<Property>> m_leaves;
    // Go before the properties that they watch.
    std::vector<QPropertyChangeHandler<Count>> m_observers;
};

#endif
