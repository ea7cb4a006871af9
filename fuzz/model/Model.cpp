#include "Model.h"

#include <algorithm>
#include <cctype>

namespace model {

namespace {

constexpr int maxCommandDepth = 64;

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

std::string skipBlanks(const std::string& text) {
    std::size_t at = 0;
    while (at < text.size() && isBlank(text[at]))
        ++at;
    return text.substr(at);
}

std::string trim(const std::string& text) {
    std::string trimmed = skipBlanks(text);
    while (!trimmed.empty() && (trimmed.back() == ' ' || trimmed.back() == '\t'))
        trimmed.pop_back();
    return trimmed;
}

/// At `separator` outside braces.
std::vector<std::string> splitOutsideBraces(const std::string& text, char separator) {
    std::vector<std::string> parts;
    std::string part;
    int depth = 0;
    for (const char c : text) {
        depth += c == '{' ? 1 : c == '}' ? -1 : 0;
        if (c == separator && depth == 0) {
            parts.push_back(part);
            part.clear();
        } else {
            part += c;
        }
    }
    if (!part.empty())
        parts.push_back(part);
    return parts;
}

/// What stands between the first "{" and its "}", or the end of the text.
std::optional<std::string> braceGroup(const std::string& text) {
    const std::size_t open = text.find('{');
    if (open == std::string::npos)
        return std::nullopt;
    int depth = 0;
    for (std::size_t at = open; at < text.size(); ++at) {
        depth += text[at] == '{' ? 1 : text[at] == '}' ? -1 : 0;
        if (depth == 0)
            return text.substr(open + 1, at - open - 1);
    }
    return text.substr(open + 1);
}

/// What follows the last "[" of a path that ends with "]".
std::optional<std::string> indexTextOf(const std::string& path) {
    const std::size_t bracket = path.rfind('[');
    if (path.empty() || path.back() != ']' || bracket == std::string::npos)
        return std::nullopt;
    return path.substr(bracket + 1);
}

/// A path and, apart from it, the range behind it.
struct Address {
    explicit Address(const std::string& text) : path(trim(text)), range(indexTextOf(path)) {
        if (range)
            path.resize(path.rfind('['));
    }

    std::string path;
    std::optional<std::string> range;
};

const std::string* pointerTo(const std::optional<std::string>& text) {
    return text ? &*text : nullptr;
}

std::string lowered(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::tolower(c); });
    return text;
}

int readNumber(const std::string& text) {
    const std::string digits = skipBlanks(text);
    if (digits.empty() || !std::isdigit(static_cast<unsigned char>(digits[0])))
        return -1;
    return std::stoi(digits);
}

/// The tokens of a value: what commas separate.
std::vector<std::string> tokensOf(const std::string& text) {
    std::vector<std::string> tokens;
    for (std::string rest = text; !skipBlanks(rest).empty();) {
        rest = skipBlanks(rest);
        const std::size_t comma = rest.find(',');
        tokens.push_back(rest.substr(0, comma));
        rest = comma == std::string::npos ? "" : rest.substr(comma + 1);
    }
    return tokens;
}

} // namespace

std::vector<Range> readRanges(const std::string& text) {
    std::vector<Range> ranges;
    for (const std::string& part : splitOutsideBraces(text, ',')) {
        const std::size_t dash = part.find('-');
        ranges.push_back(
            {readNumber(part.substr(0, dash)), dash == std::string::npos ? -1 : readNumber(part.substr(dash + 1))});
    }
    return ranges;
}

int Field::size() const {
    if (kind == Kind::Value)
        return static_cast<int>(texts.size());
    return kind == Kind::Array ? static_cast<int>(elements.size()) : 1;
}

Model::Model(int handlerCount) : handlers(static_cast<std::size_t>(handlerCount)) {
    make(Kind::Structure, "root").isRoot = true;
}

Field& Model::make(Kind kind, const std::string& name) {
    auto field = std::make_unique<Field>();
    field->id = static_cast<int>(fields.size());
    field->kind = kind;
    field->name = name;
    if (kind == Kind::Value)
        field->texts.assign(1, " ");
    fields.push_back(std::move(field));
    return *fields.back();
}

/// A field leaves its parent alone when it is destroyed: its place stays.
void Model::kill(Field& field) {
    field.isAlive = false;
    for (const auto& other : fields)
        if (other->isAlive)
            for (auto& [name, child] : other->children)
                if (child == &field)
                    child = nullptr;
    unregisterAll(field);
    removeSource(field);
    removeTargets(field);
}

