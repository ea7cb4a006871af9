#include "BoardPlugin.h"

BoardPlugin::BoardPlugin(std::string name) : m_name(std::move(name)) {
    init(boardScene);
}

char* BoardPlugin::getPluginName() {
    return m_name.data();
}

int BoardPlugin::getPluginType() {
    return 1;
}

char* BoardPlugin::getPluginFolder() {
    static char folder[] = "Weather";
    return folder;
}

void BoardPlugin::convertBy(std::string table) {
    setConvTableNmae(table.data());
    setUseConvTable(1);
}
