#include "TextLanguages.h"

#include "GrowthTools.h"
#include "Memory.h"
#include "OwnedTree.h"
#include "Results.h"
#include "Silence.h"

#include "../orbel/tables/AllPluginPreSets.h"
#include "../orbel/tables/ConversionTables.h"

#include <orbel/orbel.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <time.h>
#include <unistd.h>
#include <unordered_map>

namespace {

namespace fs = std::filesystem;
using Pass = TextLanguage::Pass;

constexpr std::size_t fieldCount = 1'000;
constexpr std::size_t rowCount = 10'000;

/// What is measured must leave a trace, or the compiler drops it.
volatile std::size_t sink = 0;

void scan(std::string_view text, std::string_view separators) {
    std::size_t found = 0;
    for (const char separator : separators) {
        const char* at = text.data();
        const char* const end = at + text.size();
        while ((at = static_cast<const char*>(std::memchr(at, separator, static_cast<std::size_t>(end - at))))) {
            ++at;
            ++found;
        }
    }
    sink = sink + found;
}

std::function<void()> scanOf(std::shared_ptr<std::string> text, std::string_view separators) {
    return [text = std::move(text), separators] { scan(*text, separators); };
}

/// 1,000 values in ten nodes below "scene", and their paths.
struct Scene {
    Scene() {
        DataStructure& scene = OwnedTree::addNode(tree.root, "scene");
        for (std::size_t item = 0; item < fieldCount; ++item) {
            const std::string node = numbered("node", item / 100);
            if (item % 100 == 0)
                nodes.push_back(&OwnedTree::addNode(scene, node));
            names.push_back(numbered("field", item % 100));
            OwnedTree::addValue(*nodes.back(), names.back());
            paths.push_back("scene/" + node + '/' + names.back());
            texts.push_back(numbered("value ", item));
        }
    }

    /// A text with an entry for each field, which is told its path, the next path and its value.
    template <class Entry>
    std::shared_ptr<std::string> listOf(Entry entry) const {
        auto list = std::make_shared<std::string>();
        for (std::size_t item = 0; item < fieldCount; ++item)
            *list += entry(paths[item], paths[(item + 1) % fieldCount], texts[item]);
        return list;
    }

    OwnedTree tree;
    std::vector<DataStructure*> nodes;
    std::vector<std::string> names;
    std::vector<std::string> paths;
    std::vector<std::string> texts;
};

Pass setCommands() {
    const auto scene = std::make_shared<Scene>();
    const auto list =
        scene->listOf([](const auto& path, const auto&, const auto& text) { return path + " = " + text + "; "; });
    return {list->size(), fieldCount, [=] { scene->tree.root.parseCommand(chars(*list), 0); }, scanOf(list, ";={}\""),
            [=] {
                for (std::size_t item = 0; item < fieldCount; ++item)
                    scene->tree.root.setFieldData(chars(scene->paths[item]), chars(scene->texts[item]));
            }};
}

/// "scene = {node0 = {field0 = value 0; ...}; ...}"
Pass structuredCommand() {
    const auto scene = std::make_shared<Scene>();
    auto list = std::make_shared<std::string>("scene = {");
    for (std::size_t item = 0; item < fieldCount; ++item) {
        if (item % 100 == 0)
            *list += numbered("node", item / 100) + " = {";
        *list += numbered("field", item % 100) + " = " + scene->texts[item] + (item % 100 == 99 ? "}; " : "; ");
    }
    *list += '}';
    return {list->size(), fieldCount, [=] { scene->tree.root.parseCommand(chars(*list), 0); }, scanOf(list, ";={}\""),
            [=] {
                for (std::size_t item = 0; item < fieldCount; ++item)
                    scene->nodes[item / 100]->setFieldData(chars(scene->names[item % 100]), chars(scene->texts[item]));
            }};
}

Pass copyCommands() {
    const auto scene = std::make_shared<Scene>();
    const auto list =
        scene->listOf([](const auto& path, const auto& next, const auto&) { return path + " = " + next + "; "; });
    return {list->size(), fieldCount, [=] { scene->tree.root.parseCopyCommand(chars(*list)); }, scanOf(list, ";={}\""),
            [=] {
                for (std::size_t item = 0; item < fieldCount; ++item) {
                    DataField* target = scene->tree.root.getField(chars(scene->paths[item]), 0, 1);
                    target->copyData(scene->tree.root.getField(chars(scene->paths[(item + 1) % fieldCount]), 0, 1), 0,
                                     0, 1);
                }
            }};
}

/// Each field of the second half follows one of the first.
Pass linkCommands() {
    constexpr std::size_t half = fieldCount / 2;
    const auto scene = std::make_shared<Scene>();
    auto list = std::make_shared<std::string>();
    for (std::size_t item = 0; item < half; ++item)
        *list += scene->paths[half + item] + " = " + scene->paths[item] + "; ";
    return {list->size(), half, [=] { scene->tree.root.parseLinkCommand(chars(*list)); }, scanOf(list, ";={}\"~"),
            [=] {
                scene->tree.root.ClearLinks();
                for (std::size_t item = 0; item < half; ++item) {
                    char* const source = chars(scene->paths[item]);
                    char* const target = chars(scene->paths[half + item]);
                    scene->tree.root.addLink(source, target);
                    scene->tree.root.getField(target, 0, 1)->copyData(scene->tree.root.getField(source, 0, 1), 0, 0, 1);
                }
            }};
}

Pass clearCommands() {
    const auto scene = std::make_shared<Scene>();
    const auto list = scene->listOf([](const auto& path, const auto&, const auto&) { return path + "; "; });
    return {list->size(), fieldCount, [=] { scene->tree.root.executeClearCommand(chars(*list)); }, scanOf(list, ";["),
            [=] {
                for (std::string& path : scene->paths)
                    scene->tree.root.getField(chars(path), 0, 0)->clearData();
            }};
}

/// A scene with expressions of ten references each, in texts such as "Text $(scene/node0/field0) 5 ".
struct Expressions {
    static constexpr std::size_t references = 10;
    static constexpr std::size_t count = 20;