Field* Model::parentOf(const Field& field) const {
    return field.parent && field.parent->isAlive ? field.parent : nullptr;
}

bool Model::isElement(const Field& field) const {
    return std::any_of(field.owners.begin(), field.owners.end(), [&](const Field* owner) {
        return owner && std::find(owner->elements.begin(), owner->elements.end(), &field) != owner->elements.end();
    });
}

bool Model::isBelow(Field& field, const Field& above) const {
    for (Field* at = &field; at; at = parentOf(*at))
        if (at == &above)
            return true;
    return false;
}

bool Model::isWithin(const Field& field, const Field& above) const {
    return &field == &above || std::any_of(above.elements.begin(), above.elements.end(), [&](const Field* element) {
        return element && isWithin(field, *element);
    }) || std::any_of(above.children.begin(), above.children.end(), [&](const auto& child) {
        return child.second && isWithin(field, *child.second);
    });
}

std::string Model::fullPath(Field& field) const {
    std::vector<Field*> chain;
    for (Field* at = &field; at && chain.size() < 30; at = parentOf(*at))
        chain.insert(chain.begin(), at);
    std::string path;
    for (std::size_t at = 1; at < chain.size(); ++at) {
        if (chain[at]->isRoot)
            continue;
        path += (path.empty() ? "" : "/") + chain[at]->name;
        if (chain[at]->kind == Kind::Array && at + 1 < chain.size()) {
            path += '[' + std::to_string(chain[at + 1]->instance) + ']';
            ++at;
        }
    }
    return path;
}

std::string Model::dump(Field& field) {
    std::string out;
    int level = 0;
    dump(field, true, out, level);
    return out;
}

void Model::dump(Field& field, bool withName, std::string& out, int& level) {
    const auto indent = [&] { out.append(static_cast<std::size_t>(std::max(level, 0)), '\t'); };
    const int last = field.size() - 1;
    const std::string range = last < 1 ? "" : "[0-" + std::to_string(last) + "]";
    if (field.kind == Kind::Value) {
        out += field.name + range + '=';
        for (int index = 0; index <= last; ++index)
            out += (index == 0 ? "" : ",") + field.texts[static_cast<std::size_t>(index)];
        out += ';';
        return;
    }
    if (field.kind == Kind::Array) {
        if (withName) {
            indent();
            out += field.name + range + '=';
        }
        out += "{\n";
        if (last >= 0)
            ++level;
        for (Field* element : field.elements) {
            dump(*element, false, out, level);
            out += element == field.elements.back() ? "\n" : ",\n";
        }
        --level;
        indent();
        out += "};\n";
        return;
    }
    indent();
    out += withName ? field.name + " ={\n" : "{\n";
    ++level;
    for (const auto& [name, child] : field.children) {
        if (!child)
            continue;
        if (!child->isNode())
            indent();
        dump(*child, true, out, level);
        out += '\n';
    }
    --level;
    indent();
    out += '}';
}

void Model::setSize(Field& field, int size) {
    if (field.kind == Kind::Value && size > field.size())
        field.texts.resize(static_cast<std::size_t>(size));
    while (field.kind == Kind::Array && field.size() < size) {
        const int index = field.size();
        const std::string stem = field.type ? field.type->name + "-#" : "Item-#";
        Field& element = make(Kind::Object, stem + std::to_string(index));
        setType(element, field.type);
        field.elements.push_back(&element);
        element.parent = &field;
        element.instance = index;
        ref(element, &field);
    }
}

/// To the followers first, by position. False when the field has died meanwhile.
bool Model::passOn(Field& field, const std::function<void(Field&)>& call) {
    for (std::size_t at = 0; field.isAlive && at < field.targets.size(); ++at)
        call(*field.targets[at]);
    return field.isAlive;
}

bool Model::storeAt(Field& field, const std::string& text, int index) {
    std::string& stored = field.texts[static_cast<std::size_t>(index)];
    const bool changed = field.asking < 1 || stored != text;
    stored = text;
    return changed;
}

void Model::setData(Field& field, const std::string& text) {
    if (!passOn(field, [&](Field& target) { setData(target, text); }) || field.isNode())
        return;
    field.isInitialized = true;
    fire(field, storeAt(field, text, 0));
}

