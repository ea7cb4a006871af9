#include <orbel/orbel.h>

#include <support/VirtualSlot.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <type_traits>
#include <vector>

namespace {

template <class Base>
class Next : public Base {
public:
    virtual void next() {}
};

class Plain : public korDataStructureHandler {
public:
    int getPluginType() override { return 0; }
    char* getPluginFolder() override { return nullptr; }
};

} // namespace

static_assert(std::is_base_of_v<IDataHandler, korDataHandler> && std::is_base_of_v<korPluginData, korDataHandler>);
static_assert(std::is_base_of_v<korDataHandler, korDataStructureHandler>);

// Plug-ins fill in the record that the library reads.
static_assert(sizeof(korPluginRecord().marker) == 4 && offsetof(korPluginRecord, marker) == 0);
static_assert(offsetof(korPluginRecord, container) == 4);
static_assert(offsetof(korPluginRecord, sceneId) == 8);
static_assert(offsetof(korPluginRecord, handler) == 16);

TEST(VirtualOrder, OfHostHandlersBeginsWithThatOfPlugInHandlers) {
    // The destructor takes 0 and 1.
    EXPECT_EQ(virtualSlot(&korDataHandler::getPluginName), 2U);
    EXPECT_EQ(virtualSlot(&korDataHandler::getPluginType), 3U);
    EXPECT_EQ(virtualSlot(&korDataHandler::getPluginFolder), 4U);
    EXPECT_EQ(virtualSlot(&korDataHandler::getPluginVersion), 5U);
    EXPECT_EQ(virtualSlot(&korDataHandler::getFieldType), 6U);
    EXPECT_EQ(virtualSlot(&korDataHandler::getPluginFlags), 7U);
    EXPECT_EQ(virtualSlot(&korDataHandler::getPluginInfoText), 8U);
    EXPECT_EQ(virtualSlot(&korDataHandler::onLoad), 9U);
    EXPECT_EQ(virtualSlot(&korDataHandler::onInit), 10U);
    EXPECT_EQ(virtualSlot(&korDataHandler::onFunctionInit), 11U);
    EXPECT_EQ(virtualSlot(&korDataHandler::onCleanup), 12U);
    EXPECT_EQ(
        (virtualSlot<void, korDataHandler, char*, std::vector<std::string>&, int, int>(&korDataHandler::onDataChange)),
        13U);
    EXPECT_EQ(virtualSlot(&korDataHandler::onTypeChange), 15U);
    EXPECT_EQ(virtualSlot(&korDataHandler::onBuildGeometry), 16U);
    EXPECT_EQ(virtualSlot(&korDataHandler::onExecAction), 17U);
    EXPECT_EQ(virtualSlot(&korDataHandler::onParamChange), 18U);
    EXPECT_EQ(virtualSlot(&korDataHandler::onGuiStatus), 19U);
    EXPECT_EQ(virtualSlot(&korDataHandler::perFrame), 20U);
    EXPECT_EQ(virtualSlot(&korDataHandler::onDispatcher), 21U);
    EXPECT_EQ(virtualSlot(&korDataHandler::dump), 22U);
}

TEST(VirtualOrder, OfHostHandlersGoesOnWithTheirOwn) {
    EXPECT_EQ(virtualSlot(&korDataHandler::Register), 23U);
    EXPECT_EQ(virtualSlot(&korDataHandler::RegisterField), 24U);
    EXPECT_EQ(virtualSlot(&korDataHandler::Unregister), 25U);
    EXPECT_EQ(virtualSlot(&korDataHandler::onSyncParams), 26U);
    EXPECT_EQ(virtualSlot(&korDataHandler::parseMacro), 27U);
    EXPECT_EQ(virtualSlot(&Next<korDataHandler>::next), 28U);
}

TEST(VirtualOrder, OfStructureHandlersEndsWithTheirOwn) {
    using Handler = korDataStructureHandler;
    EXPECT_EQ((virtualSlot<void, korDataHandler, const char*, int>(&Handler::Register)), 23U);
    EXPECT_EQ(virtualSlot(&Handler::Unregister), 25U);
    EXPECT_EQ((virtualSlot<void, Handler, char*, int>(&Handler::Register)), 28U);
    EXPECT_EQ(virtualSlot(&Handler::RegisterChild), 29U);
    EXPECT_EQ(virtualSlot(&Handler::UnregisterAllChildren), 30U);
    EXPECT_EQ(virtualSlot(&Handler::syncChildren), 31U);
    EXPECT_EQ(virtualSlot(&Next<Handler>::next), 32U);
}

TEST(VirtualOrder, OfPluginDataIsItsDestructorAlone) {
    EXPECT_TRUE(std::has_virtual_destructor_v<korPluginData>);
    EXPECT_EQ(virtualSlot(&Next<korPluginData>::next), 2U);
}

TEST(PlugInRecords, AreMarkedAsThoseOfTheLibrary) {
    const korPluginRecord record;
    EXPECT_EQ(record.marker, 9473);
    EXPECT_EQ(record.container.id, -1);
    EXPECT_EQ(record.sceneId, -1);
    EXPECT_EQ(record.handler, nullptr);
}

TEST(VirtualOrder, TheHandlerComesBeforeTheDataInAPlugIn) {
    // Compiled plug-ins pass either base around by address.
    Plain plugIn;
    const auto* const start = reinterpret_cast<const char*>(&plugIn);
    EXPECT_EQ(reinterpret_cast<const char*>(static_cast<IDataHandler*>(&plugIn)), start);
    EXPECT_EQ(reinterpret_cast<const char*>(static_cast<korPluginData*>(&plugIn)), start + sizeof(IDataHandler));
}
