#ifndef BENCH_PEERS_QTOBJECTS_H
#define BENCH_PEERS_QTOBJECTS_H

#include "../Workload.h"

#include <QByteArray>
#include <QObject>

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

class QEvent;

/// Qt 6: a tree of objects that are found by objectName, segment after segment. The text of a leaf is a dynamic
/// property, and an event filter on the leaf is told of its changes.
class QtObjects {
public:
    static constexpr std::string_view name = "qt-object";
    static constexpr bool observes = true;

    QtObjects();

    void build(Workload& workload);
    void makeObservers(std::size_t count);
    void observeAll(Workload& workload);
    void observeOne(Workload::Path& path);
    bool set(Workload::Path& path, Workload::Value& value);
    const char* get(Workload::Path& path);
    void destroy();
    static std::size_t calls();

private:
    class Watcher final : public QObject {
    public:
        bool eventFilter(QObject* watched, QEvent* event) override;
    };

    QObject* find(std::string_view path);

    std::vector<std::unique_ptr<Watcher>> m_watchers;
    std::unique_ptr<QObject> m_root;
    QByteArray m_lent;
};

#endif
