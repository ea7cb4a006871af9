#include "Shell.h"

#include "../Nearest.h"
#include "TreePaths.h"
#include "Verbs.h"

#include <orbel/foundation/text/Scanner.h>
#include <orbel/tree/CommandText.h>
#include <orbel/tree/DataObject.h>
#include <orbel/tree/DataValue.h>
#include <orbel/types/DataObjectType.h>
#include <orbel/types/DataObjectTypesTable.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <optional>
#include <ostream>
#include <sstream>
#include <system_error>
#include <utility>

namespace {

/// A file that loads itself would go on until memory is used up.
constexpr int mostFilesOpen = 16;

enum class Kind { set, copy, link };

/// A line of commands, without the letter that tells what they do.
struct Commands {
    Kind kind = Kind::set;
    std::vector<std::string> pieces;
};

Commands readCommands(std::string_view line) {
    Commands commands;
    std::string_view list = line;
    const std::string_view mark = isMarked(line) ? cutVerb(list) : "";
    if (!mark.empty())
        commands.kind = mark == "C" ? Kind::copy : Kind::link;
    text::ListScanner pieces(list);
    pieces.skipBlanks();
    for (; !pieces.atEnd(); pieces.skipBlanks())
        commands.pieces.emplace_back(pieces.cut(';'));
    return commands;
}

effects::Complaints check(DataNode& root, Kind kind, const std::string& piece) {
    switch (kind) {
    case Kind::copy:
        return effects::ofCopy(root, piece);
    case Kind::link:
        return effects::ofLink(root, piece);
    default:
        return effects::ofSet(root, piece);
    }
}

void execute(Orbel& root, Kind kind, std::string piece) {
    switch (kind) {
    case Kind::copy:
        root.executeCopyCommand(piece.data());
        break;
    case Kind::link:
        root.executeLinkCommand(piece.data());
        break;
    default:
        root.executeCommand(piece.data(), 0);
    }
}

/// Before its first piece.
void begin(Orbel& root, Kind kind) {
    // Hosts rely on it: a list of links replaces all there are.
    if (kind == Kind::link)
        root.ClearLinks();
}

/// A line "~" ends a frame in the files of commands that hosts read.
bool isComment(std::string_view line) {
    return line == "~" || (line.substr(0, 1) == "#" && (line.size() == 1 || text::whiteSpace.contains(line[1])));
}

std::string timeText(double seconds) {
    const std::pair<double, const char*> units[] = {{1.0, " s"}, {1e-3, " ms"}, {1e-6, " us"}};
    std::ostringstream text;
    text << std::setprecision(3);
    for (const auto& [unit, name] : units)
        if (seconds >= unit) {
            text << (seconds >= 100 * unit ? std::setprecision(4) : std::setprecision(3)) << seconds / unit << name;
            return text.str();
        }
    text << seconds / 1e-9 << " ns";
    return text.str();
}

std::string noVerb(const std::string& name) {
    const std::string meant = suggestionFor(name, verbNames());
    return "no verb " + name + (meant.empty() ? "; commands are PATH = VALUE, and help lists the verbs" : meant);
}

/// What is written while this exists goes nowhere.
class Muted {
public:
    explicit Muted(std::ostream& os) : m_os(os), m_before(os.rdbuf(nullptr)) {}
    Muted(const Muted&) = delete;
    Muted& operator=(const Muted&) = delete;
    ~Muted() { m_os.rdbuf(m_before); }

private:
    std::ostream& m_os;
    std::streambuf* m_before;
};

/// The indices that a range text selects of so many values.
std::vector<int> indicesOf(std::string_view ranges, int size) {
    std::vector<int> indices;
    while (!ranges.empty()) {
        const text::IndexRange range = text::readIndexRange(ranges);
        const int last = std::min(std::max(range.start, range.end), size - 1);
        for (int index = std::max(range.start, 0); index <= last; ++index)
            indices.push_back(index);
    }
    return indices;
}

} // namespace