    Expressions() {
        for (std::size_t item = 0; item < fieldCount; ++item)
            scene.tree.root.setFieldData(chars(scene.paths[item]), chars(scene.texts[item]));
        for (std::size_t at = 0; at < count; ++at) {
            std::string text;
            for (std::size_t item = at * references; item < (at + 1) * references; ++item)
                text += "Text $(" + scene.paths[item] + ") " + numbered("", item) + ' ';
            *all += text;
            texts.push_back(text);
            expressions[at].setHostField(&scene.tree.root, nullptr);
            expressions[at].parse(chars(texts.back()));
            for (std::size_t item = 0; item < references; ++item) {
                held[at][item] = scene.tree.root.getField(chars(scene.paths[at * references + item]), 0, 1);
                held[at][item]->ref(this, nullptr);
            }
        }
    }

    Scene scene;
    std::vector<std::string> texts;
    std::shared_ptr<std::string> all = std::make_shared<std::string>();
    /// What is kept of the same references and texts without an expression.
    std::array<std::array<DataField*, references>, count> held = {};
    std::array<std::array<std::string, references>, count> literals;
    std::array<std::array<std::string, references>, count> names;
    // Behind the scene, because they hold references on its fields.
    std::array<DataExpression, count> expressions;
};

Pass parseExpressions() {
    const auto made = std::make_shared<Expressions>();
    return {made->all->size(), Expressions::count * Expressions::references,
            [=] {
                for (std::size_t at = 0; at < Expressions::count; ++at)
                    made->expressions[at].parse(chars(made->texts[at]));
            },
            scanOf(made->all, "$()["),
            [=] {
                // By expressions, as parsing one lets go of all that it held before.
                for (std::size_t at = 0; at < Expressions::count; ++at) {
                    for (std::size_t item = 0; item < Expressions::references; ++item)
                        made->held[at][item]->unref(made.get(), nullptr);
                    for (std::size_t item = 0; item < Expressions::references; ++item) {
                        std::string& path = made->scene.paths[at * Expressions::references + item];
                        DataField*& field = made->held[at][item];
                        field = made->scene.tree.root.getField(chars(path), 0, 1);
                        field->ref(made.get(), nullptr);
                        made->literals[at][item] = "Text ";
                        made->names[at][item] = path;
                    }
                }
            }};
}

Pass evaluateExpressions() {
    const auto made = std::make_shared<Expressions>();
    const auto values = std::make_shared<std::string>();
    std::size_t bytes = 0;
    for (DataExpression& expression : made->expressions)
        bytes += std::strlen(expression.evaluate(0));
    return {bytes,
            Expressions::count * Expressions::references,
            [=] {
                for (DataExpression& expression : made->expressions)
                    sink = sink + static_cast<unsigned char>(*expression.evaluate(0));
            },
            [=] {
                values->clear();
                for (std::size_t item = 0; item < Expressions::count * Expressions::references; ++item)
                    values->append("Text ").append(made->scene.texts[item]).append(" 123 ");
            },
            {}};
}

/// A file in a folder of its own, which goes with it.
class BenchFile {
public:
    BenchFile(const char* name, const std::string& text)
        : m_folder(fs::temp_directory_path() / numbered("orbel-texts-", static_cast<std::size_t>(getpid()))) {
        fs::create_directories(m_folder);
        m_path = (m_folder / name).string();
        std::ofstream(m_path, std::ios::binary) << text;
    }
    BenchFile(const BenchFile&) = delete;
    BenchFile& operator=(const BenchFile&) = delete;
    ~BenchFile() { fs::remove(m_path); }

