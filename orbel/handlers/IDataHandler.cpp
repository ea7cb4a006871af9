#include <orbel/handlers/IDataHandler.h>

#include <orbel/handlers/IDataHandlerImpl.h>
#include <orbel/tree/DataValue.h>
#include <orbel/tree/Orbel.h>

#include "../foundation/text/FixedText.h"
#include "../tree/FieldWatch.h"
#include "BridgeWatch.h"
#include "RegisteredPath.h"

namespace {

// Handlers have no virtual destructor: only a final class may be deleted through its own pointer.
class Bridge final : public IDataHandlerImpl {
    using IDataHandlerImpl::IDataHandlerImpl;
};

} // namespace

IDataHandler::IDataHandler() = default;

IDataHandler::IDataHandler(const IDataHandler& other) = default;

IDataHandler& IDataHandler::operator=(const IDataHandler& other) = default;

IDataHandler::~IDataHandler() {
    delete static_cast<Bridge*>(m_bridge);
}

char* IDataHandler::getPluginVersion() {
    static char version[] = "0";
    return version;
}

DataType* IDataHandler::getFieldType() {
    return DataValue::getClassType();
}

unsigned int IDataHandler::getPluginFlags() {
    return 5;
}

char* IDataHandler::getPluginInfoText() {
    static char text[] = "";
    return text;
}

void IDataHandler::onLoad() {}

void IDataHandler::onInit() {}

void IDataHandler::onFunctionInit() {}

void IDataHandler::onCleanup() {}

void IDataHandler::onDataChange(char* /*fieldName*/, std::vector<std::string>& /*values*/, int /*from*/, int /*to*/) {}

void IDataHandler::onDataChange(char* /*fieldName*/, char* /*value*/) {}

void IDataHandler::onTypeChange(char* /*fieldName*/, char* /*typeName*/) {}

void IDataHandler::onBuildGeometry(int /*argument*/) {}

void IDataHandler::onExecAction(int /*argument*/) {}

void IDataHandler::onParamChange(int /*argument*/) {}

void IDataHandler::onGuiStatus() {}

void IDataHandler::perFrame() {}

void IDataHandler::onDispatcher(unsigned long long /*request*/, unsigned long long /*argument*/,
                                unsigned long long& /*answer*/) {}

void IDataHandler::dump() {}

void IDataHandler::init(int sceneId) {
    if (!m_bridge)
        m_bridge = new Bridge(this, sceneId);
}

bool IDataHandler::needsInit() {
    return !m_bridge;
}

void* IDataHandler::getUserData() {
    return m_userData;
}

void IDataHandler::setUserData(void* userData) {
    m_userData = userData;
}

DataHandler* IDataHandler::getDataHandler() {
    return m_bridge;
}

DataField* IDataHandler::getField() {
    return m_bridge ? m_bridge->getField() : nullptr;
}

int IDataHandler::getOffset() {
    return m_bridge ? m_bridge->getOffset() : 0;
}

int IDataHandler::getNotifyOnValueChange() {
    return m_bridge ? m_bridge->getNotifyOnValueChange() : 0;
}

void IDataHandler::setNotifyOnValueChange(int notify) {
    if (m_bridge)
        m_bridge->setNotifyOnValueChange(notify);
}

int IDataHandler::getUseConvTable() {
    return m_bridge ? m_bridge->getUseConvTable() : 0;
}

void IDataHandler::setUseConvTable(int use) {
    if (m_bridge)
        m_bridge->setUseConvTable(use);
}

char* IDataHandler::getConvTableName() {
    return m_bridge ? m_bridge->getConvTableName() : nullptr;
}

void IDataHandler::setConvTableNmae(char* name) {
    if (m_bridge && name)
        m_bridge->setConvTableName(name);
}

void IDataHandler::setName(char* name) {
    if (m_bridge)
        m_bridge->setName(name);
}

void IDataHandler::registerHandler(const char* path, DataNode* root, int index) {
    IDataHandlerImpl* const bridge = m_bridge;
    if (!bridge)
        return;
    Orbel* const tree = bridge->tree();
    DataNode* const node = root ? root : tree;
    RegisteredPath wanted(text::viewOf(path));
    if (wanted.path.empty() || !node)
        return;
    // Registering tells the handlers of the field, this one included.
    const BridgeWatch bridgeWatch(*bridge);
    const FieldWatch nodeWatch(*node);
    node->registerHandler(wanted.path.data(), bridge, index);
    if (bridgeWatch.ended() || nodeWatch.ended())
        return;
    bridge->setOffset(wanted.offset);
    node->setFieldSize(wanted.path.data(), wanted.size);
}

void IDataHandler::registerHandler(DataField* field) {
    if (!m_bridge || !field)
        return;
    if (DataField* const old = m_bridge->getField())
        old->unregisterHandler(m_bridge);
    field->registerHandler(m_bridge);
}

void IDataHandler::unregisterHandler() {
    if (!getField())
        return;
    if (Orbel* const tree = m_bridge->tree())
        tree->unregisterHandler(m_bridge);
}

void IDataHandler::refresh() {
    DataField* const field = getField();
    if (!field)
        return;
    field->countNotifyOnValueChange();
    field->fireHandlers(true, 0, field->getSize() - 1);
}

void IDataHandler::setFieldData(char* path, char* value) {
    if (Orbel* const tree = m_bridge ? m_bridge->tree() : nullptr)
        tree->setFieldData(path, value);
}

void IDataHandler::setFieldData(char* path, char* value, int index) {
    if (Orbel* const tree = m_bridge ? m_bridge->tree() : nullptr)
        tree->setFieldData(path, value, index);
}

void* IDataHandler::getOrbel2(int sceneId) {
    return IDataHandlerImpl::getOrbel(sceneId, false);
}
