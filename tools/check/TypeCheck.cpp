#include "TypeCheck.h"

#include <orbel/foundation/text/Scanner.h>
#include <orbel/tree/Limits.h>
#include <orbel/types/DataObjectField.h>
#include <orbel/types/TypeParser.h>

#include "../WholeFile.h"
#include "Suggestion.h"
#include "Texts.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace {

std::string_view firstWord(std::string_view text) {
    text::skipBlanks(text);
    return text.substr(0, text::blanks.findIn(text));
}

bool hasBlank(std::string_view text) {
    return text::blanks.findIn(text) != text.size();
}

bool hasLineEnd(std::string_view text) {
    return text.find('\n') != std::string_view::npos;
}

/// Where a text leaves braces or doubled quotes open, counted as the library counts them.
struct Unbalanced {
    enum class Kind { none, unclosedBrace, surplusBrace, unclosedQuotes };

    Kind kind = Kind::none;
    std::size_t at = 0;
};

Unbalanced findUnbalanced(std::string_view text) {
    std::vector<std::size_t> open;
    std::size_t quotesAt = 0;
    bool isQuoted = false;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '"' && text.substr(at + 1, 1) == "\"") {
            isQuoted = !isQuoted;
            quotesAt = at++;
        } else if (!isQuoted && text[at] == '{') {
            open.push_back(at);
        } else if (!isQuoted && text[at] == '}') {
            if (open.empty())
                return {Unbalanced::Kind::surplusBrace, at};
            open.pop_back();
        }
    }
    if (isQuoted)
        return {Unbalanced::Kind::unclosedQuotes, quotesAt};
    return open.empty() ? Unbalanced{} : Unbalanced{Unbalanced::Kind::unclosedBrace, open.front()};
}

std::size_t offsetIn(std::string_view whole, std::string_view part) {
    return static_cast<std::size_t>(part.data() - whole.data());
}

} // namespace

TypeCheck::TypeCheck(Findings& findings) : m_findings(findings) {}

void TypeCheck::read(const std::string& path) {
    const std::string bytes = readWholeFile(path);
    const std::size_t nul = std::min(bytes.find('\0'), bytes.size());
    m_file = &m_files.emplace_back(path, bytes.substr(0, nul));
    m_findings.beginFile(path);
    if (nul < bytes.size()) {
        const LineIndex lines(bytes);
        m_findings.add({&ruleOf("files.nul"), Effect::none, path, lines.positionAt(nul), lines.positionAt(bytes.size()),
                        "the rest of the file is not read, because of a NUL character"});
    }
    checkFile();
    TypeParser(*this).parseTypes(m_file->source.kept(), m_table);
}

void TypeCheck::checkFile() {
    const SourceText& source = m_file->source;
    if (source.file().starts_with(byteOrderMark))
        reportInFile(ruleOf("files.byte-order-mark"), Effect::other, 0, byteOrderMark.size(),
                     "a byte-order mark belongs to the first statement");
    if (source.comments().empty())
        return;
    const DroppedComment& last = source.comments().back();
    if (last.at == source.kept().size())
        reportInFile(ruleOf("types.comment-without-line-end"), Effect::other, source.file().size() - last.size,
                     source.file().size(), "the file ends in a comment without a line end");
}

void TypeCheck::finish() {
    for (const UnknownType& field : m_unknownTypes)
        reportUnknown(field);
}

void TypeCheck::onCommentSkipped(std::string_view comment) {
    if (m_inType) {
        m_parts.push_back(comment);
        return;
    }
    const std::size_t lineEnd = comment.find('\n');
    if (lineEnd == std::string_view::npos || stripped(comment.substr(lineEnd)).empty())
        return;
    const Unbalanced cause = findUnbalanced(comment.substr(0, lineEnd));
    report(ruleOf("types.comment-swallows-lines"), Effect::none, comment.substr(cause.at),
           "because of " + inQuotes(comment.substr(cause.at, comment[cause.at] == '"' ? 2 : 1)) +
               " the comment goes on in the next lines, which are lost");
}

