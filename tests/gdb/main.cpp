#include <orbel/orbel.h>

#include <cstdlib>
#include <cstring>
#include <new>
#include <string>

namespace {

class TitleWatcher : public DataHandler {
public:
    using DataHandler::DataHandler;
};

class Gauge : public DataValue {
public:
    using DataValue::DataValue;
};

char* text(const char* constant) {
    static std::string texts[100];
    static int next = 0;
    return (texts[next++] = constant).data();
}

/// gdb stops here, when the tree is as the test wants it.
[[gnu::noinline]] int stopHere(int seen) {
    return seen;
}

constexpr std::size_t largest = 1024;

/// Memory in which an object was never made.
template <class Type>
Type* unmade(int byte) {
    void* memory = std::malloc(largest);
    std::memset(memory, byte, largest);
    return static_cast<Type*>(memory);
}

} // namespace

int main() {
    DataObject::init();
    DataObject::getTypesTable()->parse(text("Point = { string x; string y; }; City = { string label; Point place; };"));
    Orbel show(text("show"));

    DataField* title = show.getField(text("node:scene/string:title"), 0, 0);
    title->setData("Gr\xc3\xbc\xc3\x9f \"dich\"\n\xff");
    DataField* list = show.getField(text("node:scene/string:list"), 0, 0);
    list->setSize(3);
    list->setData("one", 0);
    list->setData("three", 2);

    show.getField(text("node:sparse/string:late"), 0, 0);
    DataField* renamed = show.getField(text("sparse/string:early"), 0, 0);
    show.getField(text("sparse/string:removed"), 0, 0);
    DataField* destroyed = show.getField(text("sparse/string:destroyed"), 0, 0);
    auto* sparse = static_cast<DataStructure*>(show.getField(text("sparse"), 0, 0));
    renamed->setName(text("new name"));
    sparse->removeField(text("removed"), 0);
    delete destroyed;
    sparse->addField(new Gauge(text("gauge")), -1);

    DataObject* city = DataObject::createObject(text("City"), text("oslo"));
    city->setFieldData(text("place/x"), text("1"));
    DataArray* points = DataObject::createArray(text("Point"), text("points"), 2);
    auto* table = new DataHashTable(text("cities"));
    table->setObjectType(text("Point"));
    table->newObject(text("Oslo"));
    table->newObject(text("Bergen"));

    TitleWatcher watcher(text("watcher"));
    DataHandler idle(text("idle"));
    title->registerHandler(&watcher);

    auto* raw = unmade<DataStructure>(0);
    auto* gone = unmade<DataStructure>(0xff);
    auto* rawHandler = unmade<DataHandler>(0xff);
    DataField* nothing = nullptr;
    stopHere(points->getSize() + (nothing ? 1 : 0));
    std::free(raw);
    std::free(gone);
    std::free(rawHandler);
}
