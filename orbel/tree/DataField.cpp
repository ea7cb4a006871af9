#include <orbel/tree/DataField.h>

#include <orbel/foundation/DataClassType.h>
#include <orbel/tree/DataArray.h>
#include <orbel/tree/DataNode.h>
#include <orbel/tree/Orbel.h>

#include "../foundation/text/FixedText.h"
#include "../foundation/text/Scanner.h"
#include "FieldWatch.h"
#include "HandlerList.h"
#include "LinkTargets.h"
#include "TreeState.h"

#include <algorithm>
#include <array>

DataType* DataField::classType = nullptr;

void DataField::init() {
    if (classType)
        return;
    char name[] = "DataField";
    classType = new DataClassType<DataField, DataBaseType>(name);
}

DataType* DataField::getClassType() {
    init();
    return classType;
}

DataField::DataField(char* name) : DataBaseType(name) {
    setType(getClassType());
}

DataField::DataField(const DataField& other) : DataBaseType(other) {
    shareFrom(other);
}

DataField& DataField::operator=(const DataField& other) {
    if (this == &other)
        return *this;
    unregisterAllHandlers();
    ClearLinks();
    if (m_targets)
        m_targets->releaseSilent(*this);
    DataBaseType::operator=(other);
    shareFrom(other);
    return *this;
}

DataField::~DataField() {
    if (m_hold)
        m_hold->field = nullptr;
    FieldWatch::fieldEnds(*this);
    unregisterAllHandlers();
    removeSourceLink();
    removeAllTargets();
    if (m_targets)
        m_targets->releaseSilent(*this);
}

void DataField::shareFrom(const DataField& other) {
    other.handlers();
    other.targets();
    m_handlers = other.m_handlers;
    m_targets = other.m_targets;
    m_parent = other.m_parent;
    m_parentInstance = other.m_parentInstance;
    m_dataInitialized = other.m_dataInitialized;
    m_linkSource = other.m_linkSource;
    if (m_linkSource)
        m_linkSource->targets().addSilent(this);
}

const SharedPart<FieldHold>& DataField::hold() {
    if (!m_hold) {
        m_hold = SharedPart(new FieldHold);
        m_hold->field = this;
    }
    return m_hold;
}

HandlerList& DataField::handlers() const {
    if (!m_handlers)
        m_handlers = SharedPart(new HandlerList);
    return *m_handlers;
}

LinkTargets& DataField::targets() const {
    if (!m_targets)
        m_targets = SharedPart(new LinkTargets);
    return *m_targets;
}

const char* DataField::getTypeName() {
    return "DataField";
}

void DataField::setSize(int /*n*/) {}

int DataField::getSize() {
    return 0;
}

DataField* DataField::clone() {
    return static_cast<DataField*>(type()->alloc(getName(), getSize()));
}

void DataField::parse(char* indexSpec, char* textToRead) {
    std::string_view tokens = text::viewOf(textToRead);
    if (!indexSpec) {
        setData(std::string(text::readValueToken(tokens).value_or("")).c_str());
        return;
    }
    const FieldWatch watch(*this);
    std::string_view ranges = text::viewOf(indexSpec);
    while (!ranges.empty() && !watch.ended()) {
        const text::IndexRange range = text::readIndexRange(ranges);
        if (range.start == -1)
            return;
        if (range.end == -1 || range.end == range.start) {
            const auto token = text::readValueToken(tokens);
            if (!token)
                return;
            setData(std::string(*token).c_str(), range.start);
            continue;
        }
        std::vector<std::string> values;
        for (long long left = range.end - 0LL - range.start + 1; left > 0; --left) {
            const auto token = text::readValueToken(tokens);
            if (!token)
                break;
            values.emplace_back(*token);
        }
        if (values.empty())
            continue;
        std::vector<char*> pointers(values.size());
        std::transform(values.begin(), values.end(), pointers.begin(), [](std::string& value) { return value.data(); });
        setData(&pointers, range.start, range.end);
    }
}

void DataField::setData(const char* value) {
    if (const auto list = m_targets)
        list->walk(*this, [&](DataField& target) { target.setData(value); });
}

void DataField::setData(const char* value, int index) {
    if (const auto list = m_targets)
        list->walk(*this, [&](DataField& target) { target.setData(value, index); });
}

void DataField::setData(std::string* value, int index) {
    if (const auto list = m_targets)
        list->walk(*this, [&](DataField& target) { target.setData(value, index); });
}

void DataField::setData(std::vector<char*>* values, int from, int to) {
    if (const auto list = m_targets)
        list->walk(*this, [&](DataField& target) { target.setData(values, from, to); });
}

bool DataField::getData(char** /*value*/, int /*index*/) {
    return false;
}

std::string* DataField::getData(int /*index*/) {
    return nullptr;
}

void DataField::getData(std::vector<char*>* /*out*/, int /*from*/, int /*to*/) {}

std::vector<std::string>* DataField::getDataVector() {
    return nullptr;
}

void DataField::clearData() {}

bool DataField::copyData(DataField* /*source*/, int /*sourceIndex*/, int /*targetIndex*/, int /*count*/) {
    return false;
}

DataNode* DataField::getParent() {
    return static_cast<DataNode*>(m_parent.get());
}

void DataField::setParent(DataNode* parent, int instance) {
    m_parent = FieldRef(parent);
    m_parentInstance = instance;
}

int DataField::getParentInstance() {
    return m_parentInstance;
}

