#include "CheckRun.h"

#include <orbel/foundation/DataPrintf.h>
#include <orbel/foundation/platform/Files.h>
#include <orbel/foundation/text/Scanner.h>
#include <tools/CommandLine.h>

#include "../WholeFile.h"
#include "CaseCheck.h"
#include "PresetCheck.h"
#include "SettingsCheck.h"
#include "TableCheck.h"
#include "TypeCheck.h"

#include <algorithm>
#include <cstdarg>
#include <filesystem>
#include <string_view>

namespace {

namespace fs = std::filesystem;

constexpr std::string_view settingsName = "Orbel.ini";
constexpr std::string_view casesName = "CapitalUnicodeData.txt";
constexpr std::string_view presetsName = "QX_PreSets.csv";
constexpr std::string_view tablesPrefix = "QX_ConvTables";

enum class Kind { settings, tables, cases, presets, types };

int printNothing(const char* /*format*/, va_list /*arguments*/) {
    return 0;
}

/// The library tells of every table of types that it destroys.
class Silence {
public:
    Silence() { DataSetVPrintfFunction(printNothing); }
    Silence(const Silence&) = delete;
    Silence& operator=(const Silence&) = delete;
    ~Silence() { DataSetVPrintfFunction(nullptr); }
};

/// As it is shown: without "./", with slashes.
std::string joined(const std::string& folder, std::string_view name) {
    return (fs::path(folder) / name).lexically_normal().generic_string();
}

bool startsWith(std::string_view name, std::string_view start) {
    return text::equalsIgnoringCase(name.substr(0, start.size()), start);
}

Kind kindOf(const std::string& path) {
    const std::string name = fs::path(path).filename().string();
    const std::string extension = fs::path(path).extension().string();
    if (text::equalsIgnoringCase(extension, ".qx"))
        return Kind::types;
    if (text::equalsIgnoringCase(extension, ".ini"))
        return Kind::settings;
    if (text::equalsIgnoringCase(extension, ".txt"))
        return Kind::cases;
    if (startsWith(name, "QX_PreSets"))
        return Kind::presets;
    if (startsWith(name, tablesPrefix))
        return Kind::tables;
    throw Trouble("cannot tell from its name what " + path +
                  " is: expected *.ini, *.txt, *.qx, QX_ConvTables*.csv or QX_PreSets*.csv");
}

/// One run over files that belong together.
class Run {
public:
    void checkFiles(const std::vector<std::string>& paths) {
        for (const std::string& path : paths)
            checkFile(path);
    }

    /// In the order of the library.
    void checkFolder(const std::string& folder) {
        const std::string settings = joined(folder, settingsName);
        if (isFile(settings))
            m_settings.read(settings);
        const std::vector<std::string> folders = foldersOf(folder);
        for (const std::string& configured : folders)
            for (const std::string& name : files::listFolder(configured, tablesPrefix, ".csv"))
                m_tables.read(joined(configured, name));
        const std::string cases = joined(folder, casesName);
        if (isFile(cases))
            m_cases.read(cases);
        const std::string presets = joined(joined(folder, m_settings.configurationFolder()), presetsName);
        if (!m_settings.configurationFolder().empty() && isFile(presets))
            m_presets.read(presets);
        for (const std::string& configured : folders)
            for (const std::string& name : files::listFolder(configured, "", ".qx"))
                m_types.read(joined(configured, name));
        m_settings.checkFolders(folder);
        if (m_findings.files().empty())
            throw Trouble(folder + " holds no file that the library reads");
    }

    Findings finish() {
        m_types.finish();
        return std::move(m_findings);
    }

private:
    void checkFile(const std::string& path) {
        switch (kindOf(path)) {
        case Kind::settings:
            m_settings.read(path);
            break;
        case Kind::tables:
            m_tables.read(path);
            break;
        case Kind::cases:
            m_cases.read(path);
            break;
        case Kind::presets:
            m_presets.read(path);
            break;
        case Kind::types:
            m_types.read(path);
            break;
        }
    }

    std::vector<std::string> foldersOf(const std::string& base) const {
        std::vector<std::string> folders;
        std::string_view rest = m_settings.configurationFolder();
        while (!rest.empty())
            if (const std::string_view folder = text::cutFolder(rest); !folder.empty())
                folders.push_back(joined(base, folder));
        return folders;
    }

    Silence m_silence;
    Findings m_findings;
    SettingsCheck m_settings{m_findings};
    TableCheck m_tables{m_findings};
    CaseCheck m_cases{m_findings};
    PresetCheck m_presets{m_findings};
    TypeCheck m_types{m_findings};
};

} // namespace

Findings check(const std::vector<std::string>& paths) {
    Run run;
    const auto folder = std::find_if(paths.begin(), paths.end(), isFolder);
    if (folder == paths.end())
        run.checkFiles(paths);
    else if (paths.size() == 1)
        run.checkFolder(*folder);
    else
        throw Trouble(*folder + " is a folder: check it alone");
    return run.finish();
}