    std::string folder() const { return m_folder.string(); }
    const std::string& path() const { return m_path; }

private:
    fs::path m_folder;
    std::string m_path;
};

void addField(DataObjectType& type, const char* name, const char* value, int size) {
    auto* field = new DataObjectField;
    field->setType(chars("string"));
    field->setName(chars(std::string(name)));
    field->setDefaultValue(chars(std::string(value)));
    field->setSize(size);
    type.addField(field);
}

Pass typeFile() {
    DataObject::init();
    auto text = std::make_shared<std::string>();
    auto names = std::make_shared<std::vector<std::string>>();
    for (std::size_t item = 0; item < rowCount; ++item) {
        names->push_back(numbered("Label", item));
        *text += names->back() + " = {\n  string title=Weather report; // shown on top\n"
                                 "  string colour=white;\n  string values[3];\n};\n";
    }
    const auto file = std::make_shared<BenchFile>("labels.qx", *text);
    const auto renew = [] {
        delete DataObject::s_tTypes;
        DataObject::s_tTypes = nullptr;
    };
    return {text->size(), rowCount,
            [=] {
                renew();
                DataObject::readTypesTable(chars(std::string(file->path())));
            },
            scanOf(text, "/;={}[]#"),
            [=] {
                renew();
                DataObject::s_tTypes = new DataObjectTypesTable;
                for (std::string& name : *names) {
                    auto* type = new DataObjectType;
                    type->setName(chars(name));
                    addField(*type, "title", "Weather report", 1);
                    addField(*type, "colour", "white", 1);
                    addField(*type, "values", "", 3);
                    DataObject::s_tTypes->addType(type);
                }
            }};
}

/// The rows of a table file, with what is stored of them.
struct Rows {
    explicit Rows(std::string_view header) : text(std::make_shared<std::string>(header)) {}

    void add(std::vector<std::string> fields) {
        for (std::size_t field = 0; field < fields.size(); ++field)
            *text += (field == 0 ? "" : ",") + fields[field];
        *text += '\n';
        all.push_back(std::move(fields));
    }

    std::shared_ptr<std::string> text;
    std::vector<std::vector<std::string>> all;
};

Pass conversionFile() {
    const auto rows = std::make_shared<Rows>("__TABLE__,Table\n");
    for (std::size_t item = 0; item < rowCount; ++item)
        rows->add({numbered("key", item), numbered("picture number ", item) + ".png"});
    const auto file = std::make_shared<BenchFile>("QX_ConvTables.csv", *rows->text);
    return {rows->text->size(), rowCount,
            [=] {
                const Silence silence;
                const ConversionTables tables(file->folder());
            },
            scanOf(rows->text, ",\n"),
            [=] {
                std::unordered_map<std::string, std::string> table;
                for (const auto& row : rows->all)
                    table.try_emplace(row[0], row[1]);
            }};
}

Pass presetsFile() {
    const auto rows = std::make_shared<Rows>("__PLUGIN__,Clock\nName,Format,Colour,Size\n");
    for (std::size_t item = 0; item < rowCount; ++item)
        rows->add({numbered("Preset", item), "HH:MM:SS", "white", "12"});
    const auto file = std::make_shared<BenchFile>("QX_PreSets.csv", *rows->text);
    return {rows->text->size(), rowCount,
            [=] {
                const Silence silence;
                const AllPluginPreSets presets(file->folder());
            },
            scanOf(rows->text, ",\n"),
            [=] {
                std::vector<std::vector<std::string>> stored;
                for (const auto& row : rows->all)
                    stored.push_back(row);
            }};
}

/// Is told the values of a field, converted by a table.
class Listener : public IDataHandler {
public:
    explicit Listener(DataField& field) {
        init(0);
        setUseConvTable(1);
        setConvTableNmae(chars("Table"));
        registerHandler(&field);
    }

