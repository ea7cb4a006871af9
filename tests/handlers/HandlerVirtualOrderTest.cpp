#include <orbel/orbel.h>

#include <support/VirtualSlot.h>

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <vector>

namespace {

template <class Base>
class Next : public Base {
public:
    virtual void next() {}
};

} // namespace

TEST(VirtualOrder, OfPlugInHandlers) {
    EXPECT_TRUE(std::has_virtual_destructor_v<IDataHandler>);
    // The destructor takes 0 and 1.
    EXPECT_EQ(virtualSlot(&IDataHandler::getPluginName), 2u);
    EXPECT_EQ(virtualSlot(&IDataHandler::getPluginType), 3u);
    EXPECT_EQ(virtualSlot(&IDataHandler::getPluginFolder), 4u);
    EXPECT_EQ(virtualSlot(&IDataHandler::getPluginVersion), 5u);
    EXPECT_EQ(virtualSlot(&IDataHandler::getFieldType), 6u);
    EXPECT_EQ(virtualSlot(&IDataHandler::getPluginFlags), 7u);
    EXPECT_EQ(virtualSlot(&IDataHandler::getPluginInfoText), 8u);
    EXPECT_EQ(virtualSlot(&IDataHandler::onLoad), 9u);
    EXPECT_EQ(virtualSlot(&IDataHandler::onInit), 10u);
    EXPECT_EQ(virtualSlot(&IDataHandler::onFunctionInit), 11u);
    EXPECT_EQ(virtualSlot(&IDataHandler::onCleanup), 12u);
    EXPECT_EQ(
        (virtualSlot<void, IDataHandler, char*, std::vector<std::string>&, int, int>(&IDataHandler::onDataChange)),
        13u);
    EXPECT_EQ((virtualSlot<void, IDataHandler, char*, char*>(&IDataHandler::onDataChange)), 14u);
    EXPECT_EQ(virtualSlot(&IDataHandler::onTypeChange), 15u);
    EXPECT_EQ(virtualSlot(&IDataHandler::onBuildGeometry), 16u);
    EXPECT_EQ(virtualSlot(&IDataHandler::onExecAction), 17u);
    EXPECT_EQ(virtualSlot(&IDataHandler::onParamChange), 18u);
    EXPECT_EQ(virtualSlot(&IDataHandler::onGuiStatus), 19u);
    EXPECT_EQ(virtualSlot(&IDataHandler::perFrame), 20u);
    EXPECT_EQ(virtualSlot(&IDataHandler::onDispatcher), 21u);
    EXPECT_EQ(virtualSlot(&IDataHandler::dump), 22u);
    EXPECT_EQ(virtualSlot(&Next<IDataHandler>::next), 23u);
}

TEST(VirtualOrder, BridgesAddNothing) {
    EXPECT_FALSE(std::has_virtual_destructor_v<IDataHandlerImpl>);
    EXPECT_EQ(virtualSlot(&Next<IDataHandlerImpl>::next), 5u);
}
