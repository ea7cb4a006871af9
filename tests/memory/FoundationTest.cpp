#include "Survival.h"

#include <support/Console.h>
#include <support/Environment.h>
#include <support/Text.h>

#include <memory>
#include <new>
#include <string>

using memory::Operate;
using memory::OutOfMemory;
using memory::survivesAnywhere;

namespace {

/// A class of a client whose items take memory of their own.
class Gauge : public DataValue {
public:
    explicit Gauge(char* name) : DataValue(name), scale("the scale of a gauge, which is longer than a small text") {}

    std::string scale;
};

/// One that is above others.
class Item final : public DataBaseType {
public:
    explicit Item(char* name) : DataBaseType(name), label("the label of an item, which is longer than a small text") {}

    std::string label;
};

} // namespace

TEST_F(OutOfMemory, ALockIsMadeOrNotAtAll) {
    survivesAnywhere([](const Operate& operate) {
        std::unique_ptr<QX::Lock> lock;
        const bool isDone = operate([&] {
            lock = std::make_unique<QX::Lock>();
            const QX::AutoLock held(*lock);
        });
        EXPECT_EQ(lock != nullptr, isDone);
    });
}

TEST_F(OutOfMemory, ARecordMakesAnItemOrNothing) {
    for (DataType* record :
         {DataValue::getClassType(), DataNode::getClassType(), DataStructure::getClassType(),
          DataObject::getClassType(), Orbel::getClassType(), DataArray::getClassType(), DataHashTable::getClassType()})
        survivesAnywhere([record](const Operate& operate) {
            DataBaseType* made = nullptr;
            const bool isDone = operate([&] { made = record->alloc(Text("made"), 0); });
            EXPECT_EQ(made != nullptr, isDone) << record->getName();
            if (!made)
                return;
            EXPECT_EQ(made->isExactType(record), 1);
            delete static_cast<DataField*>(made);
        });
}

TEST_F(OutOfMemory, ARecordOfAClientMakesAnItemOrNothing) {
    DataClassType<Gauge, DataValue> gauges(Text("Gauge"));
    survivesAnywhere([&](const Operate& operate) {
        DataBaseType* made = nullptr;
        const bool isDone = operate([&] { made = gauges.alloc(Text("made"), 0); });
        EXPECT_EQ(made != nullptr, isDone);
        delete static_cast<Gauge*>(made);
    });
    DataRootClassType<Item> items(Text("Item"));
    survivesAnywhere([&](const Operate& operate) {
        DataBaseType* made = nullptr;
        const bool isDone = operate([&] { made = items.alloc(Text("made"), 0); });
        EXPECT_EQ(made != nullptr, isDone);
        delete static_cast<Item*>(made);
    });
}
