#include <orbel/tree/DataArray.h>

#include <orbel/foundation/DataClassType.h>
#include <orbel/types/DataObjectType.h>

#include "../foundation/text/FixedText.h"
#include "../foundation/text/Scanner.h"
#include "DumpRange.h"
#include "DumpUnderWay.h"
#include "FieldWatch.h"
#include "HandlerList.h"
#include "Limits.h"
#include "NewField.h"
#include "TreeState.h"
#include "TypeBuild.h"

#include <algorithm>
#include <ostream>

DataType* DataArray::classType = nullptr;

void DataArray::init() {
    if (classType)
        return;
    DataNode::init();
    char name[] = "DataArray";
    classType = new DataClassType<DataArray, DataNode>(name);
}

DataType* DataArray::getClassType() {
    init();
    return classType;
}

DataArray::DataArray(char* name) : DataNode(name) {
    setType(getClassType());
}

DataArray::~DataArray() = default;

const char* DataArray::getTypeName() {
    return "DataArray";
}

void DataArray::dump(std::ostream& os, int first, int last, int withName) {
    DumpUnderWay dump(os);
    const DumpRange range(getSize(), first, last);
    if (withName != 0) {
        indent(os);
        os << getName();
        range.writeIndex(os);
        os << '=';
    }
    os << "{\n";
    if (getSize() > 0) {
        incrIndent();
        for (int index = range.from(); index < range.to(); ++index) {
            getObject(index)->dump(os, -1, -1, 0);
            os << ",\n";
        }
        getObject(range.to())->dump(os, -1, -1, 0);
        os << '\n';
    }
    // Contract: an empty array lowers the level it has not raised; readers of dumps expect it.
    decrIndent();
    indent(os);
    os << "};\n";
    dump.endFlushed();
}

void DataArray::dumpXML(std::ostream& os) {
    DumpUnderWay dump(os);
    indent(os);
    os << '<' << getName() << " type=" << text::viewOf(getObjectTypeName()) << ">\n";
    incrIndent();
    for (DataObject* element : m_elements) {
        element->dump(os, -1, -1, 1);
        os << '\n';
    }
    decrIndent();
    indent(os);
    os << "</" << getName() << ">\n";
    dump.endFlushed();
}

void DataArray::ClearLinks() {
    DataField::ClearLinks();
    for (DataObject* element : m_elements)
        element->ClearLinks();
}

void DataArray::setSize(int n) {
    if (n > limits::maxElements)
        return;
    const TypeBuild build(nullptr);
    const FieldWatch watch(*this);
    while (!watch.ended() && getSize() < n && TypeBuild::admitsElement())
        if (!appendElement())
            return;
}

DataObject* DataArray::makeElement(int index) {
    if (!m_objectType)
        return new DataObject(("Item-#" + std::to_string(index)).data());
    DataObject* element = m_objectType->createObject();
    // An object that is somebody's child already would have two owners.
    if (!element || element->getParent())
        element = new DataObject((std::string(m_objectType->getName()) + "-#" + std::to_string(index)).data());
    const FieldWatch watch(*element);
    try {
        element->setObjectType(m_objectType);
    } catch (...) {
        if (!watch.ended() && element->getRef() == 0)
            NewField::discard(*element);
        throw;
    }
    return watch.ended() ? nullptr : element;
}

/// Null when what hears of the element's type has destroyed the element or the array.
DataObject* DataArray::appendElement() {
    const FieldWatch watch(*this);
    DataObject* element = makeElement(getSize());
    if (!element)
        return nullptr;
    if (watch.ended()) {
        element->deleteChildren();
        if (element->getRef() == 0)
            delete element;
        return nullptr;
    }
    try {
        m_elements.push_back(element);
        element->setParent(this, getSize() - 1);
        element->ref(this, this);
    } catch (...) {
        if (!m_elements.empty() && m_elements.back() == element)
            m_elements.pop_back();
        if (element->getRef() == 0)
            NewField::discard(*element);
        throw;
    }
    return element;
}

