#include "PrintingTableListener.h"

#include <iostream>

namespace tables {

void PrintingTableListener::onFile(const std::string& path) {
    std::cout << "\nReading Orbel " << m_file << " file " << path << std::endl;
}

void PrintingTableListener::onLine(std::string_view /*line*/, LineUse use, std::string_view what) {
    if (use == LineUse::version)
        std::cout << "    File format version : " << what << std::endl;
    else if (use == LineUse::sectionNew)
        std::cout << "    Adding " << m_section << " : " << what << std::endl;
    else if (use == LineUse::headerWithoutName)
        std::cout << "   First line of a PreSer has to include a \"Name\" as one of the variables" << std::endl;
}

} // namespace tables
