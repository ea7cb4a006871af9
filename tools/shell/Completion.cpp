#include "Completion.h"

#include "TreePaths.h"
#include "Verbs.h"

#include <orbel/foundation/text/Scanner.h>
#include <orbel/tree/DataArray.h>
#include <orbel/tree/DataHashTable.h>

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace {

using Texts = std::vector<std::string>;

void addMatching(Texts& texts, std::string_view written, std::string text) {
    if (text.starts_with(written))
        texts.push_back(std::move(text));
}

/// A name, and what shows how it goes on.
void addChild(Texts& texts, std::string_view written, DataField& child) {
    std::string name = child.getName();
    if (!paths::isNode(child)) {
        addMatching(texts, written, name);
        return;
    }
    const bool isArray = child.isOfType(DataArray::getClassType()) != 0;
    addMatching(texts, written, name + (isArray ? '[' : '/'));
}

Texts bracketsOf(DataField& field) {
    Texts brackets;
    if (DataHashTable* table = paths::asTable(field)) {
        for (const std::string& key : paths::childNames(*table))
            brackets.push_back('[' + key + "]/");
        return brackets;
    }
    const bool isNode = paths::isNode(field);
    if (isNode && field.isOfType(DataArray::getClassType()) == 0)
        return brackets;
    for (int index = 0; index < field.getSize(); ++index)
        brackets.push_back('[' + std::to_string(index) + (isNode ? "]/" : "]"));
    return brackets;
}

/// The node that all segments but the last lead to; null when there is none.
DataNode* nodeOf(DataNode& root, std::string_view path) {
    DataNode* node = &root;
    while (node && path.find('/') != std::string_view::npos)
        node = paths::stepInto(*node, text::cutAt(path, '/'));
    return node;
}

Texts completePath(DataNode& root, std::string_view path) {
    Texts texts;
    DataNode* node = nodeOf(root, path);
    if (!node)
        return texts;
    const std::size_t slash = path.rfind('/');
    const std::string before(path.substr(0, slash == std::string_view::npos ? 0 : slash + 1));
    const std::string_view written = path.substr(before.size());
    const std::size_t bracket = written.find('[');
    if (bracket != std::string_view::npos) {
        const std::string name(written.substr(0, bracket));
        if (DataField* field = node->getField(std::string(name).data(), 0, 0))
            for (const std::string& brackets : bracketsOf(*field))
                addMatching(texts, written, name + brackets);
    } else {
        std::vector<DataField*> children;
        node->getFieldsVector(&children);
        for (DataField* child : children)
            addChild(texts, written, *child);
    }
    for (std::string& text : texts)
        text.insert(0, before);
    return texts;
}

Texts completeKindPath(DataNode& root, std::string_view path) {
    Texts texts = completePath(root, path);
    const std::size_t slash = path.rfind('/');
    const std::string before(path.substr(0, slash == std::string_view::npos ? 0 : slash + 1));
    for (const char* kind : {"string:", "node:", "DataHashTable:"})
        addMatching(texts, path, before + kind);
    for (const std::string& type : paths::typeNames())
        addMatching(texts, path, before + type + ':');
    return texts;
}

Texts completeFile(std::string_view written) {
    Texts texts;
    const std::size_t slash = written.rfind('/');
    const std::string before(written.substr(0, slash == std::string_view::npos ? 0 : slash + 1));
    std::error_code unreadable;
    for (const auto& entry : std::filesystem::directory_iterator(before.empty() ? "." : before, unreadable)) {
        std::error_code unknown;
        const std::string end = entry.is_directory(unknown) ? "/" : "";
        addMatching(texts, written, before + entry.path().filename().string() + end);
    }
    return texts;
}

Texts namesMatching(std::string_view written, const Texts& names, const std::string& end) {
    Texts texts;
    for (const std::string& name : names)
        addMatching(texts, written, name + end);
    return texts;
}

Texts completeArgument(DataNode& root, Argument argument, std::string_view written) {
    switch (argument) {
    case Argument::path:
    case Argument::paths:
        return completePath(root, written);
    case Argument::kindPath:
        return completeKindPath(root, written);
    case Argument::type:
        return namesMatching(written, paths::typeNames(), "");
    case Argument::verb:
        return namesMatching(written, verbNames(), "");
    case Argument::file:
        return completeFile(written);
    default:
        return {};
    }
}

/// Behind the last of these characters, and the blanks that follow it.
std::size_t startBehind(std::string_view line, std::string_view ends, std::size_t from) {
    const std::size_t found = line.find_last_of(ends);
    std::size_t start = found == std::string_view::npos || found < from ? from : found + 1;
    while (start < line.size() && text::blanks.findIn(line.substr(start, 1)) == 0)
        ++start;
    return start;
}

/// What may be set: most of it is there, so kinds are offered only to those who have begun one.
Texts completeTarget(DataNode& root, std::string_view path) {
    const bool hasBegun = !path.empty() && path.back() != '/';
    return hasBegun ? completeKindPath(root, path) : completePath(root, path);
}

Completions completeCommand(DataNode& root, std::string_view line, std::size_t from) {
    const std::size_t start = startBehind(line, ";{", from);
    Completions completions{start, {}};
    if (line.find('=', start) == std::string_view::npos)
        completions.texts = completeTarget(root, line.substr(start));
    return completions;
}

Completions completeFrom(DataNode& root, std::string_view line, std::size_t from) {
    std::string_view rest = line.substr(from);
    text::skipBlanks(rest);
    const std::size_t wordStart = line.size() - rest.size();
    const std::string_view word = cutVerb(rest);
    const std::size_t behind = line.size() - rest.size();
    if (wordStart + word.size() == line.size()) {
        Completions completions = completeCommand(root, line, wordStart);
        if (completions.start == wordStart) {
            const Texts verbs = namesMatching(word, verbNames(), " ");
            completions.texts.insert(completions.texts.begin(), verbs.begin(), verbs.end());
        }
        return completions;
    }
    const VerbText* verb = findVerb(word);
    if (!verb || rest.substr(0, 1) == "=")
        return completeCommand(root, line, wordStart);
    if (verb->argument == Argument::line) {
        std::string_view counted = rest;
        const std::string_view count = cutVerb(counted);
        const bool isCount = !count.empty() && count.find_first_not_of("0123456789") == std::string_view::npos;
        return completeFrom(root, line, isCount ? line.size() - counted.size() : behind);
    }
    const std::string_view ends = verb->argument == Argument::paths ? ";=~" : "";
    const std::size_t start = startBehind(line, ends, behind);
    return {start, completeArgument(root, verb->argument, line.substr(start))};
}

} // namespace

Completions completeLine(DataNode& root, std::string_view line) {
    Completions completions = completeFrom(root, line, 0);
    std::sort(completions.texts.begin(), completions.texts.end());
    completions.texts.erase(std::unique(completions.texts.begin(), completions.texts.end()), completions.texts.end());
    return completions;
}
