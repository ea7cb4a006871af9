#include <orbel/handlers/IDataHandlerImpl.h>

#include <orbel/handlers/IDataHandler.h>
#include <orbel/tree/DataObject.h>
#include <orbel/tree/Orbel.h>

#include "../foundation/text/FixedText.h"
#include "BridgeWatch.h"
#include "HandlerState.h"

#include <cstdio>
#include <iostream>

namespace {

constexpr std::string_view stars = "********************************************************************************";

/// In the tables, so valid until they are read again.
std::string_view converted(DataHandler& handler, std::string_view value) {
    const auto& tables = handlerState().conversions;
    if (!tables)
        return {};
    return tables->lookup(text::viewOf(handler.getConvTableName()), value);
}

} // namespace

void OrbelGetVersion(char* out) {
    if (out)
        std::snprintf(out, 32, "%d.%d.%d.%d %s", 2, 13, 6, 1473, "");
}

void IDataHandlerImpl::init() {
    char version[32];
    OrbelGetVersion(version);
    std::cout << "\n\n" << stars << "\n\t Orbel Version: " << version << std::endl;
    HandlerState& state = handlerState();
    readSettings(state.settings);
    if (!state.conversions)
        state.conversions = std::make_unique<ConversionTables>(state.settings.configurationFolder);
    if (!state.cases)
        state.cases = std::make_unique<CaseTable>("./CapitalUnicodeData.txt");
    if (!state.presets)
        state.presets = std::make_shared<AllPluginPreSets>(state.settings.configurationFolder);
    DataObject::init();
    std::cout << stars << std::endl;
}

Orbel* IDataHandlerImpl::getOrbel(int sceneId, bool makeCurrent) {
    return handlerState().scenes.treeOf(sceneId, makeCurrent, IsMultiOrbel() == 1);
}

void IDataHandlerImpl::SetLastSceneID(int sceneId) {
    handlerState().scenes.makeCurrent(sceneId);
}

int IDataHandlerImpl::IsMultiOrbel() {
    return handlerState().settings.multiOrbel;
}

bool IDataHandlerImpl::IsRefreshAlways() {
    return handlerState().settings.refreshAlways;
}

bool IDataHandlerImpl::CheckMaterialIfExists() {
    return handlerState().settings.checkMaterialIfExists;
}

bool IDataHandlerImpl::CheckImageIfExists() {
    return handlerState().settings.checkImageIfExists;
}

void IDataHandlerImpl::RefreshConvTables() {
    HandlerState& state = handlerState();
    state.conversions = std::make_unique<ConversionTables>(state.settings.configurationFolder);
}

PluginPreSets* IDataHandlerImpl::getPreSets(const char* pluginName) {
    if (!handlerState().presets)
        init();
    return handlerState().presets->find(text::viewOf(pluginName));
}

bool IDataHandlerImpl::toUpper(wchar_t* character) {
    const auto& cases = handlerState().cases;
    return cases && character && cases->toUpper(*character);
}

bool IDataHandlerImpl::toLower(wchar_t* character) {
    const auto& cases = handlerState().cases;
    return cases && character && cases->toLower(*character);
}

IDataHandlerImpl::IDataHandlerImpl(IDataHandler* owner, int sceneId)
    : DataHandler(owner ? owner->getPluginName() : nullptr), m_owner(owner), m_sceneId(sceneId) {
    tree();
}

IDataHandlerImpl::~IDataHandlerImpl() {
    BridgeWatch::bridgeEnds(*this);
}

IDataHandler* IDataHandlerImpl::getOwner() {
    return m_owner;
}

Orbel* IDataHandlerImpl::tree() {
    return getOrbel(m_sceneId, false);
}

void IDataHandlerImpl::dump() {
    if (m_owner)
        m_owner->dump();
}

bool IDataHandlerImpl::isSuppressed(bool changed) {
    return !m_owner || (m_flags != 0 && !changed && getNotifyOnValueChange() != 0);
}

void IDataHandlerImpl::onChange(DataField& field, bool changed) {
    if (isSuppressed(changed))
        return;
    std::string* value = field.getData(0);
    if (!value)
        return;
    const BridgeWatch watch(*this);
    if (getUseConvTable() != 0) {
        // A copy, for the plug-in may write to what it is given, or have the tables read again.
        text::LentText text(handlerState().texts, converted(*this, *value));
        m_owner->onDataChange(field.getName(), text.get().data());
    } else {
        m_owner->onDataChange(field.getName(), value->data());
    }
    // Contract: noted behind the plug-in's call, so what reaches it meanwhile counts as the first delivery too.
    if (!watch.ended())
        m_flags = 1;
}

void IDataHandlerImpl::onChange(DataField& field, bool changed, int from, int to) {
    std::vector<std::string>* values = field.getDataVector();
    if (isSuppressed(changed) || !values)
        return;
    const BridgeWatch watch(*this);
    std::vector<std::string> texts;
    if (getUseConvTable() != 0) {
        texts.reserve(values->size());
        for (const std::string& value : *values)
            texts.emplace_back(converted(*this, value));
        values = &texts;
    }
    m_owner->onDataChange(field.getName(), *values, from, to);
    if (!watch.ended())
        m_flags = 1;
}

void IDataHandlerImpl::onTypeChange(DataField& field, char* typeName) {
    if (m_owner)
        m_owner->onTypeChange(field.getName(), typeName);
}

DataType* IDataHandlerImpl::getFieldType() {
    return m_owner ? m_owner->getFieldType() : DataHandler::getFieldType();
}
