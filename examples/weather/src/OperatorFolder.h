#ifndef WEATHER_OPERATORFOLDER_H
#define WEATHER_OPERATORFOLDER_H

#include <string>

/// Makes the operator's folder the working directory. Throws InputError when it lacks a file the library reads there.
void enterFolder(const std::string& folder);

/// Lets the library read the folder, which prints what it finds. Throws InputError when a table is missing.
void startLibrary();

#endif
