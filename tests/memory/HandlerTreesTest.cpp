#include "FailingMemory.h"
#include "Survival.h"

#include <support/WorkingFolder.h>

#include <cstddef>
#include <cstring>
#include <memory>
#include <string>

using memory::Operate;
using memory::survivesAnywhere;

namespace {

/// Keeps how often it was told, and takes no memory for it.
class Plugin : public IDataHandler {
public:
    char* getPluginName() override { return m_name; }
    int getPluginType() override { return 1; }
    char* getPluginFolder() override { return m_name; }
    void onDataChange(char* /*fieldName*/, std::vector<std::string>& /*values*/, int /*from*/, int /*to*/) override {
        ++calls;
    }
    void onDataChange(char* /*fieldName*/, char* value) override {
        ++calls;
        hasHeardLongText = std::strlen(value) > 20;
    }

    int calls = 0;
    bool hasHeardLongText = false;

private:
    char m_name[20] = "plug-in";
};

class KorPlugin : public korDataHandler {
public:
    int getPluginType() override { return 1; }
    char* getPluginFolder() override { return getPluginName(); }
    using korDataHandler::onDataChange;
    void onDataChange(char* /*fieldName*/, char* /*value*/) override { ++calls; }

    int calls = 0;
};

/// A process with a folder of settings, types, conversion tables, presets and case pairs.
class OutOfMemoryInHandlerTrees : public testing::Test {
protected:
    OutOfMemoryInHandlerTrees() {
        clearTypeVariables();
        folder.write("Orbel.ini", "MultiOrbel = 1\nRefreshAlways = 0\n");
        folder.write("QX_ConvTables_one.csv", "__VERSION__,1\n__TABLE__,colours of some length,\n"
                                              "red,a long text that stands for the colour red\n"
                                              "__DEFAULT__,a long text that stands for all other colours\n");
        folder.write("QX_PreSets.csv", "__PLUGIN__,a plug-in with presets\nName,Size,Colour of the text in words\n"
                                       "one,1,something longer than a small text\n");
        folder.write("CapitalUnicodeData.txt", "0041;A;0061;\n0042;B;0062;\n");
        folder.write("types.qx", memory::worldTypes);
    }

    Console console;
    WorkingFolder folder;
};

void* treeOf(int scene) {
    return IDataHandlerImpl::getOrbel(scene, false);
}

} // namespace

