#include "Document.h"

#include <orbel/handlers/Settings.h>
#include <orbel/orbel.h>
#include <orbel/tables/AllPluginPreSets.h>
#include <orbel/tables/CaseTable.h>
#include <orbel/tables/ConversionTables.h>

#include <support/Console.h>
#include <support/Environment.h>
#include <support/RecordingPlugin.h>
#include <support/Text.h>
#include <support/TreeCleanup.h>
#include <support/WorkingFolder.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

const std::string missing = " is missing";
const std::string stays = " stays";

/// The page for operators: each example in it is tried.
class OperatorsPage : public testing::Test {
protected:
    OperatorsPage() { clearTypeVariables(); }

    void writeExample(const std::string& heading, const std::string& file) {
        const std::string text = page.section(heading).block('`' + file + "`:");
        ASSERT_GT(text.size(), 1U) << file;
        folder.write(file, text);
    }

    void readAllExamples() {
        folder.makeFolder("shows");
        writeExample("Settings", "Orbel.ini");
        writeExample("Conversion tables", "shows/QX_ConvTables_weather.csv");
        writeExample("Presets", "shows/QX_PreSets.csv");
        writeExample("Capital and small letters", "CapitalUnicodeData.txt");
        writeExample("Types", "shows/weather.qx");
        IDataHandlerImpl::init();
    }

    std::vector<Document::Row> rows(const std::string& heading, const std::string& header, std::size_t count) {
        const auto all = page.section(heading).table(header);
        EXPECT_EQ(all.size(), count) << heading << ' ' << header;
        return all;
    }

    using Reading = std::function<std::string(const std::string& key)>;

    /// Tries the mistakes under a heading: `read` reads a file of this text, and returns what tells its results.
    void tryMistakes(const std::string& heading, std::size_t count,
                     const std::function<Reading(const std::string& text)>& read) {
        for (const Document::Row& row : rows(heading, "| Mistake | File, line by line | What happens |", count)) {
            SCOPED_TRACE(row[0]);
            std::string text;
            for (const std::string& line : Document::codesOf(row[1]))
                text += line + '\n';
            const Reading reading = read(text);
            const Document::Claims claims = Document::claimsOf(row[2]);
            EXPECT_FALSE(claims.empty());
            for (const auto& [key, result] : claims)
                EXPECT_EQ(reading(key), result.find("empty") != std::string::npos ? "" : result) << key;
        }
    }

    Document page = Document::ofFile(ORBEL_DOCS "/operators.md");
    Console console;
    WorkingFolder folder;
};

std::string codeOf(wchar_t character) {
    char code[20];
    std::snprintf(code, sizeof code, "%04X", static_cast<unsigned>(character));
    return code;
}

wchar_t characterOf(const std::string& code) {
    return static_cast<wchar_t>(std::strtoul(code.c_str(), nullptr, 16));
}

std::string joined(const std::vector<std::string>& texts) {
    std::string all;
    for (std::size_t index = 0; index < texts.size(); ++index)
        all += (index == 0 ? "" : ",") + texts[index];
    return all;
}

std::string setting(const Settings& settings, const std::string& key) {
    if (key == "MultiOrbel")
        return std::to_string(settings.multiOrbel);
    if (key == "RefreshAlways")
        return settings.refreshAlways ? "1" : "0";
    return key == "ConfigurationFolder" ? settings.configurationFolder : "no setting";
}

std::string childTexts(DataField* parent, const std::string& name) {
    auto* object = dynamic_cast<DataStructure*>(parent);
    for (int index = 0; object && index < object->getNumFields(); ++index)
        if (object->getFieldByIndex(index)->getName() == name)
            return joined(*object->getFieldByIndex(index)->getDataVector());
    return missing;
}

} // namespace

TEST_F(OperatorsPage, HasNoBlockThatIsNotChecked) {
    EXPECT_EQ(page.countBlocks(), 7U);
}

TEST_F(OperatorsPage, ShowsWhatIsPrinted) {
    readAllExamples();
    const Document section = page.section("What is printed");
    std::string output = section.block("(with `\\` before the names of conversion tables on Windows):");
    std::string messages = section.block("`DataSetVPrintfFunction`, if any:");
    if (onWindows) {
        output.replace(output.find("shows/"), 6, "shows\\");
        messages.replace(messages.find("shows/"), 6, "shows\\");
    }
    EXPECT_EQ(console.takeOutput(), output);
    EXPECT_EQ(console.takeMessages(), messages);
}

TEST_F(OperatorsPage, ShowsSettings) {
    readAllExamples();
    const std::map<std::string, std::function<std::string()>> calls = {
        {"IDataHandlerImpl::IsMultiOrbel()", [] { return std::to_string(IDataHandlerImpl::IsMultiOrbel()); }},
        {"IDataHandlerImpl::IsRefreshAlways()", [] { return IDataHandlerImpl::IsRefreshAlways() ? "true" : "false"; }},
        {"IDataHandlerImpl::CheckImageIfExists()",
         [] { return IDataHandlerImpl::CheckImageIfExists() ? "true" : "false"; }},
        {"DataObject::get_ConfigFolder()", [] { return DataObject::get_ConfigFolder(); }},
    };
    for (const Document::Row& row : rows("Settings", "| Call | Result |", 4))
        EXPECT_EQ(calls.at(Document::valueOf(row[0]))(), Document::valueOf(row[1])) << row[0];
}

