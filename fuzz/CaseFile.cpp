#include "FileInput.h"
#include "Input.h"
#include "Target.h"

#include <orbel/tables/CaseTable.h>

#include <cstdlib>
#include <string>

namespace {

void checkCharacter(const CaseTable& cases, unsigned long number) {
    const auto character = static_cast<wchar_t>(number);
    wchar_t lower = character;
    if (cases.toLower(lower)) {
        check(lower != 0, "a lower-case character is one");
        wchar_t back = lower;
        check(cases.toUpper(back), "what is the lower case of something has an upper case");
        // Not always the same one: of several pairs with one upper case the first counts.
        check(cases.toLower(back), "which has a lower case");
    } else {
        check(lower == character, "what has no lower case stays");
    }
    wchar_t upper = character;
    check(cases.toUpper(upper) || upper == character, "what has no upper case stays");
}

const Target target("case-table", [](std::string_view input) {
    static const FileInput file("CapitalUnicodeData.txt");
    file.write(input);
    const CaseTable cases(file.path().c_str());
    for (const unsigned long number : {0UL, 0x41UL, 0x61UL, 0xFFFFUL})
        checkCharacter(cases, number);
    forEachLine(input, [&](std::string_view line) {
        const unsigned long number = std::strtoul(std::string(line).c_str(), nullptr, 16);
        if (number <= 0xFFFF)
            checkCharacter(cases, number);
    });
});

} // namespace
