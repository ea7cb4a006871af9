#ifndef ORBEL_HOST_HOST_H
#define ORBEL_HOST_HOST_H

#include <orbel/host/CONTAINER.h>
#include <orbel/host/PluginRecord.h>
#include <orbel/host/SCENE.h>

#include <string_view>
#include <vector>

/// The host as the rest of the library sees it. In a program whose executable exports no host functions, and when
/// there is no such object, ids are -1, texts are empty and pointers null.
namespace host {

bool isValid(int id);
/// The number of "#12" as an id.
int objectOf(int number);
/// The host's name of any object; owned by the host.
char* nameOf(int id);

CONTAINER localContainer();
CONTAINER findContainer(const char* name);
CONTAINER nextOf(CONTAINER container);
CONTAINER parentOf(CONTAINER container);
CONTAINER topOf(CONTAINER container);
CONTAINER firstChildOf(CONTAINER container);
/// The children in their order.
std::vector<CONTAINER> childrenOf(CONTAINER container);
/// A container and the siblings behind it.
std::vector<CONTAINER> siblingsFrom(CONTAINER container);

SCENE localScene();
/// Owned by the host.
char* fullNameOf(SCENE scene);
CONTAINER rootOf(SCENE scene);

int geometryOf(CONTAINER container);
std::string_view typeOfGeometry(int geometry);

int pluginOn(CONTAINER container, const char* plugin);
/// The first 20, in the host's order.
std::vector<int> pluginsOn(CONTAINER container);
void createPlugin(CONTAINER container, const char* plugin);
void deletePlugin(CONTAINER container, const char* plugin);

/// A record that is none of this library's is null.
korPluginRecord* dataOf(int plugin);
/// What a plug-in answers when it is asked for its record, whatever it is.
korPluginRecord* askForRecord(int plugin);
korPluginRecord* askGeometryForRecord(int geometry);
void askToBuildHandler(int plugin);
/// Null for a record that is none of this library's, too.
korPluginRecord* ours(korPluginRecord* record);

/// The host's answer to a command; owned by the host.
const char* send(const char* command);

} // namespace host

#endif