void TypeCheck::onTypeCreated(std::string_view name) {
    m_inType = true;
    m_isExtended = false;
    m_typeName = name;
    m_types[std::string(name)].place = placeOf(name);
    checkTypeName(name);
}

void TypeCheck::onTypeExtended(std::string_view name) {
    m_inType = true;
    m_isExtended = true;
    m_typeName = name;
    report(ruleOf("types.type-extended"), Effect::other, name,
           "the type " + inQuotes(name) + " is declared in " + nameOf(m_types.find(name)->second.place) +
               " already; these fields are added to it");
}

void TypeCheck::checkTypeName(std::string_view name) {
    if (name.empty())
        report(ruleOf("types.type-without-name"), Effect::other, name, "this type has no name");
    else if (name == "string")
        report(ruleOf("types.type-named-string"), Effect::other, name,
               "no field can have this type, because \"string\" always means a text");
    else if (name.starts_with('#'))
        report(ruleOf("types.no-comment"), Effect::other, name,
               "this \"#\" does not stand at the beginning of a statement; it begins the name of the type " +
                   inQuotes(name));
    else if (name.find('{') != std::string_view::npos)
        report(ruleOf("types.missing-equals"), Effect::other, name,
               "there is no \"=\" before \"{\", so the type is called " + inQuotes(name));
    else if (hasBlank(name))
        report(ruleOf("types.blank-in-type-name"), Effect::other, name,
               "the type is called " + inQuotes(name) + ", so no field can have it");
}

void TypeCheck::onTypeRead(std::string_view statement, DataObjectType& /*type*/) {
    if (m_fieldsAdded == 0 && m_isExtended)
        report(ruleOf("types.extended-by-nothing"), Effect::none, stripped(statement),
               "the type " + inQuotes(m_typeName) + " exists already, and this adds no field to it");
    else if (m_fieldsAdded == 0)
        report(ruleOf("types.type-without-fields"), Effect::other, m_typeName,
               "the type " + inQuotes(m_typeName) + " has no fields");
    checkEmptyStatements(statement);
    checkNesting(statement);
    m_inType = false;
    m_fieldsAdded = 0;
    m_parts.clear();
    m_lastDefault = {};
}

/// A statement that leaves a brace or quotes open, or closes too many, does not end at its ";".
void TypeCheck::checkNesting(std::string_view statement) {
    const Unbalanced unbalanced = findUnbalanced(statement);
    if (unbalanced.kind == Unbalanced::Kind::none)
        return;
    const std::string_view mark = statement.substr(unbalanced.at, 1);
    if (unbalanced.kind == Unbalanced::Kind::unclosedBrace)
        report(ruleOf("types.unclosed-brace"), Effect::other, mark,
               "this \"{\" is not closed, so the statement goes on to the end of the file");
    else if (unbalanced.kind == Unbalanced::Kind::surplusBrace)
        report(ruleOf("types.surplus-brace"), Effect::other, mark,
               "this \"}\" closes nothing, so the statement goes on behind its \";\"");
    else
        report(ruleOf("types.unclosed-quotes"), Effect::other, statement.substr(unbalanced.at, 2),
               "these doubled quotes are not closed, so the statement goes on to the end of the file");
}

/// The parser tells nothing of a ";" in a body that ends no statement.
void TypeCheck::checkEmptyStatements(std::string_view statement) {
    const std::size_t open = statement.find('{', statement.find('='));
    if (open == std::string_view::npos)
        return;
    const std::size_t close = std::min(statement.find('}', open), statement.size());
    std::size_t at = open + 1;
    const auto checkUpTo = [&](std::size_t end) {
        for (; at < end; ++at)
            if (statement[at] == ';')
                report(ruleOf("types.empty-statement"), Effect::other, statement.substr(at, 1),
                       "this \";\" ends no statement");
    };
    for (const std::string_view part : m_parts) {
        checkUpTo(offsetIn(statement, part));
        at = offsetIn(statement, part) + part.size();
        // A comment ends at its line end, and blanks alone are no statement.
        if (at < close && statement[at] == ';' && !stripped(part).empty() && part.front() != '#')
            ++at;
    }
    checkUpTo(close);
}

