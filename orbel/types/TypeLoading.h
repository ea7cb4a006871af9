#ifndef ORBEL_TYPES_TYPELOADING_H
#define ORBEL_TYPES_TYPELOADING_H

#include <string>
#include <string_view>

class DataObjectTypesTable;

/// What the environment says about where the types are.
enum class TypeSource { file, folder, path, configured };

TypeSource chooseTypeSource();
/// The text of the variable that decides; there is none for `configured`.
std::string typeSourceText(TypeSource source);
/// Whether the log and the schema are to be printed once the types are loaded.
bool isTypeDumpWanted();

/// Each adds types to a table, which is made first when it is null and there is a file to read.
/// False when the file cannot be read.
bool loadTypeFile(DataObjectTypesTable*& table, const std::string& path);
void loadTypeFolder(DataObjectTypesTable*& table, const std::string& folder);
/// A list of folders separated by ";".
void loadTypeFolders(DataObjectTypesTable*& table, std::string_view list);

#endif
