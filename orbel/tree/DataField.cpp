#include <orbel/tree/DataField.h>

#include <orbel/foundation/DataClassType.h>
#include <orbel/tree/DataArray.h>
#include <orbel/tree/DataNode.h>
#include <orbel/tree/DataValue.h>
#include <orbel/tree/Orbel.h>

#include "../foundation/text/FixedText.h"
#include "../foundation/text/Scanner.h"
#include "ChildTable.h"
#include "ExactClass.h"
#include "FieldTies.h"
#include "FieldWatch.h"
#include "HandlerList.h"
#include "HandlerWalk.h"
#include "TreeState.h"

#include <algorithm>
#include <array>
#include <utility>

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

DataField::DataField(char* name) : DataField(getClassType(), text::viewOf(name)) {}

DataField::DataField(DataType* type, std::string_view name) : DataBaseType(type, name) {}

DataField::DataField(const DataField& other) : DataBaseType(other) {
    shareFrom(other);
    if (DataField* source = getLinkSource())
        source->targets().addSilent(this);
}

DataField& DataField::operator=(const DataField& other) {
    if (this == &other)
        return *this;
    // All that takes memory comes first, so that afterwards nothing fails half-way.
    auto& origin = const_cast<DataField&>(other);
    origin.targets();
    origin.m_handlers.prepareToShare(origin);
    ties();
    LinkTargets::SilentFollower follower;
    if (DataField* source = origin.getLinkSource())
        follower = source->targets().prepareSilent(this);
    DataBaseType::operator=(other);
    unregisterAllHandlers();
    ClearLinks();
    if (LinkTargets* list = targetsIfAny())
        list->releaseSilent(*this);
    shareFrom(other);
    if (DataField* source = getLinkSource())
        source->targets().addSilent(std::move(follower));
    return *this;
}

DataField::~DataField() {
    if (m_ties && m_ties->hold)
        m_ties->hold->field = nullptr;
    FieldWatch::fieldEnds(*this);
    treeState.paths.drop();
    if (m_listedIn)
        m_listedIn->forget(*this);
    unregisterAllHandlers();
    removeSourceLink();
    removeAllTargets();
    if (LinkTargets* list = targetsIfAny())
        list->releaseSilent(*this);
}

void DataField::shareFrom(const DataField& other) {
    auto& origin = const_cast<DataField&>(other);
    m_handlers.share(origin.m_handlers, origin);
    origin.targets();
    ties().targets = origin.ties().targets;
    m_parent = other.m_parent;
    m_parentInstance = other.m_parentInstance;
    m_dataInitialized = other.m_dataInitialized;
    setSource(origin.getLinkSource());
}

FieldTies& DataField::ties() {
    if (!m_ties)
        m_ties = std::make_unique<FieldTies>();
    return *m_ties;
}

FieldRef::FieldRef(DataField* field) : m_hold(field ? field->hold() : SharedPart<FieldHold>()) {}

const SharedPart<FieldHold>& DataField::makeHold() {
    SharedPart<FieldHold>& held = ties().hold;
    held = SharedPart(new FieldHold);
    held->field = this;
    return held;
}

LinkTargets& DataField::targets() {
    SharedPart<LinkTargets>& list = ties().targets;
    if (!list)
        list = SharedPart(new LinkTargets);
    return *list;
}