Shell::Shell(LiveTree& tree, std::ostream& out, Complain complain)
    : m_tree(tree), m_out(out), m_complain(std::move(complain)),
      m_watches(tree.root(), [this](const std::string& line) { m_out << line << '\n'; }) {}

bool Shell::run(std::string_view line) {
    const std::size_t before = m_complaints;
    runLine(text::whiteSpace.dropEnd(text::whiteSpace.skip(line)));
    m_watches.refresh();
    return m_complaints == before;
}

bool Shell::runLines(std::istream& lines, const std::string& name) {
    const std::size_t before = m_complaints;
    const std::string outer = m_place;
    std::string line;
    for (int number = 1; !m_hasQuit && std::getline(lines, line); ++number) {
        m_place = name + ':' + std::to_string(number) + ": ";
        run(line);
    }
    m_place = outer;
    return m_complaints == before;
}

void Shell::runLine(std::string_view line) {
    if (line.empty() || isComment(line))
        return;
    if (isVerbLine(line))
        runVerb(line);
    else
        runCommands(line);
}

void Shell::runVerb(std::string_view line) {
    std::string_view rest = line;
    const std::string verb(cutVerb(rest));
    const std::string arguments(rest);
    if (verb == "clear")
        clear(arguments);
    else if (verb == "create")
        create(arguments);
    else if (verb == "dump")
        dump(arguments);
    else if (verb == "get")
        get(arguments);
    else if (verb == "help")
        help(arguments);
    else if (verb == "load")
        load(arguments);
    else if (verb == "quit")
        m_hasQuit = true;
    else if (verb == "0")
        complain("there is no host here for " + arguments);
    else if (verb == "time")
        time(rest);
    else if (verb == "types")
        types(arguments);
    else if (verb == "unwatch")
        unwatch(arguments);
    else if (verb == "watch")
        watch(arguments);
    else
        complain(paths::fieldsAt(m_tree.root(), std::string(line)).empty()
                     ? noVerb(verb)
                     : std::string(line) + " is a path: dump prints it, PATH = VALUE sets it");
}

void Shell::runCommands(std::string_view line) {
    const Commands commands = readCommands(line);
    begin(m_tree.root(), commands.kind);
    for (const std::string& piece : commands.pieces) {
        complain(check(m_tree.root(), commands.kind, piece));
        // Also what nothing is to be expected of, for what a link or a wildcard makes of it is the library's business.
        execute(m_tree.root(), commands.kind, piece);
    }
}

void Shell::complain(const std::string& complaint) {
    ++m_complaints;
    m_complain(m_place + complaint);
}

void Shell::complain(const effects::Complaints& complaints) {
    for (const std::string& complaint : complaints)
        complain(complaint);
}

void Shell::clear(const std::string& list) {
    complain(effects::ofClear(m_tree.root(), list));
    m_tree.root().executeClearCommand(std::string(list).data());
}

void Shell::create(const std::string& path) {
    if (path.empty())
        complain("create what? create node:scene/string:title");
    else if (!m_tree.root().getField(std::string(path).data(), 0, 1))
        complain(effects::nothingAt(m_tree.root(), path));
}

void Shell::dump(const std::string& list) {
    if (list.empty()) {
        m_out << m_tree.dump("");
        return;
    }
    for (std::string_view rest = list; !rest.empty();) {
        const std::string path(text::trim(text::cutAt(rest, ';')));
        const std::string text = path.empty() ? path : m_tree.dump(path);
        m_out << text;
        if (text.empty() && !path.empty())
            complain(effects::nothingAt(m_tree.root(), AddressedRange(path).path));
    }
}

