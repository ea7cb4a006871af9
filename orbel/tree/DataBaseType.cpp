#include <orbel/tree/DataBaseType.h>

#include <orbel/foundation/DataRootClassType.h>

#include "../foundation/text/FixedText.h"
#include "../foundation/text/Writer.h"
#include "ChildTable.h"
#include "TreeState.h"

#include <ostream>

int DataBaseType::indentation = 0;

namespace {

DataType* makeRootRecord() {
    char name[] = "DataBaseType";
    return new DataRootClassType<DataBaseType>(name);
}

} // namespace

DataType* DataBaseType::classType = makeRootRecord();

void DataBaseType::init() {}

DataType* DataBaseType::getClassType() {
    return classType;
}

void DataBaseType::setIndent(int level) {
    indentation = level;
}

int DataBaseType::getIndent() {
    return indentation;
}

int DataBaseType::incrIndent() {
    return ++indentation;
}

int DataBaseType::decrIndent() {
    return --indentation;
}

void DataBaseType::indent(std::ostream& os) {
    text::writeTabs(os, indentation);
}

DataBaseType::DataBaseType(char* name) : DataBaseType(classType, text::viewOf(name)) {}

DataBaseType::DataBaseType(DataType* type, std::string_view name) : m_type(type), m_name{} {
    text::copyCut(m_name, name);
}

DataBaseType::DataBaseType(const DataBaseType& other)
    : m_type(other.m_type), m_owners(other.m_owners), m_referenceCount(other.m_referenceCount),
      m_referenceCalls(other.m_referenceCalls), m_name{} {
    text::copyCut(m_name, other.m_name);
}

DataBaseType& DataBaseType::operator=(const DataBaseType& other) {
    if (this == &other)
        return *this;
    OwnerSet owners(other.m_owners);
    aboutToRename(other.m_name);
    setType(other.m_type);
    m_owners.swap(owners);
    m_referenceCount = other.m_referenceCount;
    m_referenceCalls = other.m_referenceCalls;
    text::copyCut(m_name, other.m_name);
    return *this;
}

DataBaseType::~DataBaseType() = default;

const char* DataBaseType::getTypeName() {
    return "DataBaseType";
}

void DataBaseType::dump(std::ostream& /*os*/, int /*first*/, int /*last*/, int /*withName*/) {}

void DataBaseType::dumpXML(std::ostream& /*os*/) {}

void DataBaseType::aboutToRename(const char* name) {
    if (m_listedIn && text::viewOf(name) != m_name)
        m_listedIn->keepKey(static_cast<DataField&>(*this));
}

void DataBaseType::setName(char* name) {
    aboutToRename(name);
    text::copyCut(m_name, name);
}

char* DataBaseType::getName() {
    return m_name;
}

void DataBaseType::setType(DataType* type) {
    if (type == m_type)
        return;
    m_type = type;
    // Paths lead on through nodes only. What nobody has held yet is on no path.
    if (m_referenceCount > 0 || m_listedIn || !m_owners.empty())
        treeState.paths.drop();
}

DataType* DataBaseType::type() {
    return m_type;
}

int DataBaseType::isOfType(DataType* type) {
    return m_type ? m_type->isDerivedFrom(type) : 0;
}

int DataBaseType::isExactType(DataType* type) {
    return m_type == type ? 1 : 0;
}

int DataBaseType::ref() {
    return ++m_referenceCount;
}

int DataBaseType::unref() {
    if (m_referenceCount >= 1)
        --m_referenceCount;
    return m_referenceCount;
}

int DataBaseType::ref(void* owner, DataField* /*referrer*/) {
    if (m_owners.insert(owner))
        ++m_referenceCount;
    ++m_referenceCalls;
    return m_referenceCount;
}

int DataBaseType::unref(void* owner, DataField* /*referrer*/) {
    if (m_referenceCalls > 0)
        --m_referenceCalls;
    if (m_owners.erase(owner))
        unref();
    return m_referenceCount;
}

int DataBaseType::getRef() {
    return m_referenceCount;
}

int DataBaseType::getRefCalls() {
    return m_referenceCalls;
}

void DataBaseType::clearRef() {
    m_referenceCount = 0;
}