    char* getPluginName() override { return chars(m_name); }
    int getPluginType() override { return 0; }
    char* getPluginFolder() override { return chars(m_name); }
    void onDataChange(char* /*fieldName*/, char* value) override { sink = sink + static_cast<unsigned char>(*value); }

private:
    std::string m_name = "bench";
};

Pass conversion() {
    struct Told {
        OwnedTree tree;
        DataValue& value = OwnedTree::addValue(tree.root, "value");
        Listener listener{value};
    };
    std::string rows = "__TABLE__,Table\n";
    auto keys = std::make_shared<std::vector<std::string>>();
    auto table = std::make_shared<std::unordered_map<std::string, std::string>>();
    std::size_t bytes = 0;
    for (std::size_t item = 0; item < fieldCount; ++item) {
        keys->push_back(numbered("key", item));
        table->emplace(keys->back(), numbered("picture number ", item) + ".png");
        rows += keys->back() + ',' + table->at(keys->back()) + '\n';
        bytes += keys->back().size() + table->at(keys->back()).size();
    }
    {
        const BenchFile file("QX_ConvTables.csv", rows);
        const Silence silence;
        setenv("QX_OBJECTS_DIR", file.folder().c_str(), 1);
        IDataHandlerImpl::RefreshConvTables();
        unsetenv("QX_OBJECTS_DIR");
    }
    const auto told = std::make_shared<Told>();
    const auto copy = std::make_shared<std::string>();
    return {bytes,
            fieldCount,
            [=] {
                for (const std::string& key : *keys)
                    told->value.setData(key.c_str());
            },
            [=] {
                for (const std::string& key : *keys)
                    *copy = table->at(key);
            },
            {}};
}

/// 100,000 leaves in 316 nodes, and the text that they are dumped as.
struct Dump {
    Dump() {
        constexpr std::size_t leaves = 100'000;
        constexpr std::size_t inNode = 317;
        DataStructure* node = nullptr;
        for (std::size_t leaf = 0; leaf < leaves; ++leaf) {
            if (leaf % inNode == 0)
                node = &OwnedTree::addNode(tree.root, numbered("node", leaf / inNode));
            OwnedTree::addValue(*node, numbered("field", leaf % inNode)).setData(numbered("value ", leaf).c_str());
        }
        std::ostringstream os;
        tree.root.dump(os, -1, -1, 1);
        text = os.str();
        items = leaves;
    }

    void writeTo(std::ostream& os) const {
        for (std::string_view rest = text; !rest.empty();) {
            const std::size_t end = std::min(rest.find('\n'), rest.size() - 1) + 1;
            os.write(rest.data(), static_cast<std::streamsize>(end));
            rest.remove_prefix(end);
        }
    }

    OwnedTree tree;
    std::string text;
    std::size_t items = 0;
};

Pass dumpToString() {
    const auto dump = std::make_shared<Dump>();
    return {dump->text.size(),
            dump->items,
            [=] {
                std::ostringstream os;
                dump->tree.root.dump(os, -1, -1, 1);
            },
            [=] {
                std::ostringstream os;
                dump->writeTo(os);
            },
            {}};
}

Pass dumpToFile() {
    const auto dump = std::make_shared<Dump>();
    const auto file = std::make_shared<BenchFile>("dump.txt", "");
    return {dump->text.size(),
            dump->items,
            [=] {
                std::ofstream os(file->path());
                dump->tree.root.dump(os, -1, -1, 1);
            },
            [=] {
                std::ofstream os(file->path());
                dump->writeTo(os);
            },
            {}};
}

/// CPU time, for the machine may have other work.
double nanosecondsNow() {
    timespec now = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e9 + static_cast<double>(now.tv_nsec);
}

/// Nanoseconds of one call, out of as many as take half a millisecond.
double timeOf(const std::function<void()>& work) {
    constexpr double atLeast = 5e5;
    const double start = nanosecondsNow();
    for (std::size_t calls = 1;; ++calls) {
        work();
        const double passed = nanosecondsNow() - start;
        if (passed >= atLeast)
            return passed / static_cast<double>(calls);
    }
}

} // namespace

