#include <orbel/tree/DataObject.h>

#include <orbel/foundation/DataClassType.h>
#include <orbel/foundation/DataPrintf.h>
#include <orbel/tree/DataArray.h>
#include <orbel/tree/DataValue.h>
#include <orbel/tree/Orbel.h>
#include <orbel/types/DataObjectField.h>
#include <orbel/types/DataObjectType.h>
#include <orbel/types/DataObjectTypesTable.h>

#include "../foundation/text/FixedText.h"
#include "../types/TypeLoading.h"
#include "../types/TypesState.h"
#include "FieldWatch.h"
#include "HandlerList.h"
#include "Limits.h"
#include "NewField.h"
#include "TypeBuild.h"

#include <algorithm>
#include <sstream>
#include <utility>

namespace {

char typesFileName[4096] = {};

DataArray* makeArray(DataObjectType& type, char* name, int size) {
    DataArray* array = type.createArray();
    if (!array)
        array = new DataArray(name);
    NewField made(*array);
    array->setObjectType(&type);
    array->setSize(size);
    made.release();
    return array;
}

/// What the log says in front of the name that is read.
const char* logTextOf(TypeSource source) {
    switch (source) {
    case TypeSource::file:
        return "Reading config file : ";
    case TypeSource::path:
        return "Reading config files in path : ";
    default:
        return "Reading config files in folder : ";
    }
}

} // namespace

DataObjectTypesTable* DataObject::s_tTypes = nullptr;
char* DataObject::s_sTypesFileName = typesFileName;
int DataObject::i_NofExtraTypes = 0;
bool DataObject::b_EnableOnTheFlyQXFile = false;
char DataObject::m_sConfigQXFolder[4096] = {};
DataType* DataObject::classType = nullptr;