void Model::setData(Field& field, const std::string& text, int index) {
    if (!passOn(field, [&](Field& target) { setData(target, text, index); }) || field.isNode())
        return;
    if (index < 0 || index >= field.size())
        return;
    field.isInitialized = true;
    fire(field, storeAt(field, text, index), index, 0);
}

void Model::setData(Field& field, const std::vector<std::string>& texts, int from, int to) {
    if (!passOn(field, [&](Field& target) { setData(target, texts, from, to); }) || field.isNode())
        return;
    field.isInitialized = true;
    const int size = field.size();
    const int count = static_cast<int>(texts.size());
    int last = to == -1 ? from + count - 1 : std::min(to, size + from - 1);
    if (from >= size)
        return;
    last = std::min(last, size - 1);
    bool changed = field.asking < 1;
    for (int index = from; index <= last; ++index)
        changed |= storeAt(field, texts[static_cast<std::size_t>(std::min(index - from, count - 1))], index);
    fire(field, changed, from, last);
}

void Model::clearData(Field& field) {
    const int size = field.size();
    if (field.kind == Kind::Value && size == 1) {
        setData(field, "");
    } else if (field.kind == Kind::Value) {
        for (int index = 0; index < size && field.isAlive; ++index)
            setData(field, "", index);
    } else if (field.kind == Kind::Array) {
        for (std::size_t at = 0; field.isAlive && at < field.elements.size(); ++at)
            clearData(*field.elements[at]);
    } else {
        std::optional<std::string> last;
        while (Field* child = field.isAlive ? nextChild(field, last) : nullptr)
            clearData(*child);
    }
}

bool Model::copyData(Field& field, Field* source, int sourceIndex, int targetIndex, int count) {
    if (!source)
        return false;
    if (field.kind == Kind::Value) {
        if (source->kind != Kind::Value)
            return false;
        const int both = std::min(field.size(), source->size());
        count = count < 0 ? both : std::min(count, both);
        count = std::max(0, std::min({count, source->size() - sourceIndex, field.size() - targetIndex}));
        bool changed = false;
        const std::vector<std::string> from = source->texts;
        for (int done = 0; done < count; ++done) {
            std::string& stored = field.texts[static_cast<std::size_t>(targetIndex + done)];
            const std::string& text = from[static_cast<std::size_t>(sourceIndex + done)];
            changed |= stored != text;
            stored = text;
        }
        field.isInitialized = true;
        fire(field, changed, targetIndex, targetIndex + count - 1);
        return true;
    }
    if (field.kind == Kind::Array) {
        if (source->kind != Kind::Array)
            return false;
        const int both = std::min(field.size(), source->size());
        for (int at = 0; at < both && field.isAlive && source->isAlive; ++at)
            if (at < field.size())
                copyData(*field.elements[static_cast<std::size_t>(at)],
                         at < source->size() ? source->elements[static_cast<std::size_t>(at)] : nullptr, 0, 0, -1);
        return true;
    }
    if (!source->isStructure())
        return false;
    std::optional<std::string> last;
    while (Field* child = field.isAlive && source->isAlive ? nextChild(*source, last) : nullptr)
        if (Field* target = find(field, *last, 0, true))
            copyData(*target, child, 0, 0, -1);
    return true;
}

void Model::tell(Field& field, const std::function<void(int)>& call) {
    for (std::size_t at = 0; field.isAlive && at < field.handlers.size(); ++at)
        if (field.handlers[at] != Field::marker)
            call(field.handlers[at]);
}

void Model::fire(Field& field, bool changed) {
    if (field.isInitialized)
        tell(field, [&](int handler) { heard(handler, field, changed ? "changed" : "same"); });
}

void Model::fire(Field& field, bool changed, int from, int to) {
    if (field.size() == 1) {
        fire(field, changed);
        return;
    }
    const std::string range = ' ' + std::to_string(from) + '-' + std::to_string(std::max(from, to));
    if (field.isInitialized)
        tell(field, [&](int handler) { heard(handler, field, (changed ? "changed" : "same") + range); });
}

void Model::fireType(Field& field, const std::string& name) {
    tell(field, [&](int handler) { heard(handler, field, "type " + name); });
}

void Model::recount(Field& field) {
    field.asking = static_cast<int>(std::count_if(field.handlers.begin(), field.handlers.end(), [&](int handler) {
        return handler != Field::marker && handlers[static_cast<std::size_t>(handler)].asks;
    }));
}

void Model::tellOfJoining(Field& field) {
    fire(field, false, 0, field.size() - 1);
}

