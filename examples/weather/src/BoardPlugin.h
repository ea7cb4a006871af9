#ifndef WEATHER_BOARDPLUGIN_H
#define WEATHER_BOARDPLUGIN_H

#include "BoardState.h"

#include <orbel/orbel.h>

#include <string>

/// The scene that the board shows.
inline constexpr int boardScene = 1;

/// What all plug-ins of the board have in common. Like a host, it bridges a plug-in to its scene when it is made.
class BoardPlugin : public IDataHandler {
public:
    explicit BoardPlugin(std::string name);

    char* getPluginName() override;
    int getPluginType() override;
    char* getPluginFolder() override;

protected:
    /// Values come as the table has them from now on.
    void convertBy(std::string table);

private:
    std::string m_name;
};

#endif
