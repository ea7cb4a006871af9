#include <orbel/orbel.h>

#include <iostream>

class TitleWatcher : public DataHandler {
public:
    void onChange(DataField& field, bool changed) override {
        std::cout << field.getFullPath() << " = " << *field.getData(0) << (changed ? "" : " (unchanged)") << '\n';
    }
};

int main() {
    char name[] = "show", create[] = "node:scene/string:title", path[] = "scene/title", text[] = "Hello";
    Orbel show(name);
    TitleWatcher watcher;
    show.getField(create, 0, 0);
    show.registerHandler(path, &watcher, 0);
    show.setFieldData(path, text);
}