void DataField::setSource(DataField* source) {
    if (source || m_ties)
        ties().linkSource = source;
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

/// Sets the first of the values in a text that ends with a NUL.
void DataField::parseOne(std::string_view tokens) {
    const char* const end = tokens.data() + tokens.size();
    const std::string_view token = text::readValueToken(tokens).value_or("");
    // A plain value that nobody follows takes it over before anybody else is called, who might change the text.
    const bool isTakenAtOnce = token.data() + token.size() == end && isExactly<DataValue>(*this) && !targetsIfAny();
    if (isTakenAtOnce) {
        static_cast<DataValue*>(this)->DataValue::setData(token.data());
        return;
    }
    text::LentText value(treeState.texts, token);
    setData(static_cast<const char*>(value.chars()));
}

void DataField::parse(char* indexSpec, char* textToRead) {
    if (indexSpec)
        parseRanges(indexSpec, text::viewOf(textToRead));
    else
        parseOne(text::viewOf(textToRead));
}

void DataField::parseRanges(std::string_view ranges, std::string_view tokens) {
    const FieldWatch watch(*this);
    while (!ranges.empty() && !watch.ended()) {
        const text::IndexRange range = text::readIndexRange(ranges);
        if (range.start == -1)
            return;
        if (range.end == -1 || range.end == range.start) {
            const auto token = text::readValueToken(tokens);
            if (!token)
                return;
            text::LentText value(treeState.texts, *token);
            setData(static_cast<const char*>(value.chars()), range.start);
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
    walkTargets([&](DataField& target) { target.setData(value); });
}

void DataField::setData(const char* value, int index) {
    walkTargets([&](DataField& target) { target.setData(value, index); });
}

void DataField::setData(std::string* value, int index) {
    walkTargets([&](DataField& target) { target.setData(value, index); });
}

void DataField::setData(std::vector<char*>* values, int from, int to) {
    walkTargets([&](DataField& target) { target.setData(values, from, to); });
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
    if (m_parent.get() != parent)
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
    const bool joins = !m_handlers.contains(*handler);
    if (joins)
        m_handlers.append(*this, handler);
    handler->setField(this);
    m_handlers.recount();
    if (joins)
        tellHandlers();
}

/// Nothing has changed, but somebody has joined.
void DataField::tellHandlers() {
    if (m_dataInitialized == 0)
        return;
    if (const int size = getSize(); size != 1)
        fireHandlers(false, 0, size - 1);
    else
        fireHandlers(false);
}

void DataField::registerMarker() {
    if (m_handlers.hasMarkerInFront())
        return;
    for (int index = 0; index < getNumHandlers(); ++index)
        if (std::string_view(m_handlers.nameAt(index)) == HandlerList::markerName)
            return;
    m_handlers.appendMarker(*this);
    m_handlers.recount();
    tellHandlers();
}

void DataField::unregisterHandler(DataHandler* handler) {
    if (!handler || !m_handlers.remove(*this, handler))
        return;
    handler->setField(nullptr);
    m_handlers.recount();
}

void DataField::leave(DataHandler& handler) {
    m_handlers.remove(*this, &handler);
    m_handlers.recount();
}

void DataField::unregisterAllHandlers() {
    m_handlers.removeAll(*this);
    m_handlers.recount();
}

void DataField::fireHandlers(bool changed) {
    if (m_dataInitialized != 0)
        walkHandlers([&](DataHandler& handler) { handler.onChange(*this, changed); });
}

void DataField::fireHandlers(bool changed, int from, int to) {
    if (getSize() == 1) {
        fireHandlers(changed);
        return;
    }
    if (m_dataInitialized != 0)
        walkHandlers([&](DataHandler& handler) { handler.onChange(*this, changed, from, std::max(from, to)); });
}

void DataField::fireOnTypeChange(char* typeName) {
    char none[] = "";
    char* told = typeName ? typeName : none;
    walkHandlers([&](DataHandler& handler) { handler.onTypeChange(*this, told); });
}

void DataField::countNotifyOnValueChange() {
    m_handlers.recount();
}

int DataField::getCountNotifyOnValueChange() {
    return m_handlers.notifyCount();
}

DataHandler* DataField::getHandlerByName(char* name) {
    const std::string_view wanted = text::viewOf(name);
    for (int index = 0; index < getNumHandlers(); ++index)
        if (wanted == m_handlers.nameAt(index))
            return m_handlers.at(*this, index);
    return nullptr;
}

DataHandler* DataField::getHandlerByID(int index) {
    return index >= 0 && index < getNumHandlers() ? m_handlers.at(*this, index) : nullptr;
}

int DataField::getNumHandlers() {
    return m_handlers.size();
}

void DataField::dumpHandlers() {
    for (int index = 0; index < getNumHandlers(); ++index)
        m_handlers.at(*this, index);
    walkHandlers([](DataHandler& handler) { handler.dump(); });
}

void DataField::addTargetLink(DataField* target) {
    if (!target || target == this || targets().contains(target))
        return;
    // Whom nobody follows is on nobody's chain: a chain is built from either end without walking along it each time.
    const LinkTargets* followers = target->targetsIfAny();
    if (followers && followers->isFollowed() && findLinkSource(target))
        return;
    target->ties();
    targets().append(target);
    target->leaveSourceFor(targets());
    target->setSource(this);
}

/// Ends the link to the source, but leaves the list alone that the field has joined for its next one: clones share
/// theirs, so it may be the same.
void DataField::leaveSourceFor(LinkTargets& joined) {
    DataField* source = getLinkSource();
    if (source && source->targetsIfAny() != &joined)
        removeSourceLink();
    else
        joined.removeSilent(this);
}

void DataField::setLinkSource(DataField* source) {
    if (source == this || source == getLinkSource())
        return;
    if (!source) {
        removeSourceLink();
        return;
    }
    ties();
    LinkTargets& joined = source->targets();
    joined.addSilent(this);
    DataField* old = getLinkSource();
    if (old && old->targetsIfAny() != &joined)
        removeSourceLink();
    else if (old)
        joined.remove(this);
    setSource(source);
}

void DataField::removeTargetLink(DataField* target) {
    if (!target)
        return;
    if (LinkTargets* list = targetsIfAny()) {
        list->remove(target);
        list->removeSilent(target);
    }
    target->removeSourceLink();
}

void DataField::removeSourceLink() {
    DataField* source = getLinkSource();
    if (!source)
        return;
    setSource(nullptr);
    source->removeTargetLink(this);
}

void DataField::removeAllTargets() {
    for (LinkTargets* list = targetsIfAny(); list && !list->empty();) {
        DataField* target = list->front();
        list->remove(target);
        target->removeSourceLink();
    }
}

bool DataField::findLinkSource(DataField* field) {
    // Naming sources without making targets can close a circle: then the walk meets `behind`, which is half as fast.
    DataField* behind = this;
    bool follows = false;
    for (DataField* source = getLinkSource(); source; source = source->getLinkSource()) {
        if (source == field)
            return true;
        if (source == behind)
            return false;
        if (follows)
            behind = behind->getLinkSource();
        follows = !follows;
    }
    return false;
}

DataField* DataField::getLinkSource() {
    return m_ties ? m_ties->linkSource : nullptr;
}

void DataField::ClearLinks() {
    removeSourceLink();
    removeAllTargets();
}