void Model::mark(Field& field) {
    if (std::find(field.handlers.begin(), field.handlers.end(), Field::marker) != field.handlers.end())
        return;
    field.handlers.push_back(Field::marker);
    recount(field);
    tellOfJoining(field);
}

void Model::registerHandler(Field& field, int handler) {
    handlers[static_cast<std::size_t>(handler)].field = &field;
    const bool joins = std::find(field.handlers.begin(), field.handlers.end(), handler) == field.handlers.end();
    if (joins)
        field.handlers.push_back(handler);
    recount(field);
    if (joins)
        tellOfJoining(field);
}

void Model::unregisterHandler(Field& field, int handler) {
    const auto found = std::find(field.handlers.begin(), field.handlers.end(), handler);
    if (found == field.handlers.end())
        return;
    field.handlers.erase(found);
    handlers[static_cast<std::size_t>(handler)].field = nullptr;
    recount(field);
}

void Model::unregisterAll(Field& field) {
    for (const int handler : field.handlers)
        if (handler != Field::marker)
            handlers[static_cast<std::size_t>(handler)].field = nullptr;
    field.handlers.clear();
    recount(field);
}

void Model::destroyHandler(int handler) {
    for (const auto& field : fields) {
        const auto found = std::find(field->handlers.begin(), field->handlers.end(), handler);
        if (found == field->handlers.end())
            continue;
        field->handlers.erase(found);
        recount(*field);
    }
    handlers[static_cast<std::size_t>(handler)] = {false, false, nullptr};
}

bool Model::registerByPath(Field& node, const std::string& path, int handler, int index) {
    if (node.kind == Kind::Object)
        return registerInObject(node, path, handler, index);
    if (node.kind == Kind::Structure)
        return registerInStructure(node, path, handler, index);
    return index >= 0 && index < node.size() &&
           registerByPath(*node.elements[static_cast<std::size_t>(index)], path, handler, 0);
}

bool Model::registerInStructure(Field& node, const std::string& path, int handler, int index) {
    Field* found = find(node, path, index, true);
    if (!node.isAlive)
        return false;
    if (!found)
        found = childOf(node, path);
    if (Field* old = handlers[static_cast<std::size_t>(handler)].field) {
        if (old == found)
            return true;
        unregisterHandler(*old, handler);
        if (old->handlers.empty() && (found || !isWithin(node, *old))) {
            if (Field* parent = parentOf(*old))
                removeField(*parent, old->name, -1);
            if (!found) {
                old->name = path;
                addField(node, *old, index);
                found = old;
            }
            registerHandler(*found, handler);
            return true;
        }
    }
    if (!found) {
        found = &make(Kind::Value, path);
        addField(node, *found, index);
    }
    registerHandler(*found, handler);
    return true;
}

bool Model::registerInObject(Field& node, const std::string& path, int handler, int index) {
    Field* found = find(node, path, index, true);
    Field* old = handlers[static_cast<std::size_t>(handler)].field;
    if (found) {
        if (old == found)
            return true;
        if (old) {
            unregisterHandler(*old, handler);
            Field* parent = parentOf(*old);
            if (old != &node && old->handlers.empty() && parent)
                removeField(*parent, old->name, index);
        }
        registerHandler(*found, handler);
        return true;
    }
    for (Field* above = node.isAlive ? parentOf(node) : nullptr; above; above = parentOf(*above)) {
        const bool hasPath = find(*above, path, index, true) != nullptr;
        if (!above->isAlive)
            break;
        if (hasPath || above->isRoot)
            return registerByPath(*above, path, handler, index);
    }
    if (Field* last = handlers[static_cast<std::size_t>(handler)].field)
        unregisterHandler(*last, handler);
    return false;
}

bool Model::unregisterByNode(Field& node, int handler) {
    Field* field = handlers[static_cast<std::size_t>(handler)].field;
    if (!field)
        return false;
    unregisterHandler(*field, handler);
    if (node.kind != Kind::Structure)
        return true;
    Field* parent = parentOf(*field);
    if (!field->handlers.empty() || !parent)
        return true;
    removeField(*parent, field->name, field->instance);
    disposeIfUnused(*field);
    return true;
}

void Model::ref(Field& field, const Field* owner) {
    ++field.referenceCalls;
    if (field.owners.insert(owner).second)
        ++field.references;
}