void DataObject::init() {
    if (classType)
        return;
    readConfigFiles();
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

DataObject::DataObject(const DataObject& other) = default;

DataObject& DataObject::operator=(const DataObject& other) = default;

DataObject::~DataObject() = default;

const char* DataObject::getTypeName() {
    return "DataObject";
}

void DataObject::parse(char* /*indexSpec*/, char* text) {
    DataStructure::parse(nullptr, text);
}

bool DataObject::registerHandler(char* path, DataHandler* handler, int index) {
    if (!handler)
        return false;
    const FieldWatch watch(*this);
    DataField* found = getField(path, index, 1);
    // Only now: what a kind in the path calls may take the handler elsewhere, or this object away.
    DataField* old = HandlerList::fieldOf(*handler);
    if (found) {
        if (old == found)
            return true;
        makeRoomForHandler(*found);
        if (old) {
            old->unregisterHandler(handler);
            DataNode* parent = old->getParent();
            if (old != this && old->getNumHandlers() == 0 && parent)
                parent->removeField(old->getName(), index);
        }
        found->registerHandler(handler);
        return true;
    }
    for (DataNode* ancestor = watch.ended() ? nullptr : getParent(); ancestor; ancestor = ancestor->getParent()) {
        const FieldWatch ancestorWatch(*ancestor);
        const bool hasPath = ancestor->getField(path, index, 1) != nullptr;
        if (ancestorWatch.ended())
            break;
        if (hasPath || ancestor->isOfType(Orbel::getClassType()) != 0)
            return ancestor->registerHandler(path, handler, index);
    }
    if (DataField* last = HandlerList::fieldOf(*handler))
        last->unregisterHandler(handler);
    return false;
}

bool DataObject::unregisterHandler(DataHandler* handler) {
    DataField* field = handler ? HandlerList::fieldOf(*handler) : nullptr;
    if (field)
        field->unregisterHandler(handler);
    return field != nullptr;
}

void DataObject::setObjectType(DataObjectType* type) {
    if (type == m_objectType)
        return;
    deleteChildren();
    m_objectType = type;
    if (!type)
        return;
    const FieldWatch watch(*this);
    try {
        createStructure();
    } catch (...) {
        if (!watch.ended()) {
            NewField::discardChildren(*this);
            m_objectType = nullptr;
        }
        throw;
    }
    if (!watch.ended())
        fireOnTypeChange(type->getName());
}

void DataObject::setObjectType(char* typeName) {
    DataObjectType* type = s_tTypes ? s_tTypes->getTypeByName(typeName) : nullptr;
    if (!type || type == m_objectType)
        return;
    const FieldWatch watch(*this);
    setObjectType(type);
    if (!watch.ended())
        fireOnTypeChange(typeName);
}

DataObjectType* DataObject::getObjectType() {
    return m_objectType;
}

char* DataObject::getObjectTypeName() {
    return m_objectType ? m_objectType->getName() : nullptr;
}

void DataObject::createStructure() {
    if (!m_objectType || !TypeBuild::admits(*m_objectType))
        return;
    const TypeBuild build(m_objectType);
    const FieldWatch watch(*this);
    std::vector<DataObjectField*> declarations;
    m_objectType->getFieldsList(declarations);
    for (DataObjectField* declaration : declarations) {
        // A second field of the same name would be refused and belong to nobody.
        if (hasChild(declaration->getName()))
            continue;
        DataField* field = createField(declaration);
        if (!field)
            continue;
        NewField made(*field);
        if (watch.ended())
            return;
        addField(field, -1);
        made.release();
    }
}

bool DataObject::hasChild(char* name) {
    return findChild(limits::cutName(text::viewOf(name))) != nullptr;
}

DataField* DataObject::createField(DataObjectField* declaration) {
    const bool isText = text::viewOf(declaration->getType()) == "string";
    DataObjectType* type = isText || !s_tTypes ? nullptr : s_tTypes->getTypeByName(declaration->getType());
    if (!isText && (!type || !TypeBuild::admits(*type)))
        return nullptr;
    if (!TypeBuild::admitsField())
        return nullptr;
    const int count = declaration->getSize();
    char* name = declaration->getName();
    const FieldWatch watch(*this);
    DataField* field = nullptr;
    if (isText)
        field = new DataValue(name);
    else if (count == 1)
        field = createNestedObject(*type, name);
    else
        field = makeArray(*type, name, count);
    // A type's own function may have destroyed this object. What it made is the caller's then, who knows.
    if (watch.ended())
        return field;
    NewField made(*field);
    if (isText)
        field->setSize(count);
    if (isText || count != 1)
        take(field);
    if (*declaration->getDefaultValue() != '\0') {
        std::string range = "0-" + std::to_string(std::max(count, 1) - 1);
        field->parse(count > 1 ? range.data() : nullptr, std::string(declaration->getDefaultValue()).data());
    }
    made.release();
    return field;
}

DataField* DataObject::createNestedObject(DataObjectType& type, char* name) {
    const FieldWatch watch(*this);
    DataObject* object = createObject(&type, name);
    if (watch.ended())
        return object;
    NewField made(*object);
    take(object);
    const TypeBuild build(&type);
    std::vector<DataObjectField*> declarations;
    type.getFieldsList(declarations);
    for (DataObjectField* declaration : declarations) {
        // Only objects that the type's own function made can still lack some.
        if (object->hasChild(declaration->getName()))
            continue;
        DataField* child = createField(declaration);
        if (!child)
            continue;
        NewField madeChild(*child);
        if (watch.ended())
            break;
        take(child);
        object->addField(child, -1);
        madeChild.release();
    }
    made.release();
    return object;
}

/// Contract: an object holds a reference on what it makes beside the one that every parent holds.
void DataObject::take(DataField* field) {
    field->ref(this, this);
}

DataObject* DataObject::createObject(DataObjectType* type, char* name) {
    if (!type)
        return nullptr;
    if (DataObject* made = type->createObject())
        return made;
    auto* object = new DataObject(name);
    NewField owned(*object);
    object->setObjectType(type);
    owned.release();
    return object;
}

DataObject* DataObject::createObject(char* typeName, char* name) {
    return createObject(s_tTypes ? s_tTypes->getTypeByName(typeName) : nullptr, name);
}

DataArray* DataObject::createArray(char* typeName, char* name, int size) {
    DataObjectType* type = s_tTypes ? s_tTypes->getTypeByName(typeName) : nullptr;
    if (!type)
        return nullptr;
    DataArray* array = makeArray(*type, name, size);
    NewField made(*array);
    array->ref(nullptr, nullptr);
    made.release();
    return array;
}

DataObjectTypesTable* DataObject::getTypesTable() {
    return s_tTypes;
}

DataObjectType* DataObject::getObjectTypeByName(char* name) {
    if (!s_tTypes)
        init();
    return s_tTypes ? s_tTypes->getTypeByName(name) : nullptr;
}

void DataObject::getTypeNames(std::vector<char*>* names) {
    if (!s_tTypes || !names)
        return;
    names->clear();
    for (int index = 0; index < s_tTypes->getNumTypes(); ++index)
        names->push_back(s_tTypes->getTypeByIndex(index)->getName());
}

void DataObject::getTypeFieldNames(char* typeName, std::vector<char*>* names) {
    if (!s_tTypes || !names)
        return;
    names->clear();
    if (DataObjectType* type = s_tTypes->getTypeByName(typeName))
        type->getFieldsList(*names);
}

void DataObject::getTypeFieldsDescription(char* typeName, char* out) {
    DataObjectType* type = s_tTypes ? s_tTypes->getTypeByName(typeName) : nullptr;
    if (type && out)
        type->getFieldsDescription(out);
}

void DataObject::dumpAllTypes(std::ostream& os) {
    if (s_tTypes)
        s_tTypes->dumpSpec(os);
}

void DataObject::readConfigFiles() {
    retireTypesTable(s_tTypes);
    s_tTypes = nullptr;
    s_tTypes = new DataObjectTypesTable;

    const TypeSource source = chooseTypeSource();
    // Contract: the path variable only selects its branch; the list that is read is what was read the time before.
    std::string name(text::viewOf(s_sTypesFileName));
    if (source != TypeSource::path)
        name = source == TypeSource::configured ? std::string(m_sConfigQXFolder) : typeSourceText(source);
    text::copyCut(typesFileName, name.c_str());
    s_sTypesFileName = typesFileName;

    std::ostringstream log;
    log << '\n' << logTextOf(source) << typesFileName << "\n\n";
    if (source == TypeSource::file)
        readTypesTable(typesFileName);
    else if (source == TypeSource::folder)
        readConfigFilesDir(typesFileName);
    else
        readConfigFilesPath(typesFileName);
    s_tTypes->sortTypes();
    if (isTypeDumpWanted()) {
        s_tTypes->dumpSpec(log);
        DataPrintf("%s\n", log.str().c_str());
    }
}

bool DataObject::readTypesTable(char* fileName) {
    return loadTypeFile(s_tTypes, std::string(text::viewOf(fileName)));
}

void DataObject::readConfigFilesDir(char* folder) {
    loadTypeFolder(s_tTypes, std::string(text::viewOf(folder)));
}

void DataObject::readConfigFilesPath(char* folderList) {
    loadTypeFolders(s_tTypes, text::viewOf(folderList));
}

void DataObject::set_ConfigFolder(char* folder) {
    text::copyCut(m_sConfigQXFolder, folder);
}

char* DataObject::get_ConfigFolder() {
    return m_sConfigQXFolder;
}

void DataObject::set_NofExtraTypes(int count) {
    i_NofExtraTypes = count;
}

int DataObject::get_NofExtraTypes() {
    return i_NofExtraTypes;
}

void DataObject::set_OnTheFlyQXFile(bool enable) {
    b_EnableOnTheFlyQXFile = enable;
}

bool DataObject::get_OnTheFlyQXFile() {
    return b_EnableOnTheFlyQXFile;
}
