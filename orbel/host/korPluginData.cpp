#include <orbel/host/korPluginData.h>

#include "../foundation/text/FixedText.h"
#include "../foundation/text/Scanner.h"
#include "Host.h"
#include "HostState.h"

#include <string>
#include <string_view>

namespace {

constexpr int remote = 3;

/// Where the last part of a scene's full name begins; 0 when it has one part only.
std::size_t startOfName(std::string_view fullName) {
    std::size_t separator = fullName.rfind('/');
    if (separator == std::string_view::npos)
        separator = fullName.rfind('*');
    return separator == std::string_view::npos ? 0 : separator + 1;
}

} // namespace

korPluginData::korPluginData() = default;

korPluginData::korPluginData(const korPluginData& other) = default;

korPluginData& korPluginData::operator=(const korPluginData& other) = default;

korPluginData::~korPluginData() = default;

CONTAINER korPluginData::getLocalContainer() {
    return m_localContainer;
}

void korPluginData::setLocalContainer(CONTAINER& container) {
    m_localContainer = container;
}

void korPluginData::setLocalContainer() {
    m_localContainer = host::localContainer();
    m_currentContainer = m_localContainer;
}

void korPluginData::setCurrentContainer(CONTAINER& container) {
    m_currentContainer = container;
}

void korPluginData::resetCurrentContainer() {
    m_currentContainer = m_localContainer;
}

CONTAINER korPluginData::getCurrentContainer() {
    if (m_currentItem >= 0 || m_isOther == 0)
        return m_currentContainer;
    if (m_whichOther == remote)
        return host::isValid(m_remoteContainer.id) ? m_remoteContainer : m_currentContainer;
    CONTAINER container = m_currentContainer;
    if (m_whichOther < remote)
        for (int level = 0; level <= m_whichOther; ++level)
            container = host::parentOf(container);
    return container;
}

CONTAINER korPluginData::getRemoteContainer() {
    return m_remoteContainer;
}

void korPluginData::setRemoteContainer(CONTAINER& container) {
    m_remoteContainer = container;
}

void korPluginData::setRemoteContainer(char* name) {
    if (!name)
        m_remoteContainer = CONTAINER();
    else if (*name == '#')
        m_remoteContainer = host::objectOf(text::readSignedNumber(name + 1));
    else
        m_remoteContainer = host::findContainer(name);
}

char* korPluginData::getContainerName() {
    return host::nameOf(m_localContainer.id);
}

SCENE korPluginData::getLocalScene() {
    return m_localScene;
}

void korPluginData::setLocalScene(SCENE& scene) {
    m_localScene = scene;
    text::copyCut(m_sceneId, ('#' + std::to_string(scene.id)).c_str());
}

void korPluginData::setLocalScene() {
    SCENE scene = host::localScene();
    setLocalScene(scene);
}

char* korPluginData::getSceneID() {
    return m_sceneId;
}

char* korPluginData::getSceneFullName() {
    return host::fullNameOf(m_localScene);
}

char* korPluginData::getSceneName() {
    const std::string_view fullName = getSceneFullName();
    std::string& name = hostState().sceneName;
    name = fullName.substr(startOfName(fullName));
    return name.data();
}

char* korPluginData::getScenePath() {
    const std::string_view fullName = getSceneFullName();
    const std::size_t end = startOfName(fullName);
    std::string& path = hostState().scenePath;
    path = end > 0 ? fullName.substr(0, end) : ".";
    return path.data();
}

void korPluginData::setCurrentItem(int item) {
    m_currentItem = item;
}

void korPluginData::resetCurrentItem() {
    m_currentItem = -1;
}

int korPluginData::getCurrentItem() {
    return m_currentItem < 0 ? 0 : m_currentItem;
}

int korPluginData::getIsOther() {
    return m_isOther;
}

void korPluginData::setIsOther(int isOther) {
    m_isOther = isOther;
}

int korPluginData::getWhichOther() {
    return m_whichOther;
}

void korPluginData::setWhichOther(int whichOther) {
    m_whichOther = whichOther;
}