TypeCheck::FieldParts TypeCheck::partsOf(std::string_view statement) {
    FieldParts parts;
    parts.statement = statement;
    parts.hasDefault = statement.find('=') != std::string_view::npos;
    parts.defaultValue = statement;
    std::string_view declaration = text::cutAt(parts.defaultValue, '=');
    text::skipBlanks(declaration);
    const std::size_t word = firstWord(declaration).size();
    // The blank behind the word is cut with it.
    declaration.remove_prefix(word);
    text::skipBlanks(declaration);
    const std::size_t open = declaration.find('[');
    parts.hasCount = open != std::string_view::npos;
    parts.name = declaration.substr(0, open);
    if (!parts.hasCount)
        return parts;
    parts.count = declaration.substr(open + 1);
    const std::size_t close = parts.count.find(']');
    parts.isCountClosed = close != std::string_view::npos;
    if (parts.isCountClosed)
        parts.behindCount = parts.count.substr(close + 1);
    parts.count = parts.count.substr(0, close);
    return parts;
}

void TypeCheck::onFieldAdded(std::string_view statement, DataObjectField& field) {
    ++m_fieldsAdded;
    m_parts.push_back(statement);
    const FieldParts parts = partsOf(statement);
    m_lastDefault = parts.hasDefault ? parts.defaultValue : std::string_view();
    checkName(parts);
    checkCount(parts, field.getSize());
    checkDefault(parts);
    KnownType& type = m_types.find(m_typeName)->second;
    const auto [before, isNew] = type.fields.try_emplace(field.getName(), placeOf(stripped(statement)));
    if (!isNew)
        report(ruleOf("types.duplicate-field"), Effect::other, parts.name,
               "the type " + inQuotes(m_typeName) + " has a field " + inQuotes(field.getName()) + " already, in " +
                   nameOf(before->second));
    checkCircle(field.getType(), statement);
}

void TypeCheck::checkName(const FieldParts& parts) {
    const std::string_view name = parts.name;
    const std::string_view core = stripped(name);
    if (core.empty())
        report(ruleOf("types.field-without-name"), Effect::other, stripped(parts.statement), "this field has no name");
    else if (hasLineEnd(core))
        report(ruleOf("types.name-over-lines"), Effect::other, name,
               "the name of this field goes on over a line end: " + inQuotes(name));
    else if (hasBlank(core))
        report(ruleOf("types.blank-in-name"), Effect::other, name, "the name of this field is " + inQuotes(name));
    else if (core.size() < name.size())
        report(ruleOf("types.blank-behind-name"), Effect::other, name,
               "the name of this field is " + inQuotes(name) + ", not " + inQuotes(core));
    if (name.size() > limits::maxNameLength)
        report(ruleOf("types.name-too-long"), Effect::other, name,
               "the name of this field has " + std::to_string(name.size()) + " characters; 99 of them are kept");
}

void TypeCheck::checkCount(const FieldParts& parts, int size) {
    if (!parts.hasCount)
        return;
    const std::string_view count = parts.count;
    if (!parts.isCountClosed)
        report(ruleOf("types.count-not-closed"), Effect::other, count, "this count has no \"]\"");
    std::string_view behind = text::whiteSpace.skip(count);
    if (behind.starts_with('-') || behind.starts_with('+'))
        behind.remove_prefix(1);
    const std::size_t digits = std::min(behind.find_first_not_of("0123456789"), behind.size());
    if (digits == 0)
        report(ruleOf("types.count-reads-as-zero"), Effect::other, count, inQuotes(count) + " reads as 0");
    else if (size < 1)
        report(ruleOf("types.count-below-one"), Effect::other, count, "the count is " + std::to_string(size));
    else if (size > limits::maxElements)
        report(ruleOf("types.count-too-large"), Effect::other, count,
               inQuotes(count) + " is more than the 16777216 elements that an array can have");
    const std::string_view ignored[] = {stripped(behind.substr(digits)), stripped(parts.behindCount)};
    for (const std::string_view text : ignored)
        if (digits > 0 && !text.empty())
            report(ruleOf("types.text-behind-count"), Effect::none, text, inQuotes(text) + " is ignored");
    if (digits == 0 && !ignored[1].empty())
        report(ruleOf("types.text-behind-count"), Effect::none, ignored[1], inQuotes(ignored[1]) + " is ignored");
}

