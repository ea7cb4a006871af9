#include <support/SceneTree.h>
#include <support/TemporaryFolder.h>

#include <gtest/gtest.h>

#include <fstream>
#include <iomanip>
#include <sstream>
#include <string>

namespace {

/// A stream buffer of a host, which counts how often it is to pass its text on.
template <class Buffer>
class Counting : public Buffer {
public:
    int flushes = 0;

protected:
    int sync() override {
        ++flushes;
        return Buffer::sync();
    }
};

template <class Write>
int flushesOf(Write write) {
    Counting<std::stringbuf> buffer;
    std::ostream os(&buffer);
    write(os);
    return buffer.flushes;
}

std::string textOf(const std::string& path) {
    std::ifstream file(path);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

} // namespace

TEST(DumpStreams, BuffersOfHostsAreFlushedBehindEachValueTableAndArray) {
    SceneTree tree;
    EXPECT_EQ(flushesOf([&](std::ostream& os) { tree.scene->dump(os, -1, -1, 1); }), 1);
    EXPECT_EQ(flushesOf([&](std::ostream& os) { tree.root.dump(os, -1, -1, 1); }), 8);
}

TEST(DumpStreams, AFileHoldsAllOfADumpOnceItIsWritten) {
    const TemporaryFolder folder;
    SceneTree tree;
    tree.title->setData("news");
    std::ofstream os(folder.path("dump.txt"), std::ios::binary);
    tree.scene->dump(os, -1, -1, 1);
    EXPECT_EQ(textOf(folder.path("dump.txt")), "scene ={\n\ttitle=news;\n}");
    tree.title->dump(os, -1, -1, 1);
    EXPECT_EQ(textOf(folder.path("dump.txt")), "scene ={\n\ttitle=news;\n}title=news;");
    tree.scene->dumpInternal(os, -1, -1);
    EXPECT_EQ(textOf(folder.path("dump.txt")), "scene ={\n\ttitle=news;\n}title=news;string:title=news;\n");
}

TEST(DumpStreams, AFieldThatDumpsToAnotherStreamFlushesThatToo) {
    class Logged : public DataValue {
    public:
        Logged(char* name, std::ostream& log) : DataValue(name), m_log(log) {}
        using DataValue::dump;
        void dump(std::ostream& os, int first, int last, int withName) override {
            DataValue::dump(m_log, first, last, withName);
            DataValue::dump(os, first, last, withName);
        }

    private:
        std::ostream& m_log;
    };
    SceneTree tree;
    Counting<std::stringbuf> buffer;
    std::ostream log(&buffer);
    tree.scene->addField(new Logged(Text("extra"), log), 0);
    std::ostringstream os;
    tree.scene->dump(os, -1, -1, 1);
    EXPECT_EQ(os.str(), "scene ={\n\textra= ;\n\ttitle= ;\n}");
    EXPECT_EQ(buffer.str(), "extra= ;");
    EXPECT_EQ(buffer.flushes, 1);
}

TEST(DumpStreams, AWidthPadsTheNameOfAValueAlone) {
    SceneTree tree;
    tree.title->setData("news");
    std::ostringstream named;
    named << std::setw(7) << std::setfill('.');
    tree.title->dump(named, -1, -1, 1);
    EXPECT_EQ(named.str(), "..title=news;");
    EXPECT_EQ(named.width(), 0);
    std::ostringstream bare;
    bare << std::setw(7) << std::setfill('.');
    tree.title->dump(bare, -1, -1, 0);
    EXPECT_EQ(bare.str(), ".......news;");
}