const std::vector<TextLanguage>& textLanguages() {
    constexpr double reading = 5;
    static const std::vector<TextLanguage> all{
        {"set commands", "the same sets by path", setCommands, reading},
        {"nested commands", "the same sets by name", structuredCommand, reading},
        {"copy commands", "the same copies by path", copyCommands, reading},
        {"link commands", "the same links and copies", linkCommands, reading},
        {"clear commands", "the same clears by path", clearCommands, reading},
        {"expression parse", "the look-ups, references and kept texts", parseExpressions, reading},
        {"type file", "the same types built", typeFile, reading},
        {"conversion file", "the rows stored in a map", conversionFile, reading},
        {"presets file", "the rows stored", presetsFile, reading},
        {"dump to string", "", dumpToString, 0, 200},
        {"dump to file", "", dumpToFile, 0, 200},
        {"evaluation", "", evaluateExpressions, 0, 0, true},
        {"conversion", "", conversion, 0, 0, true},
    };
    return all;
}

namespace {

TextFigures measure(const TextLanguage& language) {
    const Pass pass = language.prepare();
    pass.work();
    pass.work();
    const Memory before = memoryNow();
    pass.work();
    TextFigures figures;
    figures.allocations =
        static_cast<double>(memoryNow().allocations - before.allocations) / static_cast<double>(pass.items);

    std::vector<double> works;
    std::vector<double> floors;
    std::vector<double> ratios;
    std::vector<double> ratiosWithout;
    constexpr int turns = 99;
    for (int turn = 0; turn < turns; ++turn) {
        const double floor = timeOf(pass.floor);
        const double work = timeOf(pass.work);
        const double direct = pass.direct ? timeOf(pass.direct) : 0;
        floors.push_back(floor);
        works.push_back(work);
        ratios.push_back(work / floor);
        ratiosWithout.push_back(std::max(work - direct, 0.0) / floor);
    }
    const double megabytes = static_cast<double>(pass.bytes) * 1e3;
    figures.megabytes = megabytes / medianOf(works);
    figures.floorMegabytes = megabytes / medianOf(floors);
    figures.ratio = medianOf(ratios);
    figures.ratioWithout = medianOf(ratiosWithout);
    return figures;
}

} // namespace

std::vector<MeasuredText> measureTexts(const std::optional<std::string>& name) {
    std::vector<MeasuredText> measured;
    if (name)
        for (const TextLanguage& language : textLanguages())
            if (language.name.find(*name) != std::string_view::npos)
                measured.push_back({&language, measure(language)});
    return measured;
}

void printTexts(const std::vector<MeasuredText>& texts) {
    if (texts.empty())
        return;
    std::cout << std::flush;
    std::printf("\nText languages, medians of many interleaved turns. The floor of reading looks for the separators "
                "of the language\nwith memchr in the same bytes; that of writing writes them line by line; of "
                "evaluation it appends the same\ntexts, of conversion it copies them out of a hash map. \"Less\" is "
                "the ratio of the work without the time of what is\nnamed last, which the text only asks for. "
                "Allocations are calls of operator new per item.\n\n%-18s%10s%10s%9s%9s%9s\n",
                "language", "MB/s", "floor", "ratio", "less", "allocs");
    for (const MeasuredText& text : texts) {
        const TextFigures& figures = text.figures;
        std::printf("%-18s%10.0f%10.0f%9.2f%9.2f%9.2f  %s\n", std::string(text.language->name).c_str(),
                    figures.megabytes, figures.floorMegabytes, figures.ratio, figures.ratioWithout, figures.allocations,
                    std::string(text.language->without).c_str());
    }
    std::fflush(stdout);
}
