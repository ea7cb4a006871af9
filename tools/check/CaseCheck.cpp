#include "CaseCheck.h"

#include <orbel/foundation/text/Scanner.h>
#include <orbel/tables/CaseTable.h>
#include <orbel/tables/TableText.h>

#include <algorithm>

using tables::LineUse;

namespace {

constexpr std::size_t fieldsOfDatabase = 15;
constexpr std::size_t smallLetterOfDatabase = 13;

std::size_t countDigits(std::string_view text) {
    return std::min(text.find_first_not_of("0123456789abcdefABCDEF"), text.size());
}

bool isHexadecimal(std::string_view text) {
    return !text.empty() && countDigits(text) == text.size();
}

/// A line of the Unicode Character Database is right as it is: letters beyond FFFF, titlecase letters, small letters.
bool isOfDatabase(const std::vector<std::string_view>& fields) {
    return fields.size() == fieldsOfDatabase && isHexadecimal(fields.front()) &&
           (fields[smallLetterOfDatabase].empty() || isHexadecimal(fields[smallLetterOfDatabase]));
}

} // namespace

CaseCheck::CaseCheck(Findings& findings) : LineCheck(findings, tables::maxLineLength) {}

void CaseCheck::read(const std::string& path) {
    beginFile(path);
    const CaseTable table(path.c_str(), this);
}

void CaseCheck::onLine(std::string_view /*line*/, LineUse use, std::string_view /*what*/) {
    nextLine();
    const bool hasEffect = use == LineUse::pair || use == LineUse::pairHalf;
    if (checkLine(hasEffect ? Effect::other : Effect::none) || isBlank())
        return;
    const Fields fields = tables::splitFields(line(), ';');
    switch (use) {
    case LineUse::skipped:
        break;
    case LineUse::pairTooShort:
        report(ruleOf("cases.too-few-fields"), Effect::none,
               inQuotes(stripped(line())) + " has no \";\" and is ignored");
        break;
    case LineUse::pairWithoutCode:
        if (!isOfDatabase(fields))
            checkCodes(fields);
        break;
    default:
        checkPair(use, fields);
        break;
    }
}

void CaseCheck::checkPair(LineUse use, const Fields& fields) {
    const std::string_view capital = fields.front();
    const std::string_view small = fields[fields.size() - 2];
    reportDroppedFields(';');
    if (use == LineUse::pairAgain) {
        report(ruleOf("cases.pair-again"), Effect::none,
               inQuotes(stripped(capital)) + " and " + inQuotes(stripped(small)) + " have partners already");
        return;
    }
    if (fields.size() == 2)
        report(ruleOf("cases.own-partner"), Effect::other,
               inQuotes(stripped(capital)) + " becomes its own capital and small letter");
    if (isOfDatabase(fields))
        return;
    if (!stripped(fields.back()).empty() && fields.size() < tables::maxFields)
        report(ruleOf("cases.no-final-semicolon"), Effect::other, stripped(fields.back()),
               inQuotes(stripped(small)) + " is taken for the small letter, not " + inQuotes(stripped(fields.back())));
    if (use == LineUse::pairHalf)
        report(ruleOf("cases.half-pair"), Effect::other,
               inQuotes(stripped(capital)) + " or " + inQuotes(stripped(small)) +
                   " has a partner already, so the line counts in one direction only");
    checkCode(capital);
    if (fields.size() > 2)
        checkCode(small);
}

void CaseCheck::checkCode(std::string_view code) {
    code = stripped(code);
    const std::string_view behind = stripped(code.substr(countDigits(code)));
    if (!behind.empty())
        report(ruleOf("cases.text-in-code"), Effect::none, behind, inQuotes(behind) + " is ignored");
}

/// Of a line that makes no pair.
void CaseCheck::checkCodes(const Fields& fields) {
    const std::string_view capital = stripped(fields.front());
    const std::string_view small = stripped(fields[fields.size() - 2]);
    const std::string_view last = stripped(fields.back());
    const auto isRight = [](std::string_view code) { return code.empty() || text::readHexadecimal(code) != 0; };
    if (isRight(capital) && !capital.empty() && !isRight(small) && isHexadecimal(last)) {
        report(ruleOf("cases.no-final-semicolon"), Effect::none,
               inQuotes(small) + " is taken for the small letter, not " + inQuotes(last));
        return;
    }
    if (static_cast<std::size_t>(std::count(line().begin(), line().end(), ';')) >= tables::maxFields) {
        report(ruleOf("files.too-many-fields"), Effect::none,
               "this line has more than 64 fields, so the small letter is not the last but one of them");
        return;
    }
    // The line of a letter that has no small one.
    if (isRight(capital) && !capital.empty() && small.empty())
        return;
    const std::string_view wrong = isRight(capital) && !capital.empty() ? small : capital;
    const bool isNumber = countDigits(wrong) > 0 && !wrong.starts_with("0x") && !wrong.starts_with("0X");
    if (isNumber)
        report(ruleOf("cases.code-out-of-range"), Effect::none, inQuotes(wrong) + " is zero or beyond FFFF");
    else
        report(ruleOf("cases.code-not-hexadecimal"), Effect::none, inQuotes(wrong) + " is not hexadecimal");
}