void TypeCheck::checkDefault(const FieldParts& parts) {
    const std::string_view value = parts.defaultValue;
    if (!parts.hasDefault || stripped(value).empty())
        return;
    const std::size_t from = m_file->source.offsetOf(value);
    const std::size_t to = from + value.size();
    for (const DroppedComment& comment : m_file->source.comments()) {
        if (comment.at < from || comment.at > to)
            continue;
        const std::string_view text = m_file->source.commentText(comment);
        if (text.find(';') == std::string_view::npos)
            continue;
        const std::size_t begin = m_file->source.commentOffset(comment);
        reportInFile(ruleOf("types.comment-in-default"), Effect::other, begin, begin + text.size(),
                     inQuotes(text) + " is a comment, so the default text goes on: it is " + inQuotes(value));
        return;
    }
    if (hasLineEnd(stripped(value)))
        report(ruleOf("types.default-over-lines"), Effect::other, stripped(value),
               "the default text goes on over a line end: it is " + inQuotes(value));
}

bool TypeCheck::contains(const std::string& outer, std::string_view inner) const {
    std::set<std::string, std::less<>> seen{outer};
    std::vector<std::string> open{outer};
    while (!open.empty()) {
        const auto type = m_types.find(open.back());
        open.pop_back();
        if (type == m_types.end())
            continue;
        for (const std::string& next : type->second.fieldTypes) {
            if (next == inner)
                return true;
            if (seen.insert(next).second)
                open.push_back(next);
        }
    }
    return false;
}

void TypeCheck::checkCircle(const std::string& fieldType, std::string_view statement) {
    if (fieldType == "string")
        return;
    // Only a type that exists can be part of others.
    if (m_isExtended && (fieldType == m_typeName || contains(fieldType, m_typeName)))
        report(ruleOf("types.circle"), Effect::other, stripped(statement),
               "the type " + inQuotes(m_typeName) + " is part of " + inQuotes(fieldType) +
                   " and so of itself; objects leave this field out");
    m_types.find(m_typeName)->second.fieldTypes.insert(fieldType);
}

void TypeCheck::onStatementIgnored(std::string_view statement) {
    const std::string_view text = stripped(statement);
    const std::string_view kept = m_file->source.kept();
    const std::size_t end = offsetIn(kept, statement) + statement.size();
    if (!text.empty())
        report(text.starts_with('#') ? ruleOf("types.no-comment") : ruleOf("types.statement-without-equals"),
               Effect::none, text, inQuotes(text) + " has no \"=\" and is ignored");
    else if (end < kept.size())
        report(ruleOf("types.empty-statement"), Effect::other, kept.substr(end, 1), "this \";\" ends no statement");
    // One that closes too much is reported already.
    if (findUnbalanced(statement).kind != Unbalanced::Kind::surplusBrace)
        checkNesting(statement);
}

/// On the same line.
bool TypeCheck::followsDefault(std::string_view statement) const {
    if (m_lastDefault.empty())
        return false;
    const std::size_t from = m_file->source.offsetOf(m_lastDefault);
    return !hasLineEnd(m_file->source.kept().substr(from, m_file->source.offsetOf(statement) - from));
}

void TypeCheck::onFieldIgnored(std::string_view statement) {
    m_parts.push_back(statement);
    const std::string_view text = stripped(statement);
    if (text.empty())
        return;
    std::string_view rest = statement;
    const std::string_view declaration = text::cutAt(rest, '=');
    const std::string_view word = firstWord(declaration);
    if (text.starts_with('#')) {
        report(ruleOf("types.no-comment"), Effect::none, text,
               "this \"#\" stands behind a blank, so everything up to the next \";\" is ignored");
    } else if (word.empty() || stripped(declaration) == word) {
        report(ruleOf("types.field-without-type"), Effect::none, text,
               inQuotes(text) + " is not a type and a name" +
                   (followsDefault(text) ? "; if it belongs to the default text before it: that ends at \";\"" : ""));
    } else {
        m_unknownTypes.push_back({m_file, text, word, !m_isExtended && word == m_typeName});
    }
}

