#ifndef ORBEL_TABLES_PRINTINGTABLELISTENER_H
#define ORBEL_TABLES_PRINTINGTABLELISTENER_H

#include "TableListener.h"

namespace tables {

/// Prints the messages that operators know to standard output.
class PrintingTableListener : public TableListener {
public:
    /// `file` is what a file holds, `section` what a section of it is; both texts outlive the listener.
    PrintingTableListener(const char* file, const char* section) : m_file(file), m_section(section) {}

    void onFile(const std::string& path) override;
    void onLine(std::string_view line, LineUse use, std::string_view what) override;

private:
    const char* m_file;
    const char* m_section;
};

} // namespace tables

#endif
