#include <orbel/host/korDataHandler.h>

#include <orbel/handlers/IDataHandlerImpl.h>
#include <orbel/host/korDataStructureHandler.h>
#include <orbel/tree/DataArray.h>
#include <orbel/tree/DataObject.h>
#include <orbel/tree/Orbel.h>

#include "../foundation/text/FixedText.h"
#include "../handlers/RegisteredPath.h"
#include "ContainerWalk.h"
#include "ExistingField.h"
#include "Host.h"
#include "HostState.h"
#include "Macros.h"
#include "PointerText.h"

#include <cstdio>
#include <cstdlib>
#include <iostream>

namespace {

constexpr const char* structureKinds[] = {"DataStructure", "DataArray", "DataObject"};

korDataStructureHandler* structureOn(CONTAINER container, const korDataHandler* except) {
    for (const char* kind : structureKinds) {
        const int plugin = host::pluginOn(container, kind);
        const korPluginRecord* record = host::isValid(plugin) ? host::dataOf(plugin) : nullptr;
        if (!record || record->handler == except)
            continue;
        if (auto* const handler = dynamic_cast<korDataStructureHandler*>(record->handler))
            return handler;
    }
    return nullptr;
}

/// Where a handler is within its structure: its field name without the range that only sets offset and size.
std::string pathOf(korDataHandler& handler) {
    return RegisteredPath(macros::expandWhole(handler, handler.getFieldName())).path;
}

/// The handler of a plug-in among those of a field; null when there is none.
korDataHandler* handlerOf(DataField& field, char* pluginName) {
    auto* const bridge = dynamic_cast<IDataHandlerImpl*>(field.getHandlerByName(pluginName));
    return bridge ? dynamic_cast<korDataHandler*>(bridge->getOwner()) : nullptr;
}

/// Hands the settings over to the handler of the same plug-in at a path of each element of an array.
void syncElements(DataArray& array, const std::string& path, const LifeRef<korDataHandler>& source) {
    const FieldRef elements(&array);
    for (int index = 0; elements.get() && source.get() && index < array.getSize(); ++index) {
        DataObject* const element = array.getObject(index);
        DataField* const field = element ? existingField(*element, path) : nullptr;
        korDataHandler* const handler = field ? handlerOf(*field, source.get()->getPluginName()) : nullptr;
        if (handler && handler != source.get())
            handler->onSyncParams(source.get());
    }
}

} // namespace

const char* const korDataHandler::pchzBase64AlphaBet = pointertext::alphabet;

int korDataHandler::qxNeedsInit = 0;

korDataHandler::korDataHandler() = default;

korDataHandler::~korDataHandler() {
    m_life.end();
    // The next handler at this address is another one.
    if (Unregistered* const unregistered = hostState().unregistered)
        unregistered->handlers.erase(this);
    unregisterHandler();
    forgetParent();
}

char* korDataHandler::getPluginName() {
    static char name[] = "";
    return name;
}

void korDataHandler::onDataChange(char* /*fieldName*/, std::vector<std::string>& /*values*/, int /*from*/, int /*to*/) {
}

void korDataHandler::dump() {
    DataHandler* const handler = getDataHandler();
    std::cout << "Handler Name=" << (handler ? handler->getName() : "") << " Field=" << m_fieldName
              << " Container=" << getLocalContainer().id << std::endl;
}

std::optional<std::string> korDataHandler::startRegistration(const char* fieldName) {
    std::string name(text::viewOf(fieldName));
    m_fieldName = name;
    forgetParent();
    auto* const tree = static_cast<Orbel*>(getOrbel());
    // Contract: with a tree the handler keeps its name.
    if (!tree)
        setName(getContainerName());
    if (name.size() < 2 || (name.front() != '*' && name.front() != '/'))
        return macros::expandWhole(*this, name);
    const std::string rest = name.substr(1);
    if (name.front() == '/')
        registerHandler(rest.c_str(), tree, 0);
    else if (DataField* const field = tree ? existingField(*tree, rest) : nullptr)
        registerHandler(field);
    return std::nullopt;
}

void korDataHandler::Register(const char* fieldName, int refresh) {
    // Plug-ins are told of the value when they register, and may destroy themselves then.
    const LifeRef<korDataHandler> self = ref();
    const auto name = startRegistration(fieldName);
    if (name) {
        korDataStructureHandler* parent = nullptr;
        getParentHandler(&parent, &m_indexInParent);
        if (parent) {
            m_parent = parent->m_life.refTo(*parent);
            parent->RegisterChild(this, name->c_str(), m_indexInParent);
        } else {
            registerHandler(name->c_str(), nullptr, 0);
        }
    }
    if (refresh != 0 && self.get())
        IDataHandler::refresh();
}

void korDataHandler::RegisterField(const char* fieldName, int /*refresh*/) {
    if (const auto name = startRegistration(fieldName))
        registerHandler(name->c_str(), nullptr, 0);
}

void korDataHandler::Unregister() {
    unregisterHandler();
}

void korDataHandler::onSyncParams(korDataHandler* /*source*/) {}

char* korDataHandler::parseMacro(const char* name) {
    return macros::valueOf(*this, text::viewOf(name));
}

bool korDataHandler::getParentHandler(korDataStructureHandler** parent, int* index) {
    *parent = nullptr;
    CONTAINER child = getLocalContainer();
    for (CONTAINER above = host::parentOf(child); host::isValid(above.id); above = host::parentOf(above)) {
        if (auto* const handler = structureOn(above, this)) {
            *parent = handler;
            *index = searchChild(above, child);
            break;
        }
        child = above;
    }
    return true;
}

