#include "Play.h"

#include <algorithm>
#include <sstream>
#include <string_view>
#include <utility>

namespace model {

namespace {

constexpr int handlerCount = 8;

/// The declarations of types that ReadTypes chooses from.
const std::vector<Types>& versions() {
    const auto type = [](const std::string& name, std::vector<TypeField> fields) {
        return std::make_shared<const Type>(Type{name, std::move(fields)});
    };
    static const std::vector<Types> all = {
        {{"Point", type("Point", {{"string", "x", 1, "0"}, {"string", "y", 1, "0"}})},
         {"Label", type("Label", {{"string", "text", 1, "Hi"}, {"Point", "pos", 1, "{x=7}"}, {"string", "c", 3, "1"}})},
         {"Line", type("Line", {{"Point", "b", 2, ""}, {"string", "a", 1, ""}})}},
        {{"Point", type("Point", {{"string", "x", 2, "4"}})},
         {"Label", type("Label", {{"Point", "x", 1, ""}, {"string", "text", 1, ""}})},
         {"Line", type("Line", {{"Label", "a", 1, ""}, {"Point", "pos", 3, "{{x=1},{x=2}}"}})}},
        {{"Point", type("Point", {{"string", "a", 1, "1"}, {"string", "y", 1, ""}})},
         {"Label", type("Label", {{"string", "y", 1, "Ho"}})}},
    };
    return all;
}

std::string textOf(const Types& types) {
    // A type has to be known where it is used.
    std::string text;
    for (const char* name : {"Point", "Label", "Line"}) {
        const auto found = types.find(name);
        if (found == types.end())
            continue;
        text += found->first + " = {";
        for (const TypeField& field : found->second->fields) {
            text += field.type + ' ' + field.name;
            text += field.count != 1 ? '[' + std::to_string(field.count) + ']' : "";
            text += "; ";
        }
        text += "}; ";
    }
    return text;
}

bool isAny(const Model& /*model*/, const Field& /*field*/) {
    return true;
}

bool isNode(const Model& /*model*/, const Field& field) {
    return field.isNode();
}

bool isStructure(const Model& /*model*/, const Field& field) {
    return field.isStructure();
}

bool isTyped(const Model& /*model*/, const Field& field) {
    return field.kind == Kind::Object || field.kind == Kind::Array;
}

bool isDetached(const Model& model, const Field& field) {
    return !field.isRoot && field.owners.empty() && !model.parentOf(field) && !model.isElement(field);
}

bool isDeletable(const Model& model, const Field& field) {
    return !field.isRoot && !model.isElement(field);
}

bool isDeletableInPlace(const Model& model, const Field& field) {
    const Field* parent = model.parentOf(field);
    return field.kind == Kind::Value && parent && parent->isStructure();
}

using Admits = bool (*)(const Model&, const Field&);

Admits whatFieldFor(Op op) {
    switch (op) {
    case Op::Find:
    case Op::Run:
    case Op::RunList:
    case Op::RunCopy:
    case Op::RunClear:
    case Op::Register:
    case Op::Unregister:
    case Op::RemoveField:
        return isNode;
    case Op::Set:
    case Op::SetAt:
    case Op::SetRange:
    case Op::Get:
    case Op::Resize:
    case Op::RunLink:
    case Op::RunLinks:
    case Op::AddField:
    case Op::RemoveChildren:
    case Op::DeleteChildren:
        return isStructure;
    case Op::Retype:
    case Op::RetypeByRecord:
    case Op::Untype:
        return isTyped;
    case Op::DeleteField:
        return isDeletable;
    case Op::DeleteInPlace:
        return isDeletableInPlace;
    default:
        return isAny;
    }
}

bool isValue(const Model& /*model*/, const Field& field) {
    return field.kind == Kind::Value;
}

bool isSource(const Model& /*model*/, const Field& field) {
    return field.kind == Kind::Value && !field.targets.empty();
}

bool isTarget(const Model& /*model*/, const Field& field) {
    return field.kind == Kind::Value && field.source;
}

bool isObserved(const Model& /*model*/, const Field& field) {
    return field.kind == Kind::Value && !field.handlers.empty() && field.handlers != std::vector<int>{Field::marker};
}

bool isStore(Op op) {
    return op == Op::SetField || op == Op::SetFieldAt || op == Op::SetFieldRange || op == Op::ClearField ||
           op == Op::CopyField || op == Op::Fire || op == Op::Unlink;
}

bool needsHandler(Op op) {
    return op == Op::Register || op == Op::Unregister || op == Op::RegisterAt || op == Op::UnregisterAt ||
           op == Op::DestroyHandler || op == Op::Ask;
}

std::string textsOf(const Field& field) {
    std::string all;
    for (const std::string& text : field.texts)
        all += (all.empty() ? "=" : "|") + text;
    return all;
}

std::string textsOf(DataField& field) {
    std::string all;
    for (int index = 0; field.isOfType(DataValue::getClassType()) != 0 && index < field.getSize(); ++index)
        all += (all.empty() ? "=" : "|") + *field.getData(index);
    return all;
}

std::string flag(bool is) {
    return is ? "true" : "false";
}

const char* classOf(const Field& field) {
    switch (field.kind) {
    case Kind::Value:
        return "DataValue";
    case Kind::Object:
        return "DataObject";
    case Kind::Array:
        return "DataArray";
    default:
        return field.isRoot ? "Orbel" : "DataStructure";
    }
}

DataField* makeReal(const Field& field) {
    std::string name = field.name;
    switch (field.kind) {
    case Kind::Value:
        return new DataValue(name.data());
    case Kind::Object:
        return new DataObject(name.data());
    case Kind::Array:
        return new DataArray(name.data());
    default:
        return new DataStructure(name.data());
    }
}

/// A text that the library may write to.
class Lent {
public:
    explicit Lent(std::string text) : m_text(std::move(text)) {}

