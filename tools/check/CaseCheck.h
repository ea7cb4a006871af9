#ifndef ORBEL_TOOLS_CHECK_CASECHECK_H
#define ORBEL_TOOLS_CHECK_CASECHECK_H

#include <orbel/tables/TableListener.h>
#include <tools/check/LineCheck.h>

#include <string>
#include <string_view>
#include <vector>

/// Reads a file of capital and small letters as the library does.
class CaseCheck : private tables::TableListener, private LineCheck {
public:
    explicit CaseCheck(Findings& findings);

    /// Throws Trouble when the file cannot be read.
    void read(const std::string& path);

private:
    using Fields = std::vector<std::string_view>;

    void onLine(std::string_view line, tables::LineUse use, std::string_view what) override;

    void checkPair(tables::LineUse use, const Fields& fields);
    void checkCodes(const Fields& fields);
    void checkCode(std::string_view code);
};

#endif
