#include <orbel/tree/Orbel.h>

#include <orbel/foundation/DataClassType.h>

DataType* Orbel::classType = nullptr;

void Orbel::init() {
    if (classType)
        return;
    DataStructure::init();
    char name[] = "Orbel";
    classType = new DataClassType<Orbel, DataStructure>(name);
}

DataType* Orbel::getClassType() {
    init();
    return classType;
}

Orbel::Orbel(char* name) : DataStructure(name) {
    setType(getClassType());
}

const char* Orbel::getTypeName() {
    return "Orbel";
}