void DataArray::removeLastElement() {
    DataObject* element = m_elements.back();
    m_elements.pop_back();
    element->setParent(nullptr, 0);
    if (element->unref(this, this) == 0)
        NewField::discard(*element);
}

int DataArray::getSize() {
    return static_cast<int>(m_elements.size());
}

void DataArray::parse(char* range, char* textToRead) {
    std::string_view values = text::behindBrace(text::viewOf(textToRead)).value_or("");

    const FieldWatch watch(*this);
    const auto giveTo = [&](int index) {
        if (values.empty() || watch.ended() || index >= getSize())
            return false;
        getObject(index)->parse(nullptr, std::string(text::cutListItem(values, ',')).data());
        return !watch.ended();
    };
    if (!range) {
        for (int index = 0; giveTo(index);)
            ++index;
        return;
    }
    for (std::string_view ranges = text::viewOf(range); !values.empty();) {
        const text::IndexRange bounds = text::readIndexRange(ranges);
        if (bounds.start == -1)
            return;
        const int last = std::min(bounds.end == -1 ? bounds.start : bounds.end, getSize() - 1);
        for (int index = bounds.start; index <= last && giveTo(index);)
            ++index;
        if (watch.ended())
            return;
    }
}

void DataArray::clearData() {
    const FieldWatch watch(*this);
    for (int index = 0; !watch.ended() && index < getSize(); ++index)
        getObject(index)->clearData();
}

bool DataArray::copyData(DataField* source, int sourceFirst, int targetFirst, int count) {
    if (!source || source->isOfType(getClassType()) == 0)
        return false;
    auto* from = static_cast<DataArray*>(source);
    // Behind the last place that an array can have there is nothing, however far.
    sourceFirst = std::clamp(sourceFirst, 0, limits::maxElements);
    targetFirst = std::clamp(targetFirst, 0, limits::maxElements);
    const int both = std::min(getSize(), from->getSize());
    count = count < 0 ? both : std::min(count, both);
    const FieldWatch watch(*this);
    const FieldWatch fromWatch(*from);
    for (int done = 0; done < count && !watch.ended() && !fromWatch.ended(); ++done) {
        if (DataObject* target = getObject(targetFirst + done))
            target->copyData(from->getObject(sourceFirst + done), 0, 0, -1);
    }
    return true;
}

DataField* DataArray::getField(char* path, int index, int flag) {
    DataObject* element = getObject(index);
    return element ? element->getField(path, index, flag) : nullptr;
}

void DataArray::removeChildren() {
    treeState.paths.drop();
    std::vector<DataObject*> elements;
    elements.swap(m_elements);
    for (DataObject* element : elements) {
        // One by one, for this must not run out of memory.
        for (int left = element->DataStructure::getNumFields(); left > 0; --left)
            if (DataField* field = element->DataStructure::getFieldByIndex(left - 1))
                field->unref(this, this);
        element->deleteChildren();
        element->setParent(nullptr, 0);
        if (element->unref(this, this) == 0)
            delete element;
    }
}

int DataArray::getNumFields() {
    return m_elements.empty() ? 0 : m_elements.front()->getNumFields();
}

bool DataArray::registerHandler(char* path, DataHandler* handler, int index) {
    DataObject* element = getObject(index);
    return element && element->registerHandler(path, handler, 0);
}

bool DataArray::unregisterHandler(DataHandler* handler) {
    DataField* field = handler ? HandlerList::fieldOf(*handler) : nullptr;
    if (field)
        field->unregisterHandler(handler);
    return field != nullptr;
}

bool DataArray::getFieldSize(char* path, int* size) {
    return !m_elements.empty() && m_elements.front()->getFieldSize(path, size);
}

bool DataArray::setFieldData(char* /*path*/, std::string* value) {
    if (m_elements.empty())
        return false;
    m_elements.front()->setData(value, 0);
    return true;
}

