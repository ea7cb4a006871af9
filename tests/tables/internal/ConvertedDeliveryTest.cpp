#include <orbel/orbel.h>

#include <support/AllocationCount.h>
#include <support/Console.h>
#include <support/Environment.h>
#include <support/TemporaryFolder.h>
#include <support/Text.h>
#include <support/TreeCleanup.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace {

/// Is told what a table makes of the values of a field.
class Viewer : public IDataHandler {
public:
    explicit Viewer(DataField& field) {
        init(0);
        registerHandler(&field);
        setConvTableNmae(Text("Sky"));
        setUseConvTable(1);
    }

    char* getPluginName() override { return m_name.data(); }
    int getPluginType() override { return 0; }
    char* getPluginFolder() override { return m_name.data(); }
    void onDataChange(char* /*fieldName*/, char* value) override {
        if (const auto reaction = std::exchange(react, nullptr))
            reaction();
        // Behind the reaction: what it does must not reach the text.
        shown = value;
    }

    std::function<void()> react;
    std::string shown;

private:
    std::string m_name = "viewer";
};

class ConvertedDelivery : public testing::Test {
protected:
    ConvertedDelivery() {
        folder.write("QX_ConvTables.csv",
                     "__TABLE__,Sky\n01,the picture of the sun.png\n02,the picture of clouds.png\n");
        refresh();
        root.addField(value, 0);
        viewer = std::make_unique<Viewer>(*value);
    }

    static void refresh() {
        Console console;
        IDataHandlerImpl::RefreshConvTables();
        console.takeOutput();
    }

    TemporaryFolder folder;
    Variable variable{"QX_OBJECTS_DIR", folder.path()};
    Orbel root{Text("show")};
    const SubtreeCleanup belowRoot{root};
    DataValue* value = new DataValue(Text("value"));
    std::unique_ptr<Viewer> viewer;
};

} // namespace

TEST_F(ConvertedDelivery, AllocatesNothingOnceItHasRun) {
    value->setData("01");
    viewer->shown.reserve(100);
    EXPECT_EQ(allocationsOf([&] {
                  value->setData("02");
                  value->setData("01");
              }),
              0);
    EXPECT_EQ(viewer->shown, "the picture of the sun.png");
}

TEST_F(ConvertedDelivery, KeepsItsTextWhileThePlugInSetsTheFieldAgain) {
    std::string inner;
    viewer->react = [&] {
        value->setData("02");
        inner = viewer->shown;
    };
    value->setData("01");
    EXPECT_EQ(inner, "the picture of clouds.png");
    EXPECT_EQ(viewer->shown, "the picture of the sun.png");
}

TEST_F(ConvertedDelivery, KeepsItsTextWhileTheTablesAreReadAgain) {
    viewer->react = [&] {
        folder.write("QX_ConvTables.csv", "__TABLE__,Sky\n01,night.png\n");
        refresh();
    };
    value->setData("01");
    EXPECT_EQ(viewer->shown, "the picture of the sun.png");
    value->setData("01");
    EXPECT_EQ(viewer->shown, "night.png");
}
