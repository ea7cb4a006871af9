#ifndef ORBEL_HANDLERS_SETTINGS_H
#define ORBEL_HANDLERS_SETTINGS_H

#include <cstddef>
#include <string_view>
#include <vector>

/// What the settings file says.
struct Settings {
    bool areRead = false;
    /// -1 until the file is read.
    int multiOrbel = -1;
    bool refreshAlways = true;
    bool checkMaterialIfExists = true;
    bool checkImageIfExists = true;
    char configurationFolder[512] = ".";
};

/// The longest line of a settings file, with its line end; a longer one is read in pieces.
constexpr std::size_t maxSettingsLineLength = 511;

enum class SettingUse { comment, withoutEquals, unknownKey, setting };

/// The keys that a settings file may have.
std::vector<std::string_view> settingNames();

/// Hears what becomes of the lines of a settings file.
class SettingsListener {
public:
    virtual ~SettingsListener() = default;

    /// Once for each line, with its line end, or for each piece of a line that is too long. `key` is the name of the
    /// setting, empty when there is none. Views are valid during the call.
    virtual void onLine(std::string_view line, SettingUse use, std::string_view key) = 0;
};

/// Reads a file over the settings; the listener may be null. False when the file cannot be opened.
bool readSettingsFile(const char* path, Settings& settings, SettingsListener* listener);

/// Reads "./Orbel.ini" over the defaults, which stay when there is none; once, whatever the file sets. Also sets what
/// DataObject keeps of the settings: the folder of type files and the number of extra types.
void readSettings(Settings& settings);

#endif
