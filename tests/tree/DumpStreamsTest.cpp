#include <support/SceneTree.h>
#include <support/TemporaryFolder.h>

#include <gtest/gtest.h>

#include <algorithm>
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

TEST(DumpStreams, BuffersOfHostsAreGivenTheTextThatAStringStreamHolds) {
    SceneTree tree;
    for (int number = 0; number < 700; ++number) {
        const std::string path = (number % 40 == 0 ? "node:n" : "string:s") + std::to_string(number);
        if (DataField* field = tree.scene->getField(Text(path), 0, 1); number % 40 != 0)
            field->setData(std::string(static_cast<std::size_t>(number), 'x').c_str());
    }
    tree.at("scene/s3", 1)->setSize(3);
    Counting<std::stringbuf> buffer;
    std::ostream ofHost(&buffer);
    std::ostringstream os;
    for (std::ostream* out : {&ofHost, static_cast<std::ostream*>(&os)}) {
        *out << std::setw(9) << std::setfill('.');
        tree.root.dump(*out, 1, 2, 1);
        EXPECT_EQ(out->fill(), '\t');
        EXPECT_EQ(out->width(), 0);
    }
    EXPECT_EQ(os.str(), buffer.str());
    EXPECT_NE(os.str().find("\n\t\ts3[1-2]=,;\n\t\ts30="), std::string::npos);
}

TEST(DumpStreams, ADumpAtAnyLevelIsIndentedByIt) {
    SceneTree tree;
    tree.title->setData("news");
    for (const int level : {-5, 0, 3, 999, 1'000, 5'000}) {
        std::ostringstream os;
        DataBaseType::setIndent(level);
        tree.scene->dump(os, -1, -1, 1);
        EXPECT_EQ(DataBaseType::getIndent(), level);
        const auto tabs = [](int count) { return std::string(static_cast<std::size_t>(std::max(count, 0)), '\t'); };
        EXPECT_EQ(os.str(), tabs(level) + "scene ={\n" + tabs(level + 1) + "title=news;\n" + tabs(level) + "}");
    }
    DataBaseType::setIndent(0);
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