void Model::unref(Field& field, const Field* owner) {
    field.referenceCalls = std::max(0, field.referenceCalls - 1);
    if (field.owners.erase(owner) != 0)
        field.references = std::max(0, field.references - 1);
}

Field* Model::childOf(Field& node, const std::string& name) const {
    const auto found = node.children.find(name);
    return found == node.children.end() ? nullptr : found->second;
}

/// The child behind that of the name `last`, which becomes its name.
Field* Model::nextChild(Field& node, std::optional<std::string>& last) const {
    auto next = last ? node.children.upper_bound(*last) : node.children.begin();
    while (next != node.children.end() && !next->second)
        ++next;
    if (next == node.children.end())
        return nullptr;
    last = next->first;
    return next->second;
}

bool Model::addField(Field& parent, Field& field, int instance) {
    const bool isFree = !childOf(parent, field.name);
    if (isFree)
        parent.children[field.name] = &field;
    field.parent = &parent;
    field.instance = instance;
    ref(field, &parent);
    return isFree;
}

void Model::removeField(Field& node, const std::string& name, int index) {
    if (!node.isStructure() || node.children.empty())
        return;
    const auto listed = node.children.find(name);
    const bool isListed = listed != node.children.end();
    Field* field = isListed ? listed->second : find(node, name, index, true);
    if (isListed)
        node.children.erase(listed);
    if (!field)
        return;
    unref(*field, &node);
    if (isListed && field->parent == &node)
        field->parent = nullptr;
}

void Model::removeChildren(Field& node) {
    if (node.kind == Kind::Array) {
        std::vector<Field*> elements;
        elements.swap(node.elements);
        for (Field* element : elements) {
            for (const auto& [name, child] : element->children)
                if (child)
                    unref(*child, &node);
            deleteChildren(*element);
            element->parent = nullptr;
            element->instance = 0;
            unref(*element, &node);
            if (element->references == 0)
                kill(*element);
        }
        return;
    }
    int ordinal = 0;
    for (; !node.children.empty(); ++ordinal) {
        Field* child = node.children.begin()->second;
        node.children.erase(node.children.begin());
        if (!child)
            continue;
        child->parent = nullptr;
        child->instance = ordinal;
        unref(*child, &node);
    }
}

void Model::deleteChildren(Field& node) {
    while (!node.children.empty()) {
        Field* child = node.children.begin()->second;
        node.children.erase(node.children.begin());
        if (!child)
            continue;
        unref(*child, &node);
        child->parent = nullptr;
        child->instance = 0;
        disposeIfUnused(*child);
    }
}

int Model::numFields(const Field& node) const {
    if (node.kind == Kind::Array)
        return node.elements.empty() ? 0 : numFields(*node.elements.front());
    return static_cast<int>(node.children.size());
}

void Model::disposeIfUnused(Field& field) {
    if (field.references != 0 || !field.handlers.empty())
        return;
    deleteChildren(field);
    if (numFields(field) == 0)
        kill(field);
}

Field* Model::find(Field& node, const std::string& path, int index, bool flag) {
    Wildcard ignored;
    return findIn(node, &path, index, flag, ignored);
}

Field* Model::findIn(Field& node, const std::string* path, int index, bool flag, Wildcard& wildcard) {
    if (node.kind == Kind::Array)
        return index >= 0 && index < node.size()
                   ? findIn(*node.elements[static_cast<std::size_t>(index)], path, index, flag, wildcard)
                   : nullptr;
    if (!path)
        return nullptr;
    const std::size_t slash = path->find('/');
    const bool hasRest = slash != std::string::npos;
    const std::string rest = hasRest ? path->substr(slash + 1) : "";
    std::string name = path->substr(0, slash);
    const std::size_t colon = name.find(':');
    const bool hasKind = colon != std::string::npos;
    const std::string kind = hasKind ? name.substr(0, colon) : "";
    if (hasKind)
        name = name.substr(colon + 1);
    const std::size_t bracket = name.find('[');
    const std::string indexText = bracket == std::string::npos ? "" : name.substr(bracket + 1);
    name = name.substr(0, bracket);

    if (name.substr(0, 1) == "*") {
        wildcard = {&node, rest};
        return nullptr;
    }
    if (name.substr(0, 2) == ".." && parentOf(node))
        return findIn(*parentOf(node), hasRest ? &rest : nullptr, index, flag, wildcard);
    Field* child = hasKind ? findOrCreate(node, kind, name) : childOf(node, name);
    if (!child || !node.isAlive || !child->isNode() || !hasRest)
        return node.isAlive ? child : nullptr;
    const int start = bracket == std::string::npos ? 0 : readRanges(indexText + ' ').front().start;
    return findIn(*child, &rest, start, true, wildcard);
}

