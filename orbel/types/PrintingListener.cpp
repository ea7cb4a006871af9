#include "PrintingListener.h"

#include <orbel/foundation/DataPrintf.h>

#include <iostream>
#include <string>

void PrintingListener::onTypeCreated(std::string_view name) {
    DataPrintf("\t\tCreating type: %s\n", std::string(name).c_str());
}

void PrintingListener::onTypeExtended(std::string_view name) {
    DataPrintf("\t\tExisting type: %s\n", std::string(name).c_str());
}

void PrintingListener::onFieldIgnored(std::string_view statement) {
    // Contract: always to standard output, whatever print functions the host has installed.
    std::cout << "\nThe line below will be ignored. Probably the variable type is not defined. \nline : \"" << statement
              << ";\"\n";
}