void Shell::get(const std::string& path) {
    const AddressedRange address(path);
    const std::string whole(address.path);
    DataField* field = m_tree.root().getField(std::string(whole).data(), 0, 1);
    if (!field) {
        complain(effects::nothingAt(m_tree.root(), whole));
        return;
    }
    if (paths::isNode(*field)) {
        complain(whole + " is a node; dump shows it");
        return;
    }
    const std::string all = "0-" + std::to_string(field->getSize() - 1);
    const std::vector<int> indices = indicesOf(address.range.value_or(all), field->getSize());
    if (indices.empty())
        complain(whole + " has no value [" + std::string(*address.range));
    for (const int index : indices)
        m_out << *field->getData(index) << '\n';
}

void Shell::help(const std::string& name) {
    const VerbText* wanted = findVerb(name);
    if (!name.empty() && !wanted) {
        complain(noVerb(name));
        return;
    }
    if (wanted) {
        m_out << wanted->usage << '\n' << "    " << wanted->help << '\n';
        return;
    }
    for (const VerbText& verb : verbTexts())
        m_out << std::left << std::setw(22) << std::setfill(' ') << verb.usage << ' ' << verb.help << '\n';
}

void Shell::load(const std::string& path) {
    std::error_code unknown;
    if (std::filesystem::is_directory(path, unknown) || path.ends_with(".qx")) {
        if (!LiveTree::addTypes(path))
            complain("cannot read types from " + path);
        return;
    }
    std::ifstream file(path);
    if (!file) {
        complain("cannot read " + path);
        return;
    }
    if (m_filesOpen == mostFilesOpen) {
        complain("too many files load each other: " + path);
        return;
    }
    ++m_filesOpen;
    runLines(file, path);
    --m_filesOpen;
}

void Shell::time(std::string_view line) {
    std::string_view rest = line;
    const std::string_view word = cutVerb(rest);
    int runs = 1;
    const bool isCounted = !word.empty() && word.find_first_not_of("0123456789") == std::string_view::npos;
    if (isCounted) {
        runs = std::max(text::readNumber(word), 1);
        line = rest;
    }
    if (line.empty()) {
        complain("time what? time 1000 scene/title = Hello");
        return;
    }
    // What is checked before a command runs is not its cost.
    const Commands commands = isVerbLine(line) ? Commands() : readCommands(line);
    for (const std::string& piece : commands.pieces)
        complain(check(m_tree.root(), commands.kind, piece));
    std::optional<Muted> muted;
    if (runs > 1)
        muted.emplace(m_out);
    const auto start = std::chrono::steady_clock::now();
    for (int run = 0; run < runs && !m_hasQuit; ++run) {
        if (commands.pieces.empty())
            runVerb(line);
        begin(m_tree.root(), commands.kind);
        for (const std::string& piece : commands.pieces)
            execute(m_tree.root(), commands.kind, piece);
    }
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
    muted.reset();
    m_out << timeText(elapsed.count());
    if (isCounted)
        m_out << ", " << timeText(elapsed.count() / runs) << " each";
    m_out << '\n';
}

void Shell::types(const std::string& name) {
    if (name.empty()) {
        std::vector<std::string> names = paths::typeNames();
        std::sort(names.begin(), names.end());
        for (const std::string& each : names)
            m_out << each << '\n';
        return;
    }
    DataObjectType* type = DataObject::getObjectTypeByName(std::string(name).data());
    if (!type) {
        complain("no type " + name + suggestionFor(name, paths::typeNames()));
        return;
    }
    m_out << "Type " << name << " {\n";
    type->dumpSpec(m_out, DataObject::s_tTypes, 1);
    m_out << "};\n" << std::setfill(' ');
}

void Shell::unwatch(const std::string& path) {
    if (!m_watches.remove(path))
        complain(path + " is not watched" + suggestionFor(path, m_watches.paths()));
}

void Shell::watch(const std::string& path) {
    if (path.empty()) {
        for (const std::string& watched : m_watches.paths())
            m_out << watched << '\n';
        return;
    }
    if (!m_watches.add(path))
        complain(effects::nothingAt(m_tree.root(), path));
}