void TypeCheck::reportUnknown(const UnknownType& field) {
    const std::string type = inQuotes(field.word);
    const auto declared = m_types.find(field.word);
    if (field.isInsideItself) {
        report(*field.file, ruleOf("types.type-inside-itself"), Effect::none, field.statement,
               "the type " + type + " cannot contain itself; the field is ignored");
    } else if (declared != m_types.end()) {
        const Place& place = declared->second.place;
        const std::string where = place.file == field.file
                                      ? "line " + std::to_string(place.position.line)
                                      : place.file->path + ":" + std::to_string(place.position.line);
        report(*field.file, ruleOf("types.field-type-declared-later"), Effect::none, field.statement,
               "the type " + type + " is declared later, in " + where + "; the field is ignored");
    } else {
        std::vector<std::string_view> candidates{"string"};
        for (const auto& [name, known] : m_types)
            candidates.push_back(name);
        const std::string_view plain = field.word.substr(0, field.word.find('['));
        const bool isKnown = std::find(candidates.begin(), candidates.end(), plain) != candidates.end();
        report(*field.file, ruleOf("types.unknown-field-type"), Effect::none, field.statement,
               "the type " + type + " is declared nowhere; the field is ignored" +
                   (isKnown ? "; a count stands behind the name" : suggestion(field.word, candidates)));
    }
}

void TypeCheck::onBodyTextIgnored(std::string_view text) {
    const std::string_view shown = stripped(text);
    const std::string_view kept = m_file->source.kept();
    const std::size_t from = m_file->source.offsetOf(m_typeName) + m_typeName.size();
    const std::size_t at = m_file->source.offsetOf(text);
    const bool isBehind = kept.substr(from, at - from).find('{') != std::string_view::npos;
    const std::size_t equals = shown.find('=');
    const bool isType = equals != std::string_view::npos && shown.find('{', equals) != std::string_view::npos &&
                        shown.substr(0, equals).find_first_of("{};") == std::string_view::npos;
    if (isBehind && isType)
        report(ruleOf("types.missing-semicolon"), Effect::none, shown,
               "this is ignored, because the type " + inQuotes(m_typeName) + " before it is not ended by \";\"");
    else if (isBehind)
        report(ruleOf("types.text-behind-brace"), Effect::none, shown,
               inQuotes(shown) + " stands behind the first \"}\" of the type " + inQuotes(m_typeName) +
                   " and is ignored");
    else if (text::blanks.skip(kept.substr(at + text.size())).starts_with('{'))
        report(ruleOf("types.text-before-brace"), Effect::none, shown, inQuotes(shown) + " is ignored");
    else
        report(ruleOf("types.body-without-braces"), Effect::none, shown,
               inQuotes(shown) + " is ignored, because it does not stand between \"{\" and \"}\"");
}

void TypeCheck::report(const Rule& rule, Effect effect, std::string_view part, const std::string& message) {
    report(*m_file, rule, effect, part, message);
}

void TypeCheck::report(const File& file, const Rule& rule, Effect effect, std::string_view part,
                       const std::string& message) {
    const SourceText& source = file.source;
    const std::size_t from = source.fileOffset(source.offsetOf(part));
    // A comment behind the last character is not part of it.
    const std::size_t to = part.empty() ? from : source.fileOffset(source.offsetOf(part) + part.size() - 1) + 1;
    m_findings.add({&rule, effect, file.path, source.positionInFile(from), source.positionInFile(to), message});
}

void TypeCheck::reportInFile(const Rule& rule, Effect effect, std::size_t from, std::size_t to,
                             const std::string& message) {
    const SourceText& source = m_file->source;
    m_findings.add({&rule, effect, m_file->path, source.positionInFile(from), source.positionInFile(to), message});
}

TypeCheck::Place TypeCheck::placeOf(std::string_view part) const {
    return {m_file, m_file->source.positionOf(part)};
}

std::string TypeCheck::nameOf(const Place& place) const {
    const std::string line = std::to_string(place.position.line);
    return place.file == m_file ? "line " + line : place.file->path + ":" + line;
}