TEST_F(OutOfMemoryInHandlerTrees, InitReadsTheRestWhenItIsCalledAgain) {
    // What is read stays for the process, so each call gets a little further. The console takes memory too.
    DataSetVPrintfFunction(nullptr);
    for (long long number = 1, calls = 0;; number += 3) {
        ASSERT_LT(++calls, 1'000);
        const memory::Fault fault(number, memory::Shortage::lasting);
        try {
            IDataHandlerImpl::init();
            break;
        } catch (const std::bad_alloc&) {
        }
    }
    EXPECT_EQ(IDataHandlerImpl::IsMultiOrbel(), 1);
    EXPECT_FALSE(IDataHandlerImpl::IsRefreshAlways());
    wchar_t letter = L'a';
    EXPECT_TRUE(IDataHandlerImpl::toUpper(&letter));
    EXPECT_EQ(letter, L'A');
    PluginPreSets* presets = IDataHandlerImpl::getPreSets("a plug-in with presets");
    ASSERT_NE(presets, nullptr);
    EXPECT_EQ(presets->getNumRows(), 1);
    EXPECT_EQ(DataObject::getTypesTable()->getNumTypes(), 3);
}

TEST_F(OutOfMemoryInHandlerTrees, RefreshKeepsTheTablesUnlessItIsDone) {
    IDataHandlerImpl::init();
    Plugin plugin;
    plugin.init(1);
    plugin.setUseConvTable(1);
    plugin.setConvTableNmae(Text("colours of some length"));
    plugin.registerHandler("colour", nullptr, 0);
    survivesAnywhere([&](const Operate& operate) {
        console.takeOutput();
        operate([] { IDataHandlerImpl::RefreshConvTables(); });
        plugin.setFieldData(Text("colour"), Text("red"));
        EXPECT_TRUE(plugin.hasHeardLongText);
        console.takeOutput();
    });
    plugin.unregisterHandler();
}

TEST_F(OutOfMemoryInHandlerTrees, ATreeThatCannotBeMadeIsNull) {
    IDataHandlerImpl::init();
    for (int scene = 1, number = 1; scene < 40; ++scene, ++number) {
        void* tree = nullptr;
        {
            const memory::Fault fault(number, memory::Shortage::passing);
            EXPECT_NO_THROW(tree = treeOf(-scene - 1'000'000'000));
            if (!fault.happened()) {
                EXPECT_NE(tree, nullptr);
                return;
            }
        }
        if (tree) {
            EXPECT_EQ(treeOf(-scene - 1'000'000'000), tree);
        }
    }
}

TEST_F(OutOfMemoryInHandlerTrees, APluginRegistersWhollyOrNotAtAll) {
    IDataHandlerImpl::init();
    auto* const tree = static_cast<Orbel*>(treeOf(1));
    tree->executeCommand(Text("node:stage/string:title = a title"), 0);
    for (const char* path : {"stage/title", "stage/title[4]", "nowhere", "stage/string:built by a plug-in"})
        survivesAnywhere([&](const Operate& operate) {
            Plugin plugin;
            operate([&] {
                plugin.init(1);
                plugin.registerHandler(path, nullptr, 0);
            });
            if (plugin.getField()) {
                EXPECT_EQ(plugin.getField()->getHandlerByName(Text("plug-in")), plugin.getDataHandler());
            }
            plugin.init(1);
            plugin.registerHandler(path, nullptr, 0);
            ASSERT_NE(plugin.getField(), nullptr);
            plugin.calls = 0;
            plugin.getField()->setData("a change");
            EXPECT_EQ(plugin.calls, 1);
            // The marker keeps built fields.
            deleteSubtree(*tree);
            tree->executeCommand(Text("node:stage/string:title = a title"), 0);
        });
    deleteSubtree(*tree);
}

TEST_F(OutOfMemoryInHandlerTrees, APluginRefreshesAndStores) {
    IDataHandlerImpl::init();
    Plugin plugin;
    plugin.init(1);
    plugin.registerHandler("values", nullptr, 0);
    plugin.getField()->setSize(3);
    survivesAnywhere([&](const Operate& operate) {
        operate([&] {
            plugin.setFieldData(Text("values"), Text("a text that is longer than before"), 1);
            plugin.refresh();
        });
        plugin.calls = 0;
        plugin.refresh();
        EXPECT_EQ(plugin.calls, 1);
    });
    plugin.unregisterHandler();
}

TEST_F(OutOfMemoryInHandlerTrees, AHostPluginRegistersWhollyOrNotAtAll) {
    IDataHandlerImpl::init();
    auto* const tree = static_cast<Orbel*>(treeOf(1));
    survivesAnywhere([&](const Operate& operate) {
        KorPlugin plugin;
        SCENE scene = 1;
        plugin.setLocalScene(scene);
        operate([&] {
            plugin.init(1);
            plugin.Register("a field that the plug-in names", 0);
        });
        plugin.init(1);
        plugin.Register("a field that the plug-in names", 0);
        ASSERT_NE(plugin.getField(), nullptr);
        plugin.calls = 0;
        plugin.getField()->setData("a change");
        EXPECT_EQ(plugin.calls, 1);
        operate([&] { plugin.Unregister(); });
        plugin.Unregister();
        EXPECT_EQ(tree->getNumFields(), 0);
    });
}

TEST_F(OutOfMemoryInHandlerTrees, APluginGoesWithoutMemory) {
    IDataHandlerImpl::init();
    auto* const tree = static_cast<Orbel*>(treeOf(1));
    survivesAnywhere([&](const Operate& operate) {
        auto plugin = std::make_unique<Plugin>();
        auto hostPlugin = std::make_unique<KorPlugin>();
        SCENE scene = 1;
        hostPlugin->setLocalScene(scene);
        plugin->init(1);
        hostPlugin->init(1);
        plugin->registerHandler("one", nullptr, 0);
        hostPlugin->Register("two", 0);
        EXPECT_TRUE(operate([&] {
            plugin->unregisterHandler();
            plugin.reset();
            hostPlugin.reset();
        }));
        EXPECT_EQ(tree->getNumFields(), 0);
    });
}
