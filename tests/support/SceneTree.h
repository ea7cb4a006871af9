#ifndef ORBEL_TESTS_SUPPORT_SCENETREE_H
#define ORBEL_TESTS_SUPPORT_SCENETREE_H

#include <orbel/orbel.h>
#include <support/Text.h>
#include <support/TreeCleanup.h>

/// A small show: scene/title, three points with a value x each, and cities keyed "Oslo" and "Rome" with a value x.
class SceneTree {
public:
    SceneTree() {
        root.addField(scene, 0);
        scene->addField(title, 0);
        root.addField(points, 0);
        points->setSize(3);
        for (int index = 0; index < 3; ++index)
            points->getObject(index)->addField(new DataValue(Text("x")), 0);
        root.addField(cities, 0);
        for (const char* key : {"Oslo", "Rome"})
            cities->newObject(Text(key))->addField(new DataValue(Text("x")), 0);
    }

    DataField* at(const std::string& path, int flag = 0) { return root.getField(Text(path), 0, flag); }
    DataObject* city(const char* key) { return cities->getObject(Text(key)); }
    DataField* xOf(DataObject* object) { return object->getFieldByIndex(0); }
    DataField* xOfPoint(int index) { return xOf(points->getObject(index)); }

    Orbel root{Text("show")};
    const SubtreeCleanup belowRoot{root};
    DataStructure* scene = new DataStructure(Text("scene"));
    DataValue* title = new DataValue(Text("title"));
    DataArray* points = new DataArray(Text("points"));
    DataHashTable* cities = new DataHashTable(Text("cities"));
};

#endif