TEST_F(OperatorsPage, ShowsConversionTables) {
    readAllExamples();
    Diary diary;
    auto* value = new DataValue(Text("value"));
    IDataHandlerImpl::getOrbel(0, false)->addField(value, 0);
    RecordingPlugin plugin(diary, "A");
    plugin.init(0);
    plugin.setUseConvTable(1);
    plugin.registerHandler("value", nullptr, 0);
    for (const Document::Row& row : rows("Conversion tables", "| Table | Value | Text |", 7)) {
        plugin.setConvTableNmae(Text(Document::valueOf(row[0])));
        diary.take();
        value->setData(Document::valueOf(row[1]).c_str());
        const std::string text = row[2] == "empty" ? "" : Document::valueOf(row[2]);
        EXPECT_EQ(diary.take(), "A value=" + text) << row[0] << row[1];
    }
}

TEST_F(OperatorsPage, ShowsPresets) {
    readAllExamples();
    for (const Document::Row& row : rows("Presets", "| Plug-in | Preset | Column | Text |", 4)) {
        PluginPreSets* presets = IDataHandlerImpl::getPreSets(Document::valueOf(row[0]).c_str());
        ASSERT_NE(presets, nullptr) << row[0];
        const auto* preset = presets->findRow(Document::valueOf(row[1]).c_str());
        ASSERT_NE(preset, nullptr) << row[1];
        const int column = presets->getColumn(Document::valueOf(row[2]).c_str());
        ASSERT_GE(column, 0) << row[2];
        EXPECT_EQ((*preset)[static_cast<std::size_t>(column)], row[3] == "empty" ? "" : Document::valueOf(row[3]));
    }
}

TEST_F(OperatorsPage, ShowsLetters) {
    readAllExamples();
    for (const Document::Row& row : rows("Capital and small letters", "| Letter | `toUpper` | `toLower` |", 4)) {
        wchar_t upper = characterOf(Document::valueOf(row[0])), lower = upper;
        EXPECT_EQ(IDataHandlerImpl::toUpper(&upper) ? codeOf(upper) : "none", Document::valueOf(row[1])) << row[0];
        EXPECT_EQ(IDataHandlerImpl::toLower(&lower) ? codeOf(lower) : "none", Document::valueOf(row[2])) << row[0];
    }
}

TEST_F(OperatorsPage, ShowsTypes) {
    readAllExamples();
    Orbel root{Text("show")};
    const SubtreeCleanup belowRoot{root};
    for (const Document::Row& row : rows("Types", "| Path | Field | Text |", 2)) {
        ASSERT_NE(root.getField(Text(Document::valueOf(row[0])), 0, 0), nullptr) << row[0];
        DataField* field = root.getField(Text(Document::valueOf(row[1])), 0, 0);
        ASSERT_NE(field, nullptr) << row[1];
        EXPECT_EQ(joined(*field->getDataVector()), Document::valueOf(row[2])) << row[1];
    }
}

TEST_F(OperatorsPage, TellsWhatBecomesOfMistakesInSettings) {
    tryMistakes("Settings", 11, [&](const std::string& text) {
        folder.write("Orbel.ini", text);
        Settings settings;
        readSettings(settings);
        return [settings](const std::string& key) { return setting(settings, key); };
    });
}

TEST_F(OperatorsPage, TellsWhatBecomesOfMistakesInConversionTables) {
    tryMistakes("Conversion tables", 21, [&](const std::string& text) {
        folder.write("QX_ConvTables.csv", text);
        return [tables = std::make_shared<ConversionTables>(".")](const std::string& key) {
            return std::string(tables->lookup("T", key));
        };
    });
}

TEST_F(OperatorsPage, TellsWhatBecomesOfMistakesInPresets) {
    tryMistakes("Presets", 17, [&](const std::string& text) {
        folder.write("QX_PreSets.csv", text);
        return [all = std::make_shared<AllPluginPreSets>(".")](const std::string& key) {
            PluginPreSets* presets = all->find("P");
            const auto* row = presets ? presets->findRow(key.c_str()) : nullptr;
            return row ? joined(*row) : missing;
        };
    });
}

TEST_F(OperatorsPage, TellsWhatBecomesOfMistakesInLetters) {
    tryMistakes("Capital and small letters", 8, [&](const std::string& text) {
        folder.write("CapitalUnicodeData.txt", text);
        return [table = CaseTable("./CapitalUnicodeData.txt")](const std::string& key) {
            wchar_t character = characterOf(key);
            return table.toLower(character) ? codeOf(character) : stays;
        };
    });
}

TEST_F(OperatorsPage, TellsWhatBecomesOfMistakesInTypes) {
    DataObject::set_ConfigFolder(Text("."));
    DataObject::init();
    tryMistakes("Types", 12, [&](const std::string& text) {
        folder.write("types.qx", text);
        DataObject::readConfigFiles();
        return [](const std::string& key) {
            Orbel root{Text("show")};
            const SubtreeCleanup belowRoot{root};
            return childTexts(root.getField(Text("T:object"), 0, 0), key);
        };
    });
}

TEST_F(OperatorsPage, ShowsTheOtherMessages) {
    folder.write("QX_PreSets.csv", "__PLUGIN__,P\nSpeed\n");
    folder.write("types.qx", "T = {number n;};\nT = {string x;};\n");
    IDataHandlerImpl::init();
    DataObject::readTypesTable(Text("missing.qx"));
    DataObject::readConfigFiles();
    const std::string all = console.takeOutput() + console.takeMessages();
    const std::pair<std::string, std::string> names[] = {{"FILE", "missing.qx"}, {"TYPE", "T"}, {"COUNT", "1"}};
    for (const Document::Row& row : rows("What is printed", "| Message | When |", 5)) {
        std::string message = Document::valueOf(row[0]);
        for (const auto& [name, text] : names)
            if (const std::size_t at = message.find(name); at != std::string::npos)
                message.replace(at, name.size(), text);
        EXPECT_NE(all.find(message + '\n'), std::string::npos) << message;
    }
}