    operator char*() { return m_text.data(); }

private:
    std::string m_text;
};

} // namespace

class Play::Listener : public DataHandler {
public:
    Listener(Play& play, int number)
        : DataHandler(Lent('H' + std::to_string(number))), m_play(play), m_number(number) {}

    // What is heard may destroy the listener.
    void onChange(DataField& field, bool changed) override {
        m_play.heardInLibrary(m_number, field, changed ? "changed" : "same");
    }
    void onChange(DataField& field, bool changed, int from, int to) override {
        m_play.heardInLibrary(m_number, field,
                              (changed ? "changed " : "same ") + std::to_string(from) + '-' + std::to_string(to));
    }
    void onTypeChange(DataField& field, char* typeName) override {
        m_play.heardInLibrary(m_number, field, std::string("type ") + typeName);
    }

private:
    Play& m_play;
    int m_number;
};

Play::Play(int enough) : m_model(handlerCount), m_root(Lent("root")), m_enough(enough) {
    m_model.heard = [this](int handler, Field& field, const std::string& what) { heardInModel(handler, field, what); };
    for (int number = 0; number < handlerCount; ++number)
        m_listeners.push_back(std::make_unique<Listener>(*this, number));
    bind(m_model.root(), &m_root);
    m_model.types = versions().front();
    readTypes(0);
}

Play::~Play() {
    // After a difference nobody knows what is still there.
    if (!m_difference.empty())
        return;
    m_model.heard = [](int, Field&, const std::string&) {};
    m_listeners.clear();
    for (int handler = 0; handler < handlerCount; ++handler)
        m_model.destroyHandler(handler);
    for (const Kind kind : {Kind::Array, Kind::Object, Kind::Structure})
        for (std::size_t at = 0; at < m_model.fields.size(); ++at) {
            Field& field = *m_model.fields[at];
            if (!field.isAlive || !field.isKnown || field.kind != kind)
                continue;
            static_cast<DataNode*>(realOf(&field))->removeChildren();
            m_model.removeChildren(field);
        }
    for (const auto& field : m_model.fields)
        if (field->isAlive && field->isKnown && !field->isRoot)
            delete realOf(field.get());
}

void Play::readTypes(int version) {
    DataObject::init();
    DataObject::readConfigFiles();
    const Types& types = versions()[static_cast<std::size_t>(version)];
    DataObjectTypesTable& table = *DataObject::getTypesTable();
    table.parse(Lent(textOf(types)));
    // The text of a type cannot say what has braces.
    for (const auto& [name, type] : types) {
        std::vector<DataObjectField*> fields;
        table.getTypeByName(name.c_str())->getFieldsList(fields);
        for (std::size_t at = 0; at < fields.size(); ++at)
            fields[at]->setDefaultValue(Lent(type->fields[at].standard));
    }
}

std::string Play::difference(const Step& step) {
    m_step = &step;
    m_nextReaction = m_nextDeed = m_nextHeard = 0;
    m_deeds.clear();
    m_expected.clear();
    m_told.clear();
    m_depth = 0;
    act(step);
    doNextInLibrary();
    if (m_difference.empty() && m_nextHeard != m_expected.size())
        differ("heard", m_expected[m_nextHeard].event, "nothing");
    if (m_difference.empty())
        compareAll();
    if (m_difference.empty())
        sweep();
    return m_difference;
}

/// In the model, which decides what the step means.
void Play::act(const Step& step) {
    const std::size_t index = m_deeds.size();
    m_deeds.push_back(resolve(step));
    describe(m_deeds[index]);
    if (!m_deeds[index].isPossible)
        return;
    ++m_depth;
    Deed done = m_deeds[index];
    doInModel(done);
    m_deeds[index] = done;
    --m_depth;
}

void Play::doNextInLibrary() {
    const Deed& deed = m_deeds[m_nextDeed++];
    if (!deed.isPossible)
        return;
    const std::string result = doInLibrary(deed);
    if (m_difference.empty() && result != deed.result)
        differ("result of " + nameOf(*deed.step), deed.result, result);
}

void Play::heardInModel(int handler, Field& field, const std::string& what) {
    m_expected.push_back(
        {'H' + std::to_string(handler) + ' ' + what + ' ' + m_model.fullPath(field) + textsOf(field), &field});
    if (m_nextReaction == m_step->reactions.size())
        return;
    Field* const outerField = std::exchange(m_hearing, &field);
    const int outerHearer = std::exchange(m_hearer, handler);
    act(m_step->reactions[m_nextReaction++]);
    m_hearing = outerField;
    m_hearer = outerHearer;
}

void Play::heardInLibrary(int handler, DataField& field, const std::string& what) {
    if (!m_difference.empty())
        return;
    ++m_heardCount;
    const std::string event = 'H' + std::to_string(handler) + ' ' + what + ' ' + field.getFullPath() + textsOf(field);
    if (m_nextHeard == m_expected.size()) {
        differ("heard", "nothing", event);
        return;
    }
    const Heard& expected = m_expected[m_nextHeard++];
    if (event != expected.event) {
        differ("heard", expected.event, event);
        return;
    }
    bind(*expected.field, &field);
    // The first who hear react, in the order of hearing.
    if (m_nextHeard <= m_step->reactions.size())
        doNextInLibrary();
}

Field* Play::known(int turn, bool (*admits)(const Model&, const Field&)) {
    std::vector<Field*> all;
    for (const auto& field : m_model.fields)
        if (field->isAlive && field->isKnown && admits(m_model, *field))
            all.push_back(field.get());
    return all.empty() ? nullptr : all[static_cast<std::size_t>(turn) % all.size()];
}

/// Where something comes of it, more often than not: what is stored where nobody listens is soon told.
Field* Play::chosenField(const Step& step) {
    const Admits admits = whatFieldFor(step.op);
    if (m_hearing && step.other % 2 == 0 && m_hearing->isAlive && m_hearing->isKnown && admits(m_model, *m_hearing))
        return m_hearing;
    Field* field = nullptr;
    if (isStore(step.op) && step.upTo != 0)
        field = known(step.field, step.number % 2 == 0 ? isObserved : isSource);
    else if (step.op == Op::Link && step.number != 0)
        field = known(step.field, isSource);
    else if (step.op == Op::RegisterAt && step.upTo > 1)
        field = known(step.field, isObserved);
    else if (step.op == Op::RegisterAt && step.number != 0)
        field = known(step.field, step.number == 1 ? isValue : isTarget);
    return field ? field : known(step.field, admits);
}

Deed Play::resolve(const Step& step) {
    Deed deed;
    deed.step = &step;
    deed.handler = m_hearing && step.handler % 3 == 0 ? m_hearer : step.handler % handlerCount;
    deed.field = chosenField(step);
    const bool isOfValues = step.op == Op::Link && deed.field && !deed.field->isNode();
    deed.other = known(step.other, step.op == Op::AddField ? isDetached : isOfValues ? isValue : isAny);
    const bool isHandlerAlive = m_model.handlers[static_cast<std::size_t>(deed.handler)].isAlive;
    deed.isPossible = step.op != Op::Nothing && deed.field && deed.other && (!needsHandler(step.op) || isHandlerAlive);
    switch (step.op) {
    case Op::MakeHandler:
        deed.isPossible = !isHandlerAlive;
        break;
    case Op::MakeField:
    case Op::Resize:
        deed.isPossible = deed.field && livingFields() < m_enough;
        break;
    case Op::Find:
        deed.isPossible = livingFields() < m_enough || step.text.find(':') == std::string::npos;
        break;
    case Op::AddField:
        // A child that is refused belongs to two, and one above its parent closes a circle.
        deed.isPossible = deed.field && deed.other && !m_model.isBelow(*deed.field, *deed.other) &&
                          !m_model.isWithin(*deed.field, *deed.other) &&
                          !m_model.childOf(*deed.field, deed.other->name);
        break;
    default:
        break;
    }
    return deed;
}

int Play::lost() const {
    return static_cast<int>(std::count_if(m_model.fields.begin(), m_model.fields.end(),
                                          [](const auto& field) { return field->isAlive && !field->isKnown; }));
}

int Play::livingFields() const {
    return static_cast<int>(
        std::count_if(m_model.fields.begin(), m_model.fields.end(), [](const auto& field) { return field->isAlive; }));
}

void Play::describe(const Deed& deed) {
    if (deed.step->op == Op::Nothing)
        return;
    std::ostringstream line;
    line << std::string(static_cast<std::size_t>(4 * m_depth + 4), ' ') << nameOf(*deed.step);
    if (!deed.isPossible) {
        line << " (nothing to do it with)\n";
        m_told += line.str();
        return;
    }
    const Step& step = *deed.step;
    line << " #" << deed.field->id << '(' << m_model.fullPath(*deed.field) << ')';
    line << " other #" << deed.other->id << '(' << m_model.fullPath(*deed.other) << ") H" << deed.handler;
    line << " number " << step.number << " up to " << step.upTo << " text \"" << step.text << "\" value \""
         << step.value << "\"\n";
    m_told += line.str();
}

/// Leaves in the deed what the library has to answer, and which field comes of it.
void Play::doInModel(Deed& deed) {
    const Step& step = *deed.step;
    Model& model = m_model;
    Field& field = *deed.field;
    std::string& result = deed.result;
    const auto atPath = [&] { return model.find(field, step.text, 0, true); };
    switch (step.op) {
    case Op::Find:
        deed.found = model.find(field, step.text, step.number % 2, step.upTo > 1);
        result = flag(deed.found != nullptr);
        break;
    case Op::Set: {
        Field* found = atPath();
        if (found)
            model.setData(*found, step.value);
        result = flag(found);
        break;
    }
    case Op::SetAt: {
        Field* found = atPath();
        if (found)
            model.setData(*found, step.value, step.number);
        result = flag(found);
        break;
    }
    case Op::SetRange: {
        Field* found = atPath();
        if (found)
            model.setData(*found, {step.value, "r"}, step.number, step.upTo);
        result = flag(found);
        break;
    }
    case Op::Get: {
        Field* found = atPath();
        result = found && !found->isNode() ? '=' + found->texts.front() : "false";
        break;
    }
    case Op::Resize: {
        Field* found = atPath();
        if (found)
            model.setSize(*found, step.number);
        result = flag(found);
        break;
    }
    case Op::SetField:
        model.setData(field, step.value);
        break;
    case Op::SetFieldAt:
        model.setData(field, step.value, step.number);
        break;
    case Op::SetFieldRange:
        model.setData(field, {step.value, "r"}, step.number, step.upTo);
        break;
    case Op::ClearField:
        model.clearData(field);
        break;
    case Op::CopyField:
        result = flag(model.copyData(field, deed.other, 0, 0, -1));
        break;
    case Op::Fire:
        model.fire(field, step.number != 0);
        break;
    case Op::Run:
        model.runCommand(field, step.text, 0);
        break;
    case Op::RunList:
        model.runCommands(field, step.text, 0);
        break;
    case Op::RunCopy:
        model.runCopyCommand(field, step.text);
        break;
    case Op::RunClear:
        model.runClearCommand(field, step.text);
        break;
    case Op::RunLink:
        model.runLinkCommand(field, step.text);
        break;
    case Op::RunLinks:
        model.runLinkCommands(field, step.text);
        break;
    case Op::Link:
        model.addLink(field, *deed.other);
        break;
    case Op::Unlink:
        model.removeSource(field);
        break;
    case Op::UnlinkTargets:
        model.removeTargets(field);
        break;
    case Op::ClearLinks:
        model.clearLinks(field);
        break;
    case Op::Register:
        result = flag(model.registerByPath(field, step.text, deed.handler, step.number / 3));
        deed.found = model.handlers[static_cast<std::size_t>(deed.handler)].field;
        break;
    case Op::Unregister:
        result = flag(model.unregisterByNode(field, deed.handler));
        break;
    case Op::RegisterAt:
        model.registerHandler(field, deed.handler);
        break;
    case Op::UnregisterAt:
        model.unregisterHandler(field, deed.handler);
        break;
    case Op::UnregisterAll:
        model.unregisterAll(field);
        break;
    case Op::DestroyHandler:
        model.destroyHandler(deed.handler);
        break;
    case Op::MakeHandler:
        model.handlers[static_cast<std::size_t>(deed.handler)].isAlive = true;
        break;
    case Op::Ask:
        model.handlers[static_cast<std::size_t>(deed.handler)].asks = step.number % 2 != 0;
        break;
    case Op::Retype:
        model.setType(field, step.text);
        break;
    case Op::RetypeByRecord: {
        const auto found = model.types.find(step.text);
        model.setType(field, found == model.types.end() ? nullptr : found->second);
        break;
    }
    case Op::Untype:
        model.setType(field, std::shared_ptr<const Type>());
        break;
    case Op::ReadTypes:
        model.types.clear();
        for (const auto& [name, type] : versions()[static_cast<std::size_t>(step.number % 3)])
            model.types[name] = std::make_shared<const Type>(*type);
        break;
    case Op::MakeField:
        deed.found = &model.make(static_cast<Kind>(step.number), step.text);
        deed.found->isKnown = true;
        break;
    case Op::AddField:
        result = flag(model.addField(field, *deed.other, step.number));
        break;
    case Op::RemoveField:
        model.removeField(field, step.text, 0);
        break;
    case Op::RemoveChildren:
        model.removeChildren(field);
        break;
    case Op::DeleteChildren:
        model.deleteChildren(field);
        break;
    case Op::DeleteField:
        if (Field* parent = model.parentOf(field))
            model.removeField(*parent, field.name, 0);
        if (field.isNode())
            model.removeChildren(field);
        model.kill(field);
        break;
    case Op::DeleteInPlace:
        model.kill(field);
        break;
    case Op::Observers:
        for (const int handler : field.handlers)
            result += handler == Field::marker ? "DUMMY " : 'H' + std::to_string(handler) + ' ';
        break;
    case Op::Nothing:
        break;
    }
}

std::string Play::doInLibrary(const Deed& deed) {
    const Step& step = *deed.step;
    DataField& field = *realOf(deed.field);
    DataField& other = *realOf(deed.other);
    auto* const node = deed.field->isNode() ? static_cast<DataNode*>(&field) : nullptr;
    auto* const structure = deed.field->isStructure() ? static_cast<DataStructure*>(&field) : nullptr;
    auto& listener = m_listeners[static_cast<std::size_t>(deed.handler)];
    Lent text(step.text);
    std::string value = step.value;
    std::string second = "r";
    std::vector<char*> values = {value.data(), second.data()};
    switch (step.op) {
    case Op::Find: {
        DataField* found = node->getField(text, step.number % 2, step.upTo > 1 ? 1 : 0);
        if (found && deed.found)
            bind(*deed.found, found);
        return flag(found);
    }
    case Op::Set:
        return flag(structure->setFieldData(text, value.data()));
    case Op::SetAt:
        return flag(structure->setFieldData(text, value.data(), step.number));
    case Op::SetRange:
        return flag(structure->setFieldData(text, &values, step.number, step.upTo));
    case Op::Get: {
        std::string got;
        return structure->getFieldData(text, &got) ? '=' + got : "false";
    }
    case Op::Resize:
        return flag(structure->setFieldSize(text, step.number));
    case Op::SetField:
        field.setData(value.c_str());
        break;
    case Op::SetFieldAt:
        if (step.other % 2 == 0)
            field.setData(value.c_str(), step.number);
        else
            field.setData(&value, step.number);
        break;
    case Op::SetFieldRange:
        field.setData(&values, step.number, step.upTo);
        break;
    case Op::ClearField:
        field.clearData();
        break;
    case Op::CopyField:
        return flag(field.copyData(&other, 0, 0, -1));
    case Op::Fire:
        field.fireHandlers(step.number != 0);
        break;
    case Op::Run:
        node->executeCommand(text, 0);
        break;
    case Op::RunList:
        node->parseCommand(text, 0);
        break;
    case Op::RunCopy:
        node->executeCopyCommand(text);
        break;
    case Op::RunClear:
        node->executeClearCommand(text);
        break;
    case Op::RunLink:
        structure->executeLinkCommand(text);
        break;
    case Op::RunLinks:
        structure->parseLinkCommand(text);
        break;
    case Op::Link:
        field.addTargetLink(&other);
        break;
    case Op::Unlink:
        field.removeSourceLink();
        break;
    case Op::UnlinkTargets:
        field.removeAllTargets();
        break;
    case Op::ClearLinks:
        field.ClearLinks();
        break;
    case Op::Register: {
        const bool is = node->registerHandler(text, listener.get(), step.number / 3);
        if (deed.found && listener && listener->getField())
            bind(*deed.found, listener->getField());
        return flag(is);
    }
    case Op::Unregister:
        return flag(node->unregisterHandler(listener.get()));
    case Op::RegisterAt:
        field.registerHandler(listener.get());
        break;
    case Op::UnregisterAt:
        field.unregisterHandler(listener.get());
        break;
    case Op::UnregisterAll:
        field.unregisterAllHandlers();
        break;
    case Op::DestroyHandler:
        listener.reset();
        break;
    case Op::MakeHandler:
        listener = std::make_unique<Listener>(*this, deed.handler);
        break;
    case Op::Ask:
        listener->setNotifyOnValueChange(step.number % 2);
        break;
    case Op::Retype:
        if (structure)
            static_cast<DataObject&>(field).setObjectType(text);
        else
            static_cast<DataArray&>(field).setObjectType(text);
        break;
    case Op::RetypeByRecord:
    case Op::Untype: {
        DataObjectType* type =
            step.op == Op::Untype ? nullptr : DataObject::getTypesTable()->getTypeByName(step.text.c_str());
        if (structure)
            static_cast<DataObject&>(field).setObjectType(type);
        else
            static_cast<DataArray&>(field).setObjectType(type);
        break;
    }
    case Op::ReadTypes:
        readTypes(step.number % 3);
        break;
    case Op::MakeField:
        bind(*deed.found, makeReal(*deed.found));
        break;
    case Op::AddField:
        return flag(structure->addField(&other, step.number));
    case Op::RemoveField:
        node->removeField(text, 0);
        break;
    case Op::RemoveChildren:
        node->removeChildren();
        break;
    case Op::DeleteChildren:
        node->deleteChildren();
        break;
    case Op::DeleteField:
        if (DataNode* parent = field.getParent())
            parent->removeField(field.getName(), 0);
        if (node)
            node->removeChildren();
        delete &field;
        break;
    case Op::DeleteInPlace:
        delete &field;
        break;
    case Op::Observers: {
        std::string names;
        for (int index = 0; index < field.getNumHandlers(); ++index)
            names += field.getHandlerByID(index)->getName() + std::string(" ");
        return names;
    }
    case Op::Nothing:
        break;
    }
    return "";
}

void Play::differ(const std::string& what, const std::string& expected, const std::string& got) {
    if (m_difference.empty())
        m_difference = what + "\n  model:   " + expected + "\n  library: " + got + '\n';
}

void Play::bind(Field& field, DataField* real) {
    m_real.resize(std::max(m_real.size(), m_model.fields.size()));
    DataField*& known = m_real[static_cast<std::size_t>(field.id)];
    if (known) {
        if (known != real)
            differ("which field is #" + std::to_string(field.id), m_model.fullPath(field), real->getFullPath());
        return;
    }
    known = real;
    field.isKnown = true;
}

DataField* Play::realOf(const Field* field) const {
    return field && static_cast<std::size_t>(field->id) < m_real.size() ? m_real[static_cast<std::size_t>(field->id)]
                                                                        : nullptr;
}

void Play::compareAll() {
    compareHandlers();
    for (std::size_t at = 0; at < m_model.fields.size() && m_difference.empty(); ++at)
        if (Field& field = *m_model.fields[at]; field.isAlive && field.isKnown)
            compare(field, *realOf(&field));
}

void Play::compareHandlers() {
    for (std::size_t at = 0; at < m_listeners.size() && m_difference.empty(); ++at) {
        Field* expected = m_model.handlers[at].field;
        DataField* got = m_listeners[at] ? m_listeners[at]->getField() : nullptr;
        if (expected && got)
            bind(*expected, got);
        else if (expected || got)
            differ("the field of H" + std::to_string(at), expected ? m_model.fullPath(*expected) : "none",
                   got ? got->getFullPath() : "none");
    }
}

void Play::compare(Field& field, DataField& real) {
    const auto differs = [&](const char* what, const std::string& expected, const std::string& got) {
        differ(what + (" of #" + std::to_string(field.id)) + " (" + m_model.fullPath(field) + ')', expected, got);
    };
    const auto same = [&](const char* what, const std::string& expected, std::string_view got) {
        if (expected != got)
            differs(what, expected, std::string(got));
    };
    const auto sameNumber = [&](const char* what, int expected, int got) {
        if (expected != got)
            differs(what, std::to_string(expected), std::to_string(got));
    };
    const auto sameField = [&](const char* what, Field* expected, DataField* got) {
        if (expected && got && m_difference.empty())
            bind(*expected, got);
        else if (expected || got)
            differs(what, expected ? m_model.fullPath(*expected) + '!' : "none",
                    got ? got->getFullPath() + std::string("!") : "none");
    };
    same("class", classOf(field), real.getTypeName());
    if (!m_difference.empty())
        return;
    same("name", field.name, real.getName());
    same("path", m_model.fullPath(field), real.getFullPath());
    sameNumber("size", field.size(), real.getSize());
    for (int index = 0; index < static_cast<int>(field.texts.size()) && m_difference.empty(); ++index)
        same("text", field.texts[static_cast<std::size_t>(index)], *real.getData(index));
    sameNumber("initialized", field.isInitialized ? 1 : 0, real.getDataInitialized());
    sameNumber("handlers", static_cast<int>(field.handlers.size()), real.getNumHandlers());
    sameNumber("asking", field.asking, real.getCountNotifyOnValueChange());
    sameNumber("references", field.references, real.getRef());
    sameNumber("reference calls", field.referenceCalls, real.getRefCalls());
    sameNumber("instance", field.instance, real.getParentInstance());
    sameField("parent", m_model.parentOf(field), real.getParent());
    sameField("source", field.source, real.getLinkSource());
    if (field.isNode() && m_difference.empty())
        compareChildren(field, real);
    // Whose parent is printed is printed too.
    if (!m_difference.empty() || m_model.parentOf(field))
        return;
    DataBaseType::setIndent(0);
    std::ostringstream dump;
    real.dump(dump, -1, -1, 1);
    DataBaseType::setIndent(0);
    same("dump", m_model.dump(field), dump.str());
}

void Play::compareChildren(Field& field, DataField& real) {
    std::vector<Field*> expected = field.elements;
    std::vector<DataField*> got;
    const auto differs = [&](const char* what, const std::string& wanted, const std::string& there) {
        differ(what + (" of #" + std::to_string(field.id)) + " (" + m_model.fullPath(field) + ')', wanted, there);
    };
    const char* typeName = nullptr;
    if (field.kind == Kind::Array) {
        auto& array = static_cast<DataArray&>(real);
        for (int index = 0; index < array.getSize(); ++index)
            got.push_back(array.getObject(index));
        typeName = array.getObjectTypeName();
    } else {
        for (const auto& [name, child] : field.children)
            if (child)
                expected.push_back(child);
        static_cast<DataStructure&>(real).getFieldsVector(&got);
        if (static_cast<int>(field.children.size()) != static_cast<DataStructure&>(real).getNumFields())
            differs("number of fields", std::to_string(field.children.size()),
                    std::to_string(static_cast<DataStructure&>(real).getNumFields()));
        if (field.kind == Kind::Object)
            typeName = static_cast<DataObject&>(real).getObjectTypeName();
    }
    if (const std::string type = typeName ? typeName : "none"; type != (field.type ? field.type->name : "none"))
        differs("type", field.type ? field.type->name : "none", type);
    const auto namesOf = [](const auto& children, auto nameOfChild) {
        std::string names;
        for (auto* child : children)
            names += nameOfChild(*child) + std::string(" ");
        return names;
    };
    const std::string expectedNames = namesOf(expected, [](Field& child) { return child.name; });
    const std::string gotNames = namesOf(got, [](DataField& child) { return std::string(child.getName()); });
    if (expectedNames != gotNames) {
        differs("children", expectedNames, gotNames);
        return;
    }
    for (std::size_t at = 0; at < expected.size() && m_difference.empty(); ++at)
        bind(*expected[at], got[at]);
}

/// Contract: the elements of an array that was deleted for want of fields belong to nobody.
void Play::sweep() {
    for (std::size_t at = 0; at < m_model.fields.size(); ++at) {
        Field& field = *m_model.fields[at];
        const bool isOrphan = std::any_of(field.owners.begin(), field.owners.end(), [](const Field* owner) {
            return owner && !owner->isAlive && owner->kind == Kind::Array;
        });
        if (!field.isAlive || !field.isKnown || !isOrphan)
            continue;
        auto* real = static_cast<DataNode*>(realOf(&field));
        m_model.removeChildren(field);
        m_model.kill(field);
        real->removeChildren();
        delete real;
    }
}

} // namespace model
