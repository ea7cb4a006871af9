#include <orbel/orbel.h>

#include <support/Console.h>
#include <support/Environment.h>
#include <support/RecordingPlugin.h>
#include <support/Text.h>
#include <support/TreeCleanup.h>
#include <support/WorkingFolder.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>

/// What plug-ins do inside their callbacks.

namespace {

/// Plug-ins A, B and C on the field "title"; the tree also holds a list of two values.
class PlugInReentrancy : public testing::Test {
protected:
    PlugInReentrancy() {
        clearTypeVariables();
        tree->addField(title, 0);
        tree->addField(list, 0);
        list->setSize(2);
        for (RecordingPlugin* plugin : {a.get(), b.get(), c.get()}) {
            plugin->init(0);
            plugin->registerHandler("title", nullptr, 0);
        }
    }

    std::unique_ptr<RecordingPlugin> make(const std::string& name) {
        return std::make_unique<RecordingPlugin>(diary, name);
    }

    void moveToList(RecordingPlugin& plugin) {
        plugin.registerHandler(list);
        diary.take();
    }

    Console console;
    WorkingFolder folder;
    Diary diary;
    Orbel* tree = IDataHandlerImpl::getOrbel(0, false);
    DataValue* title = new DataValue(Text("title"));
    DataValue* list = new DataValue(Text("list"));
    std::unique_ptr<RecordingPlugin> a = make("A");
    std::unique_ptr<RecordingPlugin> b = make("B");
    std::unique_ptr<RecordingPlugin> c = make("C");
};

} // namespace

TEST_F(PlugInReentrancy, UnregistersAndTheNextIsSkippedOnce) {
    a->onceThen([&] { a->unregisterHandler(); });
    title->setData("news");
    EXPECT_EQ(diary.take(), "A title=news, C title=news");
    EXPECT_EQ(a->getField(), nullptr);
    title->setData("late news");
    EXPECT_EQ(diary.take(), "B title=late news, C title=late news");
}

TEST_F(PlugInReentrancy, UnregistersAsTheOnlyOneOfItsField) {
    tree->addField(new DataValue(Text("single")), 0);
    a->registerHandler("single", nullptr, 0);
    a->onceThen([&] { a->unregisterHandler(); });
    tree->setFieldData(Text("single"), Text("news"));
    EXPECT_EQ(diary.take(), "A single=news");
    EXPECT_EQ(tree->getField(Text("single"), 0, 1), nullptr);
}

TEST_F(PlugInReentrancy, DestroysItself) {
    a->onceThen([&] { a.reset(); });
    title->setData("news");
    EXPECT_EQ(diary.take(), "A title=news, C title=news");
    EXPECT_EQ(title->getNumHandlers(), 2);
}

TEST_F(PlugInReentrancy, DestroysItselfOnARange) {
    moveToList(*a);
    a->onceThen([&] { a.reset(); });
    list->setData("last", 1);
    EXPECT_EQ(diary.take(), "A list= |last 1-1");
    EXPECT_EQ(list->getNumHandlers(), 0);
}

TEST_F(PlugInReentrancy, DestroysItselfOnAConvertedValue) {
    a->setUseConvTable(1);
    a->onceThen([&] { a.reset(); });
    title->setData("news");
    EXPECT_EQ(diary.take(), "A title=, C title=news");
}

TEST_F(PlugInReentrancy, DestroysItselfOnAConvertedRange) {
    moveToList(*a);
    a->setUseConvTable(1);
    a->onceThen([&] { a.reset(); });
    list->setData("last", 1);
    EXPECT_EQ(diary.take(), "A list=| 1-1");
}

TEST_F(PlugInReentrancy, DestroysItselfOnAType) {
    a->onceThen([&] { a.reset(); });
    title->fireOnTypeChange(Text("City"));
    EXPECT_EQ(diary.take(), "A title:City, C title:City");
}

TEST_F(PlugInReentrancy, DestroysItselfOnADump) {
    a->onceThen([&] { a.reset(); });
    title->dumpHandlers();
    EXPECT_EQ(diary.take(), "A dump, C dump");
}

TEST_F(PlugInReentrancy, DestroysItselfWhenItRefreshes) {
    title->setData("news");
    diary.take();
    b->onceThen([&] { b.reset(); });
    b->refresh();
    EXPECT_EQ(diary.take(), "A title=news, B title=news");
    EXPECT_EQ(title->getNumHandlers(), 2);
}