Field* Model::findOrCreate(Field& node, const std::string& kind, const std::string& name) {
    Field* child = childOf(node, name);
    const bool isNew = !child;
    if (isNew)
        child = create(kind, name);
    if (!child)
        return nullptr;
    if (!isNew && (child->kind == Kind::Object || child->kind == Kind::Array))
        setType(*child, kind);
    if (!node.isAlive || !child->isAlive)
        return nullptr;
    mark(*child);
    if (!node.isAlive || !child->isAlive)
        return nullptr;
    addField(node, *child, -1);
    return child;
}

Field* Model::create(const std::string& kind, const std::string& name) {
    if (kind == "string")
        return &make(Kind::Value, name);
    if (kind == "node")
        return &make(Kind::Structure, name);
    const std::size_t bracket = kind.find('[');
    const auto type = typeOf(kind.substr(0, bracket));
    if (!type)
        return nullptr;
    if (bracket == std::string::npos)
        return &createObject(type, name);
    Field& array = createArray(type, name, std::max(0, readNumber(kind.substr(bracket + 1))));
    ref(array, nullptr);
    return &array;
}

void Model::addLink(Field& source, Field& target) {
    if (&source == &target || std::find(source.targets.begin(), source.targets.end(), &target) != source.targets.end())
        return;
    for (Field* above = source.source; above; above = above->source)
        if (above == &target)
            return;
    removeSource(target);
    target.source = &source;
    source.targets.push_back(&target);
}

void Model::removeSource(Field& field) {
    if (!field.source)
        return;
    std::vector<Field*>& targets = field.source->targets;
    targets.erase(std::find(targets.begin(), targets.end(), &field));
    field.source = nullptr;
}

void Model::removeTargets(Field& field) {
    while (!field.targets.empty())
        removeSource(*field.targets.front());
}

void Model::clearLinks(Field& field) {
    removeSource(field);
    removeTargets(field);
    for (const auto& [name, child] : field.children)
        if (child)
            clearLinks(*child);
    for (Field* element : field.elements)
        clearLinks(*element);
}

std::shared_ptr<const Type> Model::typeOf(const std::string& name) const {
    const auto found = types.find(name);
    return found == types.end() ? nullptr : found->second;
}

void Model::setType(Field& field, std::shared_ptr<const Type> type) {
    if (type == field.type)
        return;
    if (field.kind == Kind::Array) {
        for (std::size_t at = 0; at < field.elements.size(); ++at) {
            setType(*field.elements[at], type);
            if (!field.isAlive)
                return;
        }
        field.type = type;
    } else {
        deleteChildren(field);
        field.type = type;
        createStructure(field);
    }
    if (type)
        fireType(field, type->name);
}

void Model::setType(Field& field, const std::string& name) {
    if (field.kind == Kind::Array) {
        for (std::size_t at = 0; field.isAlive && at < field.elements.size(); ++at)
            setType(*field.elements[at], name);
        return;
    }
    const auto type = typeOf(name);
    if (!type || type == field.type)
        return;
    setType(field, type);
    if (field.isAlive)
        fireType(field, name);
}

void Model::createStructure(Field& object) {
    const auto type = object.type;
    if (!type)
        return;
    for (const TypeField& declaration : type->fields)
        if (Field* field = createField(object, declaration))
            addField(object, *field, -1);
}

Field* Model::createField(Field& object, const TypeField& declaration) {
    Field* field = nullptr;
    if (declaration.type == "string") {
        field = &make(Kind::Value, declaration.name);
        setSize(*field, declaration.count);
    } else if (const auto type = typeOf(declaration.type)) {
        field = declaration.count == 1 ? &createObject(type, declaration.name)
                                       : &createArray(type, declaration.name, declaration.count);
    } else {
        return nullptr;
    }
    ref(*field, &object);
    const std::string range = "0-" + std::to_string(declaration.count - 1);
    if (!declaration.standard.empty())
        parse(*field, declaration.count > 1 ? &range : nullptr, declaration.standard);
    return field;
}

Field& Model::createObject(const std::shared_ptr<const Type>& type, const std::string& name) {
    Field& object = make(Kind::Object, name);
    setType(object, type);
    return object;
}

