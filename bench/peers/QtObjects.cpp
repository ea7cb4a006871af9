#include "QtObjects.h"

#include <QCoreApplication>
#include <QEvent>
#include <QString>
#include <QVariant>

namespace {

constexpr const char* property = "text";

std::size_t callCount = 0;

/// Events are delivered only where there is an application.
void needApplication() {
    static int count = 1;
    static char program[] = "orbel_bench";
    static char* arguments[] = {program, nullptr};
    static const QCoreApplication application(count, arguments);
}

QString textOf(std::string_view text) {
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

/// Calls `step` for every segment of a path.
template <class Step>
void forSegments(std::string_view path, Step step) {
    for (std::size_t from = 0; from <= path.size();) {
        const std::size_t to = std::min(path.find('/', from), path.size());
        step(path.substr(from, to - from));
        from = to + 1;
    }
}

} // namespace

bool QtObjects::Watcher::eventFilter(QObject* /*watched*/, QEvent* event) {
    if (event->type() == QEvent::DynamicPropertyChange)
        ++callCount;
    return false;
}

QtObjects::QtObjects() : m_root(std::make_unique<QObject>()) {
    needApplication();
}

/// Leaves come node by node, so the objects on the way to the last one are still in hand.
void QtObjects::build(Workload& workload) {
    std::vector<QObject*> way{m_root.get()};
    std::vector<std::string_view> names{""};
    for (const Workload::Path& path : workload.paths()) {
        std::size_t depth = 0;
        forSegments(path.view(), [&](std::string_view segment) {
            ++depth;
            if (depth < way.size() && names[depth] == segment)
                return;
            way.resize(depth);
            names.resize(depth);
            auto* object = new QObject(way.back());
            object->setObjectName(textOf(segment));
            way.push_back(object);
            names.push_back(segment);
        });
        way.back()->setProperty(property, QByteArray());
    }
}

void QtObjects::makeObservers(std::size_t count) {
    m_watchers.resize(count);
    for (auto& watcher : m_watchers)
        watcher = std::make_unique<Watcher>();
}

void QtObjects::observeAll(Workload& workload) {
    auto watcher = m_watchers.begin();
    for (const Workload::Path& path : workload.paths())
        find(path.view())->installEventFilter(watcher++->get());
}

void QtObjects::observeOne(Workload::Path& path) {
    for (const auto& watcher : m_watchers)
        find(path.view())->installEventFilter(watcher.get());
}

bool QtObjects::set(Workload::Path& path, Workload::Value& value) {
    QObject* leaf = find(path.view());
    if (leaf)
        leaf->setProperty(property, QByteArray(value.view().data(), static_cast<qsizetype>(value.view().size())));
    return leaf != nullptr;
}

const char* QtObjects::get(Workload::Path& path) {
    const QObject* leaf = find(path.view());
    if (!leaf)
        return nullptr;
    m_lent = leaf->property(property).toByteArray();
    return m_lent.constData();
}

void QtObjects::destroy() {
    m_root = std::make_unique<QObject>();
}

std::size_t QtObjects::calls() {
    return callCount;
}

QObject* QtObjects::find(std::string_view path) {
    QObject* at = m_root.get();
    forSegments(path, [&](std::string_view segment) {
        at = at ? at->findChild<QObject*>(textOf(segment), Qt::FindDirectChildrenOnly) : nullptr;
    });
    return at;
}
