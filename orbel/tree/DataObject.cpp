#include <orbel/tree/DataObject.h>

#include <orbel/foundation/DataClassType.h>
#include <orbel/tree/Orbel.h>

#include "HandlerList.h"

DataType* DataObject::classType = nullptr;

void DataObject::init() {
    if (classType)
        return;
    DataStructure::init();
    char name[] = "DataObject";
    classType = new DataClassType<DataObject, DataStructure>(name);
}

DataType* DataObject::getClassType() {
    init();
    return classType;
}

DataObject::DataObject(char* name) : DataStructure(name) {
    setType(getClassType());
}

const char* DataObject::getTypeName() {
    return "DataObject";
}

void DataObject::parse(char* /*indexSpec*/, char* text) {
    DataStructure::parse(nullptr, text);
}

bool DataObject::registerHandler(char* path, DataHandler* handler, int index) {
    if (!handler)
        return false;
    DataField* old = HandlerList::fieldOf(*handler);
    if (DataField* found = getField(path, index, 1)) {
        if (old == found)
            return true;
        if (old) {
            old->unregisterHandler(handler);
            DataNode* parent = old->getParent();
            if (old != this && old->getNumHandlers() == 0 && parent)
                parent->removeField(old->getName(), index);
        }
        found->registerHandler(handler);
        return true;
    }
    for (DataNode* ancestor = getParent(); ancestor; ancestor = ancestor->getParent())
        if (ancestor->getField(path, index, 1) || ancestor->isOfType(Orbel::getClassType()) != 0)
            return ancestor->registerHandler(path, handler, index);
    if (old)
        old->unregisterHandler(handler);
    return false;
}

bool DataObject::unregisterHandler(DataHandler* handler) {
    DataField* field = handler ? HandlerList::fieldOf(*handler) : nullptr;
    if (field)
        field->unregisterHandler(handler);
    return field != nullptr;
}
