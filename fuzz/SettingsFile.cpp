#include "FileInput.h"
#include "Input.h"
#include "Target.h"

#include <orbel/handlers/Settings.h>
#include <orbel/orbel.h>

#include <support/Text.h>
#include <support/WorkingFolder.h>

#include <cstring>
#include <string>

namespace {

std::string lowered(std::string_view text) {
    std::string lower(text);
    for (char& character : lower)
        if (character >= 'A' && character <= 'Z')
            character = static_cast<char>(character - 'A' + 'a');
    return lower;
}

bool operator==(const Settings& left, const Settings& right) {
    return left.multiOrbel == right.multiOrbel && left.refreshAlways == right.refreshAlways &&
           left.checkMaterialIfExists == right.checkMaterialIfExists &&
           left.checkImageIfExists == right.checkImageIfExists &&
           std::strcmp(left.configurationFolder, right.configurationFolder) == 0;
}

/// What is not mentioned stays what it is without a file.
void checkDefaults(const Settings& settings, std::string_view input) {
    const std::string text = lowered(input);
    const auto isMentioned = [&](const char* key) { return text.find(key) != std::string::npos; };
    check(settings.multiOrbel == 0 || isMentioned("multiorbel"), "scenes share one tree");
    check(settings.refreshAlways || isMentioned("refreshalways"), "refreshed always");
    check(settings.checkMaterialIfExists || isMentioned("checkmaterialifexists"), "materials are checked");
    check(settings.checkImageIfExists || isMentioned("checkimageifexists"), "images are checked");
    check(std::string_view(settings.configurationFolder) == "." || isMentioned("configurationfolder"), "here");
    check(DataObject::get_NofExtraTypes() == 0 || isMentioned("nof_extra_types"), "no extra types");
}

const Target target("settings", [](std::string_view input) {
    static const WorkingFolder folder;
    folder.write("Orbel.ini", input);
    Settings settings;
    readSettings(settings);
    check(settings.areRead, "settings count as read");
    check(std::memchr(settings.configurationFolder, '\0', sizeof settings.configurationFolder), "a folder ends");
    check(std::strcmp(settings.configurationFolder, DataObject::get_ConfigFolder()) == 0, "types are in the folder");
    checkDefaults(settings, input);

    Settings again;
    readSettings(again);
    check(again == settings, "the same file says the same");
    folder.write("Orbel.ini", "MultiOrbel = 77\n");
    readSettings(again);
    check(again == settings, "settings are read once");
    DataObject::set_NofExtraTypes(0);
    DataObject::set_ConfigFolder(Text(""));
});

} // namespace
