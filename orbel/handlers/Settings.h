#ifndef ORBEL_HANDLERS_SETTINGS_H
#define ORBEL_HANDLERS_SETTINGS_H

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

/// Reads "./Orbel.ini" over the defaults, which stay when there is none; once, whatever the file sets. Also sets what
/// DataObject keeps of the settings: the folder of type files and the number of extra types.
void readSettings(Settings& settings);

#endif