int korDataHandler::searchChild(CONTAINER parent, CONTAINER child) {
    // Counted anew for each child: what one does when it is registered may change the positions of the others.
    int index = 0;
    for (CONTAINER sibling = host::firstChildOf(parent); sibling.id != -1; sibling = host::nextOf(sibling)) {
        if (sibling.id == child.id)
            return index;
        ++index;
    }
    return -1;
}

void korDataHandler::sync() {
    const LifeRef<korDataHandler> self = ref();
    std::string path = pathOf(*this);
    LifeRef<korDataHandler> level = self;
    while (self.get() && level.get()) {
        korDataStructureHandler* parent = nullptr;
        int index = 0;
        level.get()->getParentHandler(&parent, &index);
        if (!parent)
            return;
        index += parent->getOffset();
        const std::string name = pathOf(*parent);
        level = parent->ref();
        auto* const array = dynamic_cast<DataArray*>(parent->getField());
        if (array)
            syncElements(*array, path, self);
        const std::string place = array ? '[' + std::to_string(index) + ']' : "";
        path.insert(0, name + place + '/');
    }
}

void korDataHandler::getContainerHandlers(CONTAINER container, std::vector<korDataHandler*>& out) {
    for (const int plugin : host::pluginsOn(container)) {
        const korPluginRecord* const record = host::ours(host::askForRecord(plugin));
        if (record && record->handler && record->handler != this && host::isValid(record->container.id))
            out.push_back(record->handler);
    }
}

void korDataHandler::getChildrenHandlers(CONTAINER container, std::vector<korDataHandler*>& out, bool includeSelf) {
    if (includeSelf)
        getContainerHandlers(container, out);
    host::walk(host::childrenOf(container), 0, [&](CONTAINER child, int /*index*/, int context) {
        getContainerHandlers(child, out);
        return context;
    });
}

std::string korDataHandler::getContainerFullPath() {
    std::vector<std::string> names;
    for (CONTAINER container = getCurrentContainer(); host::isValid(container.id);
         container = host::parentOf(container))
        names.emplace_back(host::nameOf(container.id));
    std::string path;
    for (auto name = names.rbegin(); name != names.rend(); ++name)
        path.append(name == names.rbegin() ? "" : "/").append(*name);
    return path;
}

void* korDataHandler::getOrbel() {
    return getOrbel2(getLocalScene().id);
}

korDataStructureHandler* korDataHandler::getParent() {
    return m_parent.get();
}

const char* korDataHandler::getFieldName() {
    return m_fieldName.c_str();
}

void korDataHandler::setFieldName(const char* fieldName) {
    m_fieldName = std::string(text::viewOf(fieldName));
}

bool korDataHandler::getFirstTime() {
    return m_firstTime;
}

void korDataHandler::setFirstTime(bool firstTime) {
    m_firstTime = firstTime;
}

std::string korDataHandler::PtrToBase64(unsigned long long value) {
    return pointertext::encode(value);
}

// By value, as compiled plug-ins pass it.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
unsigned long long korDataHandler::Base64ToPtr(std::string text) {
    return pointertext::decode(text);
}

int korDataHandler::getInitQX() {
    const SCENE scene = host::localScene();
    return scene.id != -1 && hostState().waitingScenes.holds(scene.id) ? 1 : 0;
}

void korDataHandler::setInitQX(int flag) {
    qxNeedsInit = flag;
    const SCENE scene = host::localScene();
    if (!host::isValid(scene.id))
        return;
    SceneRing& scenes = hostState().waitingScenes;
    if (flag != 0)
        scenes.add(scene.id);
    else
        scenes.remove(scene.id);
}

void korDataHandler::setClamp(int clamp) {
    m_axes.setClamp(clamp);
}

void korDataHandler::setSeparate(int separate) {
    m_axes.setSeparate(separate);
}

void korDataHandler::setRanges(float inMin, float inMax, float outMin, float outMax, int clamp, int axis) {
    m_axes.setClamp(clamp);
    m_axes.setRanges(inMin, inMax, outMin, outMax, axis);
}

float korDataHandler::normalizeData(float value, int axis) {
    return m_axes.map(value, axis);
}

int korDataHandler::normalizeData_Int(int value, int axis) {
    return m_axes.map(value, axis);
}

double korDataHandler::normalizeData_dbl(double value, int axis) {
    return m_axes.map(value, axis);
}

void korDataHandler::updateAxes(const char* text, float& x, float& y, float& z, int mode, bool sameRange) {
    if (!text)
        return;
    // Each axis that a mode sets has a bit: x 1, y 2, z 4.
    constexpr int axesOfMode[] = {1, 2, 4, 3, 5, 6, 7};
    if (mode < 0 || mode >= static_cast<int>(std::size(axesOfMode)))
        return;
    float numbers[3] = {};
    int numRead = 0;
    if (mode < 3) {
        char* end = nullptr;
        numbers[0] = static_cast<float>(std::strtod(text, &end));
        numRead = end != text && *end == '\0' ? 1 : 0;
    } else {
        numRead = std::sscanf(text, "%f %f %f", &numbers[0], &numbers[1], &numbers[2]);
    }
    if (numRead <= 0)
        return;
    float* const axes[] = {&x, &y, &z};
    float mapped = 0;
    int position = 0;
    for (int axis = 0; axis < 3; ++axis) {
        if ((axesOfMode[mode] & 1 << axis) == 0)
            continue;
        if (position < numRead)
            mapped = m_axes.map(numbers[position], sameRange ? -1 : axis);
        *axes[axis] = mapped;
        ++position;
    }
}

LifeRef<korDataHandler> korDataHandler::ref() {
    return m_life.refTo(*this);
}

void korDataHandler::forgetParent() {
    m_parent = {};
    m_indexInParent = 0;
}