int DataField::getDataInitialized() {
    return m_dataInitialized;
}

void DataField::setDataInitialized(int initialized) {
    m_dataInitialized = initialized;
}

char* DataField::getFullPath() {
    std::array<DataField*, 30> chain{};
    std::size_t length = 0;
    for (DataField* field = this; field && length < chain.size(); field = field->getParent())
        chain[length++] = field;

    std::string& path = treeState.fullPath;
    path.clear();
    bool first = true;
    for (std::size_t left = length - 1; left > 0; --left) {
        DataField& field = *chain[left - 1];
        if (field.isOfType(Orbel::getClassType()))
            continue;
        if (!first)
            path += '/';
        first = false;
        path += field.getName();
        if (left > 1 && field.isOfType(DataArray::getClassType())) {
            path += '[' + std::to_string(chain[left - 2]->m_parentInstance) + ']';
            --left;
        }
    }
    return path.data();
}

void DataField::registerHandler(DataHandler* handler) {
    if (!handler)
        return;
    handler->setField(this);
    HandlerList& list = handlers();
    const bool joins = !list.contains(*handler);
    if (joins)
        list.append(handler);
    list.recount();
    if (!joins)
        return;
    if (const int size = getSize(); size != 1)
        fireHandlers(false, 0, size - 1);
    else
        fireHandlers(false);
}

void DataField::registerMarker() {
    DataHandler* marker = handlers().marker();
    if (!getHandlerByName(marker->getName()))
        registerHandler(marker);
}

void DataField::unregisterHandler(DataHandler* handler) {
    if (!handler || !m_handlers || !m_handlers->remove(handler))
        return;
    handler->setField(nullptr);
    m_handlers->recount();
}

void DataField::unregisterAllHandlers() {
    if (!m_handlers)
        return;
    m_handlers->removeAll();
    m_handlers->recount();
}

void DataField::fireHandlers(bool changed) {
    if (m_dataInitialized == 0)
        return;
    if (const auto list = m_handlers)
        list->walk(*this, [&](DataHandler& handler) { handler.onChange(*this, changed); });
}

void DataField::fireHandlers(bool changed, int from, int to) {
    if (getSize() == 1) {
        fireHandlers(changed);
        return;
    }
    if (m_dataInitialized == 0)
        return;
    if (const auto list = m_handlers)
        list->walk(*this, [&](DataHandler& handler) { handler.onChange(*this, changed, from, std::max(from, to)); });
}

void DataField::fireOnTypeChange(char* typeName) {
    char none[] = "";
    char* told = typeName ? typeName : none;
    if (const auto list = m_handlers)
        list->walk(*this, [&](DataHandler& handler) { handler.onTypeChange(*this, told); });
}

void DataField::countNotifyOnValueChange() {
    if (m_handlers)
        m_handlers->recount();
}

int DataField::getCountNotifyOnValueChange() {
    return m_handlers ? m_handlers->notifyCount() : 0;
}

DataHandler* DataField::getHandlerByName(char* name) {
    const std::string_view wanted = text::viewOf(name);
    for (int index = 0; index < getNumHandlers(); ++index)
        if (wanted == m_handlers->at(index)->getName())
            return m_handlers->at(index);
    return nullptr;
}

DataHandler* DataField::getHandlerByID(int index) {
    return index >= 0 && index < getNumHandlers() ? m_handlers->at(index) : nullptr;
}

int DataField::getNumHandlers() {
    return m_handlers ? m_handlers->size() : 0;
}

void DataField::dumpHandlers() {
    if (const auto list = m_handlers)
        list->walk(*this, [](DataHandler& handler) { handler.dump(); });
}

void DataField::addTargetLink(DataField* target) {
    if (!target || target == this || targets().contains(target))
        return;
    // Whom nobody follows is on nobody's chain: a chain is built from either end without walking along it each time.
    const bool isFollowed = target->m_targets && target->m_targets->isFollowed();
    if (isFollowed && findLinkSource(target))
        return;
    target->removeSourceLink();
    target->m_linkSource = this;
    targets().append(target);
}

void DataField::setLinkSource(DataField* source) {
    if (source == this || source == m_linkSource)
        return;
    removeSourceLink();
    m_linkSource = source;
    if (source)
        source->targets().addSilent(this);
}

void DataField::removeTargetLink(DataField* target) {
    if (!target)
        return;
    if (m_targets) {
        m_targets->remove(target);
        m_targets->removeSilent(target);
    }
    target->removeSourceLink();
}

void DataField::removeSourceLink() {
    if (!m_linkSource)
        return;
    DataField* source = m_linkSource;
    m_linkSource = nullptr;
    source->removeTargetLink(this);
}

void DataField::removeAllTargets() {
    while (m_targets && !m_targets->empty()) {
        DataField* target = m_targets->front();
        m_targets->remove(target);
        target->removeSourceLink();
    }
}

bool DataField::findLinkSource(DataField* field) {
    // Naming sources without making targets can close a circle: then the walk meets `behind`, which is half as fast.
    DataField* behind = this;
    bool follows = false;
    for (DataField* source = m_linkSource; source; source = source->m_linkSource) {
        if (source == field)
            return true;
        if (source == behind)
            return false;
        if (follows)
            behind = behind->m_linkSource;
        follows = !follows;
    }
    return false;
}

DataField* DataField::getLinkSource() {
    return m_linkSource;
}

void DataField::ClearLinks() {
    removeSourceLink();
    removeAllTargets();
}