TEST_F(PlugInReentrancy, DestroysItselfWhenItRegisters) {
    list->setData("one", 0);
    a->onceThen([&] { a.reset(); });
    a->registerHandler("list[4]", nullptr, 0);
    EXPECT_EQ(diary.take(), "A list=one| 0-1");
    EXPECT_EQ(list->getNumHandlers(), 0);
    EXPECT_EQ(list->getSize(), 2);
}

TEST_F(PlugInReentrancy, DestroysItselfWhenItMoves) {
    list->setData("one", 0);
    a->onceThen([&] { a.reset(); });
    a->registerHandler(list);
    EXPECT_EQ(diary.take(), "A list=one| 0-1");
    EXPECT_EQ(list->getNumHandlers(), 0);
}

TEST_F(PlugInReentrancy, DestroysItselfInsideAStoreOfItsOwn) {
    a->onceThen([&] {
        a->onceThen([&] { a.reset(); });
        a->setFieldData(Text("title"), Text("late news"));
    });
    a->setFieldData(Text("title"), Text("news"));
    EXPECT_EQ(diary.take(), "A title=news, A title=late news, C title=late news, C title=late news");
}

TEST_F(PlugInReentrancy, DestroysTheTreeItRegistersIn) {
    auto root = Tree<Orbel>(new Orbel(Text("root")));
    auto* value = new DataValue(Text("value"));
    root->addField(value, 0);
    value->setData("news");
    a->onceThen([&] { root.reset(); });
    a->registerHandler("value[2-4]", root.get(), 0);
    EXPECT_EQ(diary.take(), "A value=news");
    EXPECT_EQ(a->getField(), nullptr);
    EXPECT_EQ(a->getOffset(), 0);
}

TEST_F(PlugInReentrancy, DestroysTheField) {
    a->onceThen([&] {
        tree->removeField(Text("title"), 0);
        delete title;
    });
    title->setData("news");
    EXPECT_EQ(diary.take(), "A title=news");
    for (RecordingPlugin* plugin : {a.get(), b.get(), c.get()})
        EXPECT_EQ(plugin->getField(), nullptr);
}

TEST_F(PlugInReentrancy, DestroysALaterOne) {
    a->onceThen([&] { b.reset(); });
    title->setData("news");
    EXPECT_EQ(diary.take(), "A title=news, C title=news");
}

TEST_F(PlugInReentrancy, DestroysAnEarlierOne) {
    b->onceThen([&] { a.reset(); });
    title->setData("news");
    EXPECT_EQ(diary.take(), "A title=news, B title=news");
    title->setData("late news");
    EXPECT_EQ(diary.take(), "B title=late news, C title=late news");
}

TEST_F(PlugInReentrancy, DestroysAll) {
    a->onceThen([&] {
        c.reset();
        b.reset();
        a.reset();
    });
    title->setData("news");
    EXPECT_EQ(diary.take(), "A title=news");
    EXPECT_EQ(title->getNumHandlers(), 0);
}

TEST_F(PlugInReentrancy, DestroysAllOthersThatAreBeingTold) {
    // A, B and C are each inside a callback when C destroys them all.
    a->onceThen([&] { title->setData("second"); });
    b->onceThen([&] { title->setData("third"); });
    c->onceThen([&] {
        a.reset();
        b.reset();
        c.reset();
    });
    title->setData("first");
    EXPECT_EQ(diary.take(), "A title=first, A title=second, B title=second, A title=third, B title=third, "
                            "C title=third");
    EXPECT_EQ(title->getNumHandlers(), 0);
}

TEST_F(PlugInReentrancy, UnregistersALaterOne) {
    a->onceThen([&] { b->unregisterHandler(); });
    title->setData("news");
    EXPECT_EQ(diary.take(), "A title=news, C title=news");
    EXPECT_EQ(b->getField(), nullptr);
}

TEST_F(PlugInReentrancy, UnregistersAnEarlierOneAndTheNextIsSkippedOnce) {
    b->onceThen([&] { a->unregisterHandler(); });
    title->setData("news");
    EXPECT_EQ(diary.take(), "A title=news, B title=news");
    title->setData("late news");
    EXPECT_EQ(diary.take(), "B title=late news, C title=late news");
}

TEST_F(PlugInReentrancy, DestroysTheParentOfTheField) {
    auto scene = std::make_unique<DataStructure>(Text("scene"));
    auto caption = std::make_unique<DataValue>(Text("caption"));
    scene->addField(caption.get(), 0);
    for (RecordingPlugin* plugin : {a.get(), b.get()})
        plugin->registerHandler(caption.get());
    a->onceThen([&] { scene.reset(); });
    caption->setData("news");
    EXPECT_EQ(diary.take(), "A caption=news, B caption=news");
    EXPECT_EQ(a->getField(), caption.get());
    EXPECT_EQ(caption->getParent(), nullptr);
}

