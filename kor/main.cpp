#include "Host.h"
#include "SceneFile.h"

#include <orbel/orbel.h>

#include <iostream>
#include <string>

int main(int argc, char** argv) {
    try {
        IDataHandlerImpl::init();
        Modules modules(argc > 2 ? argv[2] : "plugins");
        Scene scene;
        readSceneFile(argc > 1 ? argv[1] : "scene.json", scene);
        Host host(scene, modules);
        host.attachAll();
        std::string line;
        while (std::getline(std::cin, line)) {
            host.runCommands(line);
            host.callFrame();
        }
        IDataHandlerImpl::getOrbel(scene.id(), false)->dump(std::cout, -1, -1, 1);
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "Kor: " << error.what() << '\n';
        return 2;
    }
}