bool DataArray::setFieldData(char* /*path*/, char* value) {
    if (m_elements.empty())
        return false;
    m_elements.front()->setData(value, 0);
    return true;
}

bool DataArray::setFieldData(char* /*path*/, char* value, int index) {
    DataObject* element = getObject(index);
    if (element)
        element->setData(value, index);
    return element != nullptr;
}

bool DataArray::setFieldData(char* path, std::vector<char*>* values, int from, int to) {
    const int size = getSize();
    if (from < 0 || from >= size || !values)
        return false;
    if (values->empty())
        return true;
    const long long count = static_cast<long long>(values->size());
    const long long wanted = to == -1 ? from + count - 1 : std::min<long long>(to, 0LL + size + from - 1);
    const int last = static_cast<int>(std::min<long long>(wanted, size - 1));
    const FieldWatch watch(*this);
    for (int index = from; index <= last && !watch.ended(); ++index)
        if (DataObject* element = getObject(index))
            element->setFieldData(path,
                                  (*values)[static_cast<std::size_t>(std::min<long long>(index - from, count - 1))]);
    return true;
}

bool DataArray::getFieldData(char* path, std::string* value) {
    return !m_elements.empty() && m_elements.front()->getFieldData(path, value);
}

bool DataArray::getFieldData(char* path, char** value) {
    return !m_elements.empty() && m_elements.front()->getFieldData(path, value);
}

bool DataArray::getFieldData(char* path, std::vector<char*>* out, int from, int to) {
    if (from < 0 || from >= getSize())
        return false;
    const int capacity = static_cast<int>(std::min<std::size_t>(out ? out->size() : 0, limits::maxElements));
    const int room = std::min(capacity, getSize() - from);
    const int count = to == -1 ? room : static_cast<int>(std::clamp<long long>(to - 0LL - from + 1, 0, room));
    const FieldWatch watch(*this);
    for (int done = 0; done < count && !watch.ended(); ++done)
        if (DataObject* element = getObject(from + done))
            element->getFieldData(path, &(*out)[static_cast<std::size_t>(done)]);
    return true;
}

void DataArray::getFieldsByRange(char* range, std::vector<DataField*>* out) {
    if (!range || !out)
        return;
    std::string_view ranges(range);
    int left = limits::maxElements;
    int missingLeft = limits::maxMissing;
    do {
        const text::IndexRange bounds = text::readIndexRange(ranges);
        const int first = std::max(bounds.start, 0);
        const long long wanted = std::max(bounds.end, first) - 0LL - first + 1;
        const auto start = m_elements.begin() + std::min(first, getSize());
        const auto present = static_cast<int>(std::min<long long>({m_elements.end() - start, wanted, left}));
        out->insert(out->end(), start, start + present);
        const auto missing = static_cast<int>(std::min<long long>({wanted - present, missingLeft, left - present}));
        out->insert(out->end(), static_cast<std::size_t>(missing), nullptr);
        left -= present + missing;
        missingLeft -= missing;
    } while (!ranges.empty());
}

DataObject* DataArray::getObject(int index) {
    return index >= 0 && index < getSize() ? m_elements[static_cast<std::size_t>(index)] : nullptr;
}

void DataArray::setObjectType(DataObjectType* type) {
    if (type == m_objectType)
        return;
    const TypeBuild build(nullptr);
    const FieldWatch watch(*this);
    for (int index = 0; index < getSize(); ++index) {
        getObject(index)->setObjectType(type);
        if (watch.ended())
            return;
    }
    m_objectType = type;
    if (type)
        fireOnTypeChange(type->getName());
}

void DataArray::setObjectType(char* typeName) {
    const TypeBuild build(nullptr);
    const FieldWatch watch(*this);
    for (int index = 0; !watch.ended() && index < getSize(); ++index)
        getObject(index)->setObjectType(typeName);
}

DataObjectType* DataArray::getObjectType() {
    return m_objectType;
}

char* DataArray::getObjectTypeName() {
    return m_objectType ? m_objectType->getName() : nullptr;
}