TEST_F(PlugInReentrancy, RegistersElsewhere) {
    list->setData("one", 0);
    a->onceThen([&] { a->registerHandler("list[1-3]", nullptr, 0); });
    title->setData("news");
    EXPECT_EQ(diary.take(), "A title=news, A list=one| 0-1, C title=news");
    EXPECT_EQ(a->getField(), list);
    EXPECT_EQ(a->getOffset(), 1);
    EXPECT_EQ(list->getSize(), 3);
}

TEST_F(PlugInReentrancy, MovesToAnotherFieldOnAType) {
    a->onceThen([&] { a->registerHandler(list); });
    title->fireOnTypeChange(Text("City"));
    EXPECT_EQ(diary.take(), "A title:City, C title:City");
    EXPECT_EQ(a->getField(), list);
    EXPECT_EQ(title->getNumHandlers(), 2);
}

TEST_F(PlugInReentrancy, SetsTheSameField) {
    a->onceThen([&] { a->setFieldData(Text("title"), Text("late news")); });
    title->setData("news");
    EXPECT_EQ(diary.take(), "A title=news, A title=late news, B title=late news, C title=late news, "
                            "B title=late news, C title=late news");
}

TEST_F(PlugInReentrancy, SetsTheSameFieldUnderItsText) {
    std::string seen;
    a->onceThen([&] {
        title->setData("NEWS");
        seen = a->lastValue();
    });
    title->setData("news");
    EXPECT_EQ(seen, "NEWS");
}

TEST_F(PlugInReentrancy, KeepsItsConvertedTextWhenItSetsTheSameField) {
    folder.write("QX_ConvTables.csv", "__TABLE__,Sky\n1,one\n2,two\n");
    IDataHandlerImpl::init();
    a->setUseConvTable(1);
    a->setConvTableNmae(Text("Sky"));
    std::string seen;
    a->onceThen([&] {
        const char* told = a->lastValue();
        title->setData("2");
        IDataHandlerImpl::RefreshConvTables();
        seen = told;
    });
    title->setData("1");
    EXPECT_EQ(seen, "one");
}

TEST_F(PlugInReentrancy, SetsTheSameValueInItsFirstNotice) {
    // The first delivery is over only when the plug-in returns, so another one inside it counts as the first too.
    a->setNotifyOnValueChange(1);
    a->registerHandler(title);
    a->onceThen([&] { title->setData("news"); });
    title->setData("news");
    EXPECT_EQ(diary.take(), "B title=news, C title=news, A title=news, B title=news, C title=news, A title=news");
    a->onceThen([&] { title->setData("late news"); });
    title->setData("late news");
    EXPECT_EQ(diary.take(), "B title=late news, C title=late news, A title=late news, B title=late news, "
                            "C title=late news");
}

TEST_F(PlugInReentrancy, Refreshes) {
    a->onceThen([&] { a->refresh(); });
    title->setData("news");
    EXPECT_EQ(diary.takeNames(), "AABCBC");
}

TEST_F(PlugInReentrancy, AddsAnother) {
    const auto d = make("D");
    a->onceThen([&] {
        d->init(0);
        d->registerHandler("title", nullptr, 0);
    });
    title->setData("news");
    EXPECT_EQ(diary.takeNames(), "AABCDBCD");
}

TEST_F(PlugInReentrancy, ReadsTheTablesAnew) {
    folder.write("QX_ConvTables.csv", "__TABLE__,Sky\n1,one\n2,two\n");
    IDataHandlerImpl::init();
    for (RecordingPlugin* plugin : {a.get(), b.get()}) {
        plugin->setUseConvTable(1);
        plugin->setConvTableNmae(Text("Sky"));
        plugin->registerHandler(list);
    }
    a->onceThen([&] {
        folder.write("QX_ConvTables.csv", "__TABLE__,Sky\n1,uno\n2,due\n");
        IDataHandlerImpl::RefreshConvTables();
    });
    list->setData("1", 0);
    EXPECT_EQ(diary.take(), "A list=one| 0-0, B list=uno| 0-0");
}

TEST_F(PlugInReentrancy, AsksForTheStartAgain) {
    a->onceThen([] { IDataHandlerImpl::init(); });
    title->setData("news");
    EXPECT_EQ(diary.takeNames(), "ABC");
    EXPECT_EQ(IDataHandlerImpl::IsMultiOrbel(), 0);
}
