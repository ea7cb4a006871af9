#include "PlugInGrowth.h"

#include "GrowthTools.h"
#include "OwnedTree.h"
#include "Silence.h"

#include <orbel/orbel.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

namespace fs = std::filesystem;

/// Settings with a tree per scene, and the folder that they name for conversion tables.
class Framework {
public:
    static Framework& ready() {
        static Framework framework;
        return framework;
    }

    Framework(const Framework&) = delete;
    Framework& operator=(const Framework&) = delete;
    ~Framework() { fs::remove_all(m_folder); }

    /// Replaces all conversion tables by one, "Table", in which "key7" is "value7"; 0 rows make no table.
    void useTable(std::size_t rows) const {
        writeTable(rows);
        readTables();
    }

    void writeTable(std::size_t rows) const {
        const fs::path file = m_folder / "QX_ConvTables.csv";
        fs::remove(file);
        if (rows == 0)
            return;
        std::ofstream lines(file);
        lines << "__TABLE__,Table\n";
        for (std::size_t row = 0; row < rows; ++row)
            lines << "key" << row << ",value" << row << '\n';
    }

    static void readTables() {
        const Silence silence;
        IDataHandlerImpl::RefreshConvTables();
    }

private:
    Framework() {
        // The variable would stand for the folder of the settings.
        unsetenv("QX_OBJECTS_DIR");
        fs::create_directories(m_folder);
        std::ofstream(m_folder / "Orbel.ini") << "MultiOrbel=1\nConfigurationFolder=" << m_folder.string() << '\n';
        const fs::path before = fs::current_path();
        fs::current_path(m_folder);
        {
            const Silence silence;
            IDataHandlerImpl::init();
        }
        fs::current_path(before);
        require(IDataHandlerImpl::IsMultiOrbel() == 1, "the settings were not read");
    }

    fs::path m_folder = fs::temp_directory_path() / numbered("orbel-bench-", static_cast<std::size_t>(getpid()));
};

class CountingPlugIn final : public IDataHandler {
public:
    CountingPlugIn(DataField& field, const char* table) {
        const Silence silence;
        init(0);
        if (table) {
            setUseConvTable(1);
            setConvTableNmae(chars(std::string(table)));
        }
        registerHandler(&field);
    }

    char* getPluginName() override { return chars(m_name); }
    int getPluginType() override { return 0; }
    char* getPluginFolder() override { return chars(m_name); }

    void onDataChange(char* /*fieldName*/, char* value) override {
        ++calls;
        characters += std::char_traits<char>::length(value);
    }

    static inline std::size_t calls = 0;
    static inline std::size_t characters = 0;

private:
    std::string m_name = "bench";
};

/// As many as there are items, so that no item is met twice, but neighbours are met far apart.
std::size_t scattered(std::size_t item, std::size_t items) {
    constexpr std::size_t prime = 7919;
    return item * prime % items;
}

/// What plug-ins are told is taken from here.
struct Show {
    OwnedTree tree;
    std::vector<std::unique_ptr<CountingPlugIn>> plugIns;
    std::vector<std::string> paths;
    std::vector<std::string> texts;
};

Growth::Pass setAll(std::size_t items, const char* table) {
    constexpr std::size_t rows = 1'000;
    Framework::ready().useTable(table ? rows : 0);
    auto show = std::make_shared<Show>();
    for (std::size_t item = 0; item < items; ++item) {
        show->paths.push_back(numbered("value", item));
        show->texts.push_back(numbered("key", item % rows));
        DataValue& value = OwnedTree::addValue(show->tree.root, show->paths.back());
        show->plugIns.push_back(std::make_unique<CountingPlugIn>(value, table));
    }
    const auto work = [show] {
        CountingPlugIn::calls = CountingPlugIn::characters = 0;
        for (std::size_t item = 0; item < show->paths.size(); ++item)
            show->tree.root.setFieldData(chars(show->paths[item]), chars(show->texts[item]));
    };
    const auto clean = [items] { require(CountingPlugIn::calls == items, "not every plug-in was told"); };
    return {work, clean};
}

} // namespace

Growth::Pass plugIns(std::size_t items) {
    return setAll(items, nullptr);
}

Growth::Pass convertedPlugIns(std::size_t items) {
    return setAll(items, "Table");
}

Growth::Pass conversion(std::size_t items) {
    Framework::ready().useTable(items);
    auto show = std::make_shared<Show>();
    auto& value = OwnedTree::addValue(show->tree.root, "value");
    show->plugIns.push_back(std::make_unique<CountingPlugIn>(value, "Table"));
    std::size_t characters = 0;
    for (std::size_t item = 0; item < items; ++item) {
        show->texts.push_back(numbered("key", scattered(item, items)));
        characters += numbered("value", item).size();
    }
    const auto work = [show, &value] {
        CountingPlugIn::calls = CountingPlugIn::characters = 0;
        for (const std::string& text : show->texts)
            value.setData(text.c_str());
    };
    const auto clean = [characters] {
        require(CountingPlugIn::characters == characters, "not every value was converted");
    };
    return {work, clean};
}

Growth::Pass loadTable(std::size_t items) {
    const Framework& framework = Framework::ready();
    // Nothing is left for the work to take apart.
    framework.useTable(0);
    framework.writeTable(items);
    return {Framework::readTables, [] {}};
}

Growth::Pass scenes(std::size_t items) {
    Framework::ready();
    const Silence silence;
    for (std::size_t item = 0; item < items; ++item)
        IDataHandlerImpl::getOrbel(static_cast<int>(item), false);
    const auto work = [items] {
        for (std::size_t item = 0; item < items; ++item)
            require(IDataHandlerImpl::getOrbel(static_cast<int>(scattered(item, items)), false), "no tree");
    };
    return {work, [] {}};
}
