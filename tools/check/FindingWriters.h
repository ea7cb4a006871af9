#ifndef ORBEL_TOOLS_CHECK_FINDINGWRITERS_H
#define ORBEL_TOOLS_CHECK_FINDINGWRITERS_H

#include <tools/check/Finding.h>

#include <ostream>
#include <string>

enum class Colours { off, on };

/// `file:line:column: severity: message [rule]`, the remedy below it, and in the end how many there are.
void writeText(std::ostream& os, const Findings& findings, Colours colours);

/// One object: how many files were read, and the findings.
void writeJson(std::ostream& os, const Findings& findings);

/// SARIF 2.1.0.
void writeSarif(std::ostream& os, const Findings& findings, const std::string& version);

/// All rules: id, severity, what is wrong, what to do.
void writeRules(std::ostream& os);

#endif