Field& Model::createArray(const std::shared_ptr<const Type>& type, const std::string& name, int size) {
    Field& array = make(Kind::Array, name);
    setType(array, type);
    setSize(array, size);
    return array;
}

void Model::parse(Field& field, const std::string* indices, const std::string& text) {
    switch (field.kind) {
    case Kind::Value:
        parseValue(field, indices, text);
        break;
    case Kind::Structure:
        parseStructure(field, indices, text);
        break;
    case Kind::Object:
        parseStructure(field, nullptr, text);
        break;
    case Kind::Array:
        parseArray(field, indices, text);
        break;
    }
}

void Model::parseValue(Field& field, const std::string* indices, const std::string& text) {
    std::vector<std::string> tokens = tokensOf(text);
    const auto take = [&] {
        const std::string token = tokens.front();
        tokens.erase(tokens.begin());
        return token;
    };
    if (!indices) {
        setData(field, tokens.empty() ? "" : take());
        return;
    }
    for (const Range& range : readRanges(*indices)) {
        if (range.start == -1 || !field.isAlive)
            return;
        if (range.end == -1 || range.end == range.start) {
            if (tokens.empty())
                return;
            setData(field, take(), range.start);
            continue;
        }
        std::vector<std::string> texts;
        for (int index = range.start; index <= range.end && !tokens.empty(); ++index)
            texts.push_back(take());
        if (!texts.empty())
            setData(field, texts, range.start, range.end);
    }
}

void Model::parseStructure(Field& field, const std::string* indices, const std::string& text) {
    if (!indices) {
        if (const auto commands = braceGroup(text))
            runCommands(field, *commands, 0);
        return;
    }
    const std::vector<std::string> groups = splitOutsideBraces(text, ',');
    std::size_t next = 0;
    for (const Range& range : readRanges(*indices)) {
        if (range.start == -1)
            return;
        for (int index = range.start; index <= std::max(range.end, range.end == -1 ? range.start : -1); ++index) {
            if (next == groups.size() || !field.isAlive)
                return;
            if (const auto commands = braceGroup(groups[next++]))
                runCommands(field, *commands, index);
        }
    }
}

void Model::parseArray(Field& field, const std::string* indices, const std::string& text) {
    const std::size_t brace = text.find('{');
    const std::vector<std::string> values =
        brace == std::string::npos ? std::vector<std::string>() : splitOutsideBraces(text.substr(brace + 1), ',');
    std::size_t next = 0;
    const auto give = [&](int index) {
        if (next == values.size() || !field.isAlive || index >= field.size())
            return false;
        parse(*field.elements[static_cast<std::size_t>(index)], nullptr, values[next++]);
        return true;
    };
    if (!indices) {
        for (int index = 0; give(index);)
            ++index;
        return;
    }
    for (const Range& range : readRanges(*indices)) {
        if (range.start == -1 || !field.isAlive)
            return;
        const int last = std::min(range.end == -1 ? range.start : range.end, field.size() - 1);
        for (int index = range.start; index <= last && give(index);)
            ++index;
    }
}

void Model::runCommands(Field& node, const std::string& text, int index) {
    for (const std::string& command : splitOutsideBraces(skipBlanks(text), ';')) {
        if (!node.isAlive)
            return;
        runCommand(node, skipBlanks(command), index);
    }
}

void Model::runCommand(Field& node, const std::string& text, int index) {
    if (m_commandDepth == maxCommandDepth)
        return;
    ++m_commandDepth;
    const std::size_t equals = text.find('=');
    const bool isAlive = passOn(node, [&](Field& target) {
        if (target.isNode())
            runCommand(target, text, index);
    });
    if (isAlive && equals != std::string::npos) {
        const std::string path = trim(text.substr(0, equals));
        const std::string value = skipBlanks(text.substr(equals + 1));
        const auto indices = indexTextOf(path);
        Wildcard wildcard;
        if (Field* field = findIn(node, &path, index, false, wildcard))
            parse(*field, pointerTo(indices), value);
        else if (wildcard.node && wildcard.node->isAlive)
            broadcast(*wildcard.node, wildcard.rest, value, index);
    }
    --m_commandDepth;
}

