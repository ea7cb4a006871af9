#include "Verbs.h"

#include <orbel/foundation/text/Scanner.h>

#include <algorithm>

const std::vector<VerbText>& verbTexts() {
    static const std::vector<VerbText> verbs = {
        {"PATH", "PATH = VALUE; ...", "sets values: scene/title = Hello; tags[0-1] = red,green; lights/*/on = 1",
         Argument::none},
        {"C", "C TARGET = SOURCE; ...", "copies values or a node: C list[0-3] = other[2-5]", Argument::paths},
        {"L", "L TARGET = SOURCE; ...", "lets TARGET follow SOURCE, and ends all links that were before",
         Argument::paths},
        {"clear", "clear [PATH;...]", "empties values; without a path those of the whole tree", Argument::paths},
        {"create", "create KINDPATH",
         "creates what is missing: node:scene/string:title, Label:caption, Point[4]:points", Argument::kindPath},
        {"dump", "dump [PATH;...]", "prints what is at the paths, with ranges and keys; without one the whole tree",
         Argument::paths},
        {"get", "get PATH[INDEX]", "prints the values, one in a line", Argument::path},
        {"help", "help [VERB]", "prints this text, or that of one verb", Argument::verb},
        {"load", "load FILE|DIR", "reads types from a file *.qx or a folder of them, or runs the lines of another file",
         Argument::file},
        {"quit", "quit", "ends the shell", Argument::none},
        {"time", "time [COUNT] LINE",
         "runs a command or verb COUNT times and tells how long it took; several are not shown", Argument::line},
        {"types", "types [NAME]", "lists the types, or prints one", Argument::type},
        {"unwatch", "unwatch PATH", "ends a watch", Argument::path},
        {"watch", "watch [PATH]",
         "prints each change of a value, or of all below a node; without a path what is watched", Argument::path},
    };
    return verbs;
}

const VerbText* findVerb(std::string_view name) {
    const auto& verbs = verbTexts();
    const auto found =
        std::find_if(verbs.begin(), verbs.end(), [name](const VerbText& verb) { return verb.name == name; });
    return found == verbs.end() ? nullptr : &*found;
}

std::vector<std::string> verbNames() {
    std::vector<std::string> names;
    for (const VerbText& verb : verbTexts())
        if (verb.name.size() > 1 && verb.name != "PATH")
            names.emplace_back(verb.name);
    return names;
}

std::string_view cutVerb(std::string_view& rest) {
    text::skipBlanks(rest);
    const std::string_view word = rest.substr(0, text::blanks.findIn(rest));
    rest.remove_prefix(word.size());
    text::skipBlanks(rest);
    return word;
}

bool isMarked(std::string_view line) {
    const std::string_view word = cutVerb(line);
    return (word == "C" || word == "L") && !line.empty() && line.front() != '=';
}

bool isVerbLine(std::string_view line) {
    std::string_view rest = line;
    const std::string_view word = cutVerb(rest);
    if ((word == "time" || word == "0") && !rest.empty() && rest.front() != '=')
        return true;
    // Everything else that is printed or read is named by a path, which holds no "=".
    return line.find('=') == std::string_view::npos && !isMarked(line);
}
