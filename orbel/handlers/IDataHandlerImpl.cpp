#include <orbel/handlers/IDataHandlerImpl.h>

#include <orbel/handlers/IDataHandler.h>
#include <orbel/tree/DataObject.h>
#include <orbel/tree/Orbel.h>

#include "../foundation/text/FixedText.h"
#include "HandlerState.h"

#include <algorithm>
#include <cstdio>
#include <iostream>
#include <iterator>

namespace {

const std::string stars(80, '*');

std::string converted(DataHandler& handler, std::string_view value) {
    const auto& tables = handlerState().conversions;
    return tables ? tables->lookup(text::viewOf(handler.getConvTableName()), value) : std::string();
}

} // namespace

void OrbelGetVersion(char* out) {
    std::snprintf(out, 32, "%d.%d.%d.%d %s", 2, 13, 6, 1473, "");
}

void IDataHandlerImpl::init() {
    char version[32];
    OrbelGetVersion(version);
    std::cout << "\n\n" << stars << "\n\t Orbel Version: " << version << std::endl;
    HandlerState& state = handlerState();
    if (state.settings.multiOrbel == -1)
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
    : DataHandler(owner->getPluginName()), m_owner(owner), m_sceneId(sceneId) {
    tree();
}

Orbel* IDataHandlerImpl::tree() {
    return getOrbel(m_sceneId, false);
}

void IDataHandlerImpl::dump() {
    m_owner->dump();
}

/// Whether a change that is none is to be kept from the owner: never the first one.
bool IDataHandlerImpl::isSuppressed(bool changed) {
    return m_flags != 0 && !changed && getNotifyOnValueChange() != 0;
}

void IDataHandlerImpl::onChange(DataField& field, bool changed) {
    if (isSuppressed(changed))
        return;
    std::string* value = field.getData(0);
    if (!value)
        return;
    m_flags = 1;
    if (getUseConvTable() != 0)
        m_owner->onDataChange(field.getName(), converted(*this, *value).data());
    else
        m_owner->onDataChange(field.getName(), value->data());
}

void IDataHandlerImpl::onChange(DataField& field, bool changed, int from, int to) {
    std::vector<std::string>* values = field.getDataVector();
    if (isSuppressed(changed) || !values)
        return;
    m_flags = 1;
    if (getUseConvTable() == 0) {
        m_owner->onDataChange(field.getName(), *values, from, to);
        return;
    }
    std::vector<std::string> texts;
    texts.reserve(values->size());
    std::transform(values->begin(), values->end(), std::back_inserter(texts),
                   [&](const std::string& value) { return converted(*this, value); });
    m_owner->onDataChange(field.getName(), texts, from, to);
}

void IDataHandlerImpl::onTypeChange(DataField& field, char* typeName) {
    m_owner->onTypeChange(field.getName(), typeName);
}

DataType* IDataHandlerImpl::getFieldType() {
    return m_owner->getFieldType();
}