void Model::broadcast(Field& node, const std::string& rest, const std::string& value, int index) {
    std::vector<Field*> children;
    for (const auto& [name, child] : node.children)
        if (child)
            children.push_back(child);
    for (Field* child : children) {
        if (!node.isAlive)
            return;
        if (!child->isAlive || parentOf(*child) != &node || (!rest.empty() && !child->isNode()))
            continue;
        runCommand(node, child->name + (rest.empty() ? "" : "/" + rest) + " = " + value, index);
    }
}

std::vector<Field*> Model::rangeOf(Field& node, const std::string* range) {
    if (!range || node.kind != Kind::Array)
        return {&node};
    std::vector<Field*> selected;
    for (const Range& part : readRanges(*range)) {
        const int first = std::max(part.start, 0);
        for (int index = first; index <= std::max(part.end, first); ++index)
            selected.push_back(index < node.size() ? node.elements[static_cast<std::size_t>(index)] : nullptr);
    }
    return selected;
}

void Model::runCopyCommand(Field& node, const std::string& text) {
    const std::size_t equals = text.find('=');
    if (equals == std::string::npos)
        return;
    const Address to(text.substr(0, equals));
    const Address from(text.substr(equals + 1));
    Field* target = find(node, to.path, 0, true);
    if (!target || !node.isAlive)
        return;
    Field* source = find(node, from.path, 0, true);
    if (!source || !target->isAlive || target->isNode() != source->isNode())
        return;
    if (target->isNode()) {
        const std::vector<Field*> targets = rangeOf(*target, pointerTo(to.range));
        const std::vector<Field*> sources = rangeOf(*source, pointerTo(from.range));
        for (std::size_t at = 0; at < targets.size(); ++at) {
            Field* sourceField = sources[std::min(at, sources.size() - 1)];
            if (targets[at] && sourceField && targets[at]->isAlive && sourceField->isAlive)
                copyData(*targets[at], sourceField, 0, 0, -1);
        }
        return;
    }
    const auto part = [](const Address& address, Field& field) -> Range {
        if (!address.range)
            return {0, field.size() - 1};
        const Range range = readRanges(*address.range + ' ').front();
        return {std::max(range.start, 0), std::max(range.end, std::max(range.start, 0))};
    };
    const Range sourcePart = part(from, *source);
    const Range targetPart = part(to, *target);
    copyData(*target, source, sourcePart.start, targetPart.start,
             std::min(sourcePart.end - sourcePart.start, targetPart.end - targetPart.start) + 1);
}

Field* Model::rootAbove(Field& node) const {
    for (Field* above = &node; above; above = parentOf(*above))
        if (above->isRoot)
            return above;
    return nullptr;
}

void Model::runClearCommand(Field& node, const std::string& text) {
    const std::string whole = text.empty() ? "Orbel" : text;
    std::string rest = whole;
    while (!rest.empty() && node.isAlive) {
        const std::size_t end = rest.find(';');
        const std::string path = trim(rest.substr(0, end));
        rest = end == std::string::npos ? "" : rest.substr(end + 1);
        const auto range = indexTextOf(path);
        Field* field = lowered(path) == "orbel" ? rootAbove(node) : find(node, path, 0, false);
        if (!field)
            continue;
        if (!range) {
            clearData(*field);
            continue;
        }
        if (!field->isNode())
            continue;
        for (Field* selected : rangeOf(*field, &*range))
            if (selected && selected->isAlive)
                clearData(*selected);
    }
}

bool Model::link(Field& node, const std::string& sourcePath, const std::string& targetPath) {
    Field* source = find(node, sourcePath, 0, true);
    if (!node.isAlive)
        return false;
    Field* target = find(node, targetPath, 0, true);
    if (!target || !source || !source->isAlive)
        return false;
    addLink(*source, *target);
    return true;
}

void Model::runLinkCommand(Field& node, const std::string& text) {
    if (text.substr(0, 1) == "~") {
        if (Field* target = find(node, text.substr(1), 0, true))
            removeSource(*target);
        return;
    }
    const std::size_t equals = text.find('=');
    if (equals == std::string::npos)
        return;
    if (link(node, trim(text.substr(equals + 1)), trim(text.substr(0, equals))) && node.isAlive)
        runCopyCommand(node, text);
}

void Model::runLinkCommands(Field& node, const std::string& text) {
    if (Field* top = rootAbove(node))
        clearLinks(*top);
    for (const std::string& command : splitOutsideBraces(skipBlanks(text), ';')) {
        if (!node.isAlive)
            return;
        runLinkCommand(node, skipBlanks(command));
    }
}

} // namespace model
