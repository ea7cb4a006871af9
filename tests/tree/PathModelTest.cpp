#include <orbel/orbel.h>
#include <support/RecordingHandler.h>
#include <support/Text.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <string_view>
#include <vector>

// What the tree does by hash tables, caches and flags, against the plainest way to do the same: thousands of steps
// drawn at random, compared after each. A seed that fails is printed.

namespace {

using Field = DataField*;

/// The same numbers everywhere, which the distributions of the standard library do not promise.
class Dice {
public:
    explicit Dice(unsigned seed) : m_numbers(seed) {}

    int below(int limit) { return static_cast<int>(m_numbers() % static_cast<unsigned>(limit)); }

    template <class List>
    auto& oneOf(List& list) {
        return list[static_cast<std::size_t>(below(static_cast<int>(list.size())))];
    }

private:
    std::mt19937 m_numbers;
};

const std::vector<std::string> names = {
    "a", "b", "c", "longer", "a_name_of_eighteen", std::string(28, 'm'), std::string(40, 'n')};
const std::vector<std::string> keys = {"k", "other key"};

/// Children by the names that they came in with: what a structure is for a path. Copies share it.
using Children = std::map<std::string, Field>;

/// What the test knows of the tree, kept beside it by the plainest means.
class Model {
public:
    explicit Model(unsigned seed) : m_dice(seed), m_assigns(seed % 2 == 0) {
        know(&m_root, std::make_shared<Children>());
    }
    Model(const Model&) = delete;
    Model& operator=(const Model&) = delete;
    ~Model();

    void step();
    void compare();

private:
    void know(DataStructure* structure, std::shared_ptr<Children> children) {
        m_structures.push_back(structure);
        m_childrenOf[structure] = std::move(children);
    }
    bool isKnown(Field field) const { return std::find(m_fields.begin(), m_fields.end(), field) != m_fields.end(); }
    DataStructure& anyStructure() { return *m_dice.oneOf(m_structures); }
    void collectBelow(Field above, std::set<Field>& below);
    std::set<Field> below(Field above);

    std::string anyPath();
    Field resolve(Field at, std::string_view path);
    Field enter(Field child, std::string_view index, std::string_view rest, bool hasRest);

    Field make(const std::string& name);
    void add(DataStructure& parent, Field field);
    void addAnywhere();
    void remove(DataStructure& parent, const std::string& name);
    void leave(DataStructure& parent, Field field);
    void empty(DataStructure& parent);
    void deleteBelow(DataStructure& parent);
    void expectDeletion(Field parent, std::vector<Field>& gone);
    void assign();
    struct Segment {
        std::string name;
        bool isNode;
    };
    Segment anySegment();
    void createByPath();
    void create(DataStructure& asked, const std::vector<Segment>& path);
    Field createOne(DataStructure& parent, const Segment& segment);
    void growArray();
    void addKey();
    void emptyTable();
    void letGo(DataArray& array);
    void destroyAny();
    void forget(Field field);
    void release(Field owner);
    void storeAndStep();

    Dice m_dice;
    /// Assigned fields share their observers, so what deleting spares is not simple to tell: a model does the one or
    /// the other.
    bool m_assigns;
    bool m_isStoring = false;
    /// Of just its class: paths from it may be remembered.
    Orbel m_root{Text("root")};
    /// All that were made here, but for the elements of arrays and tables.
    std::vector<Field> m_fields;
    std::vector<DataStructure*> m_structures;
    std::vector<DataArray*> m_arrays;
    std::vector<DataHashTable*> m_tables;
    std::map<Field, std::shared_ptr<Children>> m_childrenOf;
    std::map<Field, std::vector<Field>> m_elementsOf;
    std::map<Field, std::map<std::string, Field>> m_entriesOf;
    std::map<Field, std::set<Field>> m_ownersOf;
};

template <class Item>
void take(std::vector<Item*>& items, Field item) {
    items.erase(std::remove(items.begin(), items.end(), item), items.end());
}

/// Nothing is a child any more; then everything goes.
Model::~Model() {
    for (DataStructure* structure : m_structures)
        structure->removeChildren();
    for (Field field : m_fields)
        delete field;
    for (auto& [array, elements] : m_elementsOf)
        for (Field element : elements)
            delete element;
}

void Model::collectBelow(Field above, std::set<Field>& below) {
    if (!above || !below.insert(above).second)
        return;
    if (const auto found = m_childrenOf.find(above); found != m_childrenOf.end())
        for (const auto& [name, child] : *found->second)
            collectBelow(child, below);
    if (const auto found = m_elementsOf.find(above); found != m_elementsOf.end())
        for (Field element : found->second)
            collectBelow(element, below);
}

/// A field and everything that its paths reach.
std::set<Field> Model::below(Field above) {
    std::set<Field> below;
    collectBelow(above, below);
    return below;
}

std::string Model::anyPath() {
    std::string path;
    for (int left = m_dice.below(3); left >= 0; --left) {
        path += m_dice.oneOf(names);
        switch (m_dice.below(6)) {
        case 0:
            path += '[' + std::to_string(m_dice.below(4)) + ']';
            break;
        case 1:
            path += '[' + m_dice.oneOf(keys) + ']';
            break;
        default:
            break;
        }
        if (left > 0)
            path += '/';
    }
    return path;
}

/// Resolution as it is told: one segment, then the rest, by what the test knows.
Field Model::resolve(Field at, std::string_view path) {
    const std::size_t slash = path.find('/');
    const std::string_view segment = path.substr(0, slash);
    const std::size_t bracket = segment.find('[');
    const std::string_view index = bracket == std::string_view::npos ? "" : segment.substr(bracket + 1);
    const Children& children = *m_childrenOf.at(at);
    const auto child = children.find(std::string(segment.substr(0, bracket)));
    if (child == children.end() || !child->second)
        return nullptr;
    const bool hasRest = slash != std::string_view::npos;
    return enter(child->second, index, hasRest ? path.substr(slash + 1) : "", hasRest);
}

Field Model::enter(Field child, std::string_view index, std::string_view rest, bool hasRest) {
    if (const auto entries = m_entriesOf.find(child); entries != m_entriesOf.end()) {
        if (index.empty())
            return child;
        const auto entry = entries->second.find(std::string(index.substr(0, index.find(']'))));
        if (entry == entries->second.end())
            return nullptr;
        return hasRest ? resolve(entry->second, rest) : entry->second;
    }
    if (!hasRest)
        return child;
    if (const auto elements = m_elementsOf.find(child); elements != m_elementsOf.end()) {
        const bool isNumber = !index.empty() && index[0] >= '0' && index[0] <= '9';
        const std::size_t start = index.empty() ? 0 : isNumber ? static_cast<std::size_t>(index[0] - '0') : 99;
        return start < elements->second.size() ? resolve(elements->second[start], rest) : nullptr;
    }
    return m_childrenOf.count(child) != 0 ? resolve(child, rest) : child;
}

Field Model::make(const std::string& name) {
    Text text(name);
    Field made = nullptr;
    switch (m_dice.below(8)) {
    case 0:
    case 1: {
        auto* structure = new DataStructure(text);
        know(structure, std::make_shared<Children>());
        made = structure;
        break;
    }
    case 2:
        made = m_arrays.emplace_back(new DataArray(text));
        m_elementsOf[made];
        break;
    case 3:
        made = m_tables.emplace_back(new DataHashTable(text));
        m_elementsOf[made];
        m_entriesOf[made];
        break;
    default:
        made = new DataValue(text);
        break;
    }
    m_fields.push_back(made);
    return made;
}

void Model::add(DataStructure& parent, Field field) {
    Field& child = (*m_childrenOf.at(&parent))[field->getName()];
    const bool isFree = !child;
    if (isFree)
        child = field;
    m_ownersOf[field].insert(&parent);
    EXPECT_EQ(parent.addField(field, 0), isFree);
    EXPECT_EQ(field->getParent(), &parent);
}

/// A field may have several parents, but a circle is no tree.
void Model::addAnywhere() {
    if (m_fields.empty())
        return;
    Field field = m_dice.oneOf(m_fields);
    DataStructure& parent = anyStructure();
    for (Field inside : below(field))
        if (const auto found = m_childrenOf.find(inside);
            found != m_childrenOf.end() && found->second == m_childrenOf.at(&parent))
            return;
    add(parent, field);
}

void Model::leave(DataStructure& parent, Field field) {
    m_ownersOf[field].erase(&parent);
    EXPECT_EQ(field->getRef(), static_cast<int>(m_ownersOf[field].size()));
}

void Model::remove(DataStructure& parent, const std::string& name) {
    Children& children = *m_childrenOf.at(&parent);
    const auto found = children.find(name);
    if (found == children.end())
        return;
    Field field = found->second;
    children.erase(found);
    parent.removeField(Text(name), 0);
    if (field)
        leave(parent, field);
}

void Model::empty(DataStructure& parent) {
    Children children;
    children.swap(*m_childrenOf.at(&parent));
    parent.removeChildren();
    for (const auto& [name, child] : children)
        if (child) {
            leave(parent, child);
            EXPECT_EQ(child->getParent(), nullptr);
        }
}

void Model::deleteBelow(DataStructure& parent) {
    // Elements would be left to nobody.
    for (Field field : below(&parent))
        if (const auto found = m_elementsOf.find(field); found != m_elementsOf.end() && !found->second.empty())
            return;
    std::vector<Field> gone;
    expectDeletion(&parent, gone);
    parent.deleteChildren();
    for (Field field : gone)
        release(field);
    EXPECT_EQ(parent.getNumFields(), 0);
}

void Model::expectDeletion(Field parent, std::vector<Field>& gone) {
    Children& children = *m_childrenOf.at(parent);
    while (!children.empty()) {
        Field child = children.begin()->second;
        children.erase(children.begin());
        if (!child)
            continue;
        m_ownersOf[child].erase(parent);
        if (!m_ownersOf[child].empty() || child->getNumHandlers() != 0)
            continue;
        if (m_childrenOf.count(child) != 0)
            expectDeletion(child, gone);
        forget(child);
        gone.push_back(child);
    }
}

/// Between structures that were made here.
void Model::assign() {
    DataStructure& target = anyStructure();
    DataStructure& source = anyStructure();
    if (&target == &source || !isKnown(&target) || !isKnown(&source) || below(&source).count(&target) != 0)
        return;
    const auto before = m_childrenOf.at(&target);
    if (before == m_childrenOf.at(&source))
        return;
    // One that shares its children leaves them to the others.
    if (before.use_count() == 2)
        empty(target);
    m_childrenOf[&target] = m_childrenOf.at(&source);
    // Counts and owners are taken over too.
    m_ownersOf[&target] = m_ownersOf[&source];
    target = source;
}

Model::Segment Model::anySegment() {
    return {m_dice.oneOf(names), m_dice.below(4) != 0};
}

/// Two paths that begin alike, as those that build a tree do.
void Model::createByPath() {
    DataStructure& asked = anyStructure();
    std::vector<Segment> way;
    for (int left = m_dice.below(4); left > 0; --left)
        way.push_back(anySegment());
    for (int left = 2; left > 0; --left) {
        std::vector<Segment> path = way;
        path.push_back(anySegment());
        create(asked, path);
    }
}

void Model::create(DataStructure& asked, const std::vector<Segment>& path) {
    std::string text;
    for (const Segment& segment : path)
        text += std::string(text.empty() ? "" : "/") + (segment.isNode ? "node:" : "string:") + segment.name;
    Field created = asked.getField(Text(text), 0, 1);
    Field expected = nullptr;
    Field at = &asked;
    for (std::size_t left = path.size(); at && left > 0; --left) {
        expected = createOne(static_cast<DataStructure&>(*at), path[path.size() - left]);
        // A value and a table without a key end the path, and so does what was refused.
        at = m_childrenOf.count(expected) != 0 ? expected : nullptr;
        if (const auto found = m_elementsOf.find(expected);
            found != m_elementsOf.end() && m_entriesOf.count(expected) == 0 && left > 1) {
            at = found->second.empty() ? nullptr : found->second.front();
            if (!at)
                expected = nullptr;
        }
    }
    EXPECT_EQ(created, expected) << text;
}

/// One segment of a path that has been asked for. Null when it was refused: a refused child names a parent all the
/// same, so parents may form a circle; and nothing is created too deep.
Field Model::createOne(DataStructure& parent, const Segment& segment) {
    Children& children = *m_childrenOf.at(&parent);
    const auto found = children.find(segment.name);
    Field known = found == children.end() ? nullptr : found->second;
    Field child = known ? known : parent.getField(Text(segment.name), 0, 1);
    if (!child)
        return nullptr;
    m_ownersOf[child].insert(&parent);
    // What is there is added once more: under its present name, which may be another.
    Field& listed = children[child->getName()];
    if (!listed)
        listed = child;
    if (known)
        return child;
    m_fields.push_back(child);
    if (segment.isNode)
        know(static_cast<DataStructure*>(child), std::make_shared<Children>());
    return child;
}

void Model::growArray() {
    if (m_arrays.empty())
        return;
    DataArray* array = m_dice.oneOf(m_arrays);
    array->setSize(m_dice.below(4));
    std::vector<Field>& elements = m_elementsOf[array];
    while (static_cast<int>(elements.size()) < array->getSize()) {
        DataObject* element = array->getObject(static_cast<int>(elements.size()));
        elements.push_back(element);
        m_ownersOf[element].insert(array);
        know(element, std::make_shared<Children>());
    }
}

void Model::addKey() {
    if (m_tables.empty())
        return;
    DataHashTable* table = m_dice.oneOf(m_tables);
    const std::string& key = m_dice.oneOf(keys);
    DataObject* entry = table->newObject(Text(key));
    const bool isNew = m_entriesOf[table].emplace(key, entry).second;
    EXPECT_EQ(m_entriesOf[table].at(key), entry);
    if (!isNew)
        return;
    m_elementsOf[table].push_back(entry);
    m_ownersOf[entry].insert(table);
    know(entry, std::make_shared<Children>());
}

void Model::emptyTable() {
    if (m_tables.empty())
        return;
    DataHashTable* table = m_dice.oneOf(m_tables);
    m_entriesOf[table].clear();
    letGo(*table);
}

/// The elements are destroyed; what is below them is taken out before.
void Model::letGo(DataArray& array) {
    const std::vector<Field> elements = m_elementsOf[&array];
    for (Field element : elements) {
        empty(static_cast<DataStructure&>(*element));
        forget(element);
        release(element);
    }
    m_elementsOf[&array].clear();
    array.removeChildren();
    EXPECT_EQ(array.getSize(), 0);
}

/// Most fields go when nobody holds them, some while they stand in a structure.
void Model::destroyAny() {
    if (m_fields.empty())
        return;
    Field field = m_dice.oneOf(m_fields);
    const auto elements = m_elementsOf.find(field);
    if ((elements != m_elementsOf.end() && !elements->second.empty()) ||
        (!m_ownersOf[field].empty() && m_dice.below(4) != 0))
        return;
    forget(field);
    release(field);
    delete field;
}

/// The field is about to be destroyed: where it stands, nothing is found.
void Model::forget(Field field) {
    for (auto& [structure, children] : m_childrenOf)
        for (auto& [name, child] : *children)
            if (child == field)
                child = nullptr;
    m_childrenOf.erase(field);
    m_elementsOf.erase(field);
    m_entriesOf.erase(field);
    m_ownersOf.erase(field);
    take(m_fields, field);
    take(m_structures, field);
    take(m_arrays, field);
    take(m_tables, field);
}

/// Another owner may come to stand where this one stood.
void Model::release(Field owner) {
    for (auto& [field, owners] : m_ownersOf)
        if (owners.erase(owner) != 0)
            field->unref(owner, field);
}

/// A handler changes the tree while it hears.
void Model::storeAndStep() {
    if (m_isStoring || m_fields.empty())
        return;
    m_isStoring = true;
    Diary diary;
    RecordingHandler handler(diary, "A");
    Field field = m_dice.oneOf(m_fields);
    field->setDataInitialized(1);
    field->registerHandler(&handler);
    handler.onceThen([this] {
        step();
        compare();
    });
    field->fireHandlers(true);
    m_isStoring = false;
}

void Model::step() {
    switch (m_dice.below(16)) {
    case 0:
    case 1:
        createByPath();
        break;
    case 2:
    case 3:
    case 4: {
        DataStructure& parent = anyStructure();
        add(parent, make(m_dice.oneOf(names)));
        break;
    }
    case 5:
        addAnywhere();
        break;
    case 6:
    case 7:
        remove(anyStructure(), m_dice.oneOf(names));
        break;
    case 8:
        if (!m_fields.empty())
            m_dice.oneOf(m_fields)->setName(Text(m_dice.oneOf(names)));
        break;
    case 9:
        if (m_dice.below(4) == 0)
            empty(anyStructure());
        break;
    case 10:
        growArray();
        addKey();
        break;
    case 11:
        if (m_dice.below(4) == 0 && !m_arrays.empty())
            letGo(*m_dice.oneOf(m_arrays));
        break;
    case 12:
        if (m_dice.below(4) == 0)
            emptyTable();
        break;
    case 13:
        if (m_assigns)
            assign();
        else if (m_dice.below(3) == 0)
            deleteBelow(anyStructure());
        break;
    case 14:
        storeAndStep();
        break;
    default:
        destroyAny();
        break;
    }
}

void Model::compare() {
    DataStructure& asked = m_dice.below(2) == 0 ? m_root : anyStructure();
    for (int left = 3; left > 0; --left) {
        const std::string path = anyPath();
        Text text(path);
        Field expected = resolve(&asked, path);
        EXPECT_EQ(asked.getField(text, 0, 1), expected) << path;
        EXPECT_EQ(asked.getField(text, 0, 1), expected) << path << ", asked again";
    }
    const Children& children = *m_childrenOf.at(&asked);
    EXPECT_EQ(asked.getNumFields(), static_cast<int>(children.size()));
    std::vector<Field> inOrder;
    int index = 0;
    for (const auto& [name, child] : children) {
        EXPECT_EQ(asked.getFieldByIndex(index++), child) << name;
        if (!child)
            continue;
        inOrder.push_back(child);
        EXPECT_EQ(child->getRef(), static_cast<int>(m_ownersOf[child].size())) << name;
    }
    std::vector<Field> listed;
    asked.getFieldsVector(&listed);
    EXPECT_EQ(listed, inOrder);
}

/// One observer of the model of notification, which does something when it hears.
class Observer : public DataHandler {
public:
    explicit Observer(int number) : DataHandler(Text("H" + std::to_string(number))), m_number(number) {}

    void onChange(DataField& /*field*/, bool changed) override { heard(m_number, changed); }

    std::function<void(int, bool)> heard;

private:
    int m_number;
};

/// A field's observers as they are told: a vector, walked by position, whose size is read again at each step. The
/// marker is the number -1.
class ObserverModel {
public:
    static constexpr int marker = -1;

    std::function<void(int, bool)> heard;

    void fire(bool changed) {
        for (std::size_t at = 0; at < list.size(); ++at)
            if (list[at] != marker)
                heard(list[at], changed);
    }
    void add(int number) {
        if (std::find(list.begin(), list.end(), number) != list.end())
            return;
        list.push_back(number);
        fire(false);
    }
    void remove(int number) { list.erase(std::remove(list.begin(), list.end(), number), list.end()); }

    std::vector<int> list;
};

/// The same play in front of the library and of the model: what the next who hear do is decided beforehand.
class Play {
public:
    explicit Play(unsigned seed) : m_dice(seed), m_real(dynamicRoot()) {
        for (int number = 0; number < 4; ++number)
            m_observers.push_back(std::make_unique<Observer>(number));
    }
    Play(const Play&) = delete;
    Play& operator=(const Play&) = delete;
    ~Play() {
        m_root.removeChildren();
        delete m_real;
    }

    void round() {
        std::vector<int> deeds;
        for (int left = 0; left < 4; ++left)
            deeds.push_back(m_dice.below(12));
        const int first = m_dice.below(12);

        std::vector<std::string> realDiary;
        std::size_t realNext = 0;
        for (auto& observer : m_observers)
            observer->heard = [&](int number, bool changed) {
                realDiary.push_back(note(number, changed));
                if (realNext < deeds.size())
                    actReal(deeds[realNext++], number);
            };
        actReal(first, 0);

        std::vector<std::string> modelDiary;
        std::size_t modelNext = 0;
        m_model.heard = [&](int number, bool changed) {
            modelDiary.push_back(note(number, changed));
            if (modelNext < deeds.size())
                actModel(deeds[modelNext++], number);
        };
        actModel(first, 0);

        EXPECT_EQ(realDiary, modelDiary);
        EXPECT_EQ(m_real->getNumHandlers(), static_cast<int>(m_model.list.size()));
        for (std::size_t at = 0; at < m_model.list.size() && m_dice.below(4) == 0; ++at) {
            const int number = m_model.list[at];
            EXPECT_STREQ(m_real->getHandlerByID(static_cast<int>(at))->getName(),
                         number < 0 ? "DUMMY" : m_observers[static_cast<std::size_t>(number)]->getName());
        }
    }

private:
    DataField* dynamicRoot() {
        auto* field = new DataValue(Text("x"));
        m_root.addField(field, 0);
        field->setData("1");
        return field;
    }

    static std::string note(int number, bool changed) { return std::to_string(number) + (changed ? "!" : "="); }

    void actReal(int deed, int self) {
        Observer& own = *m_observers[static_cast<std::size_t>(self)];
        switch (deed) {
        case 0:
        case 1:
        case 2:
        case 3:
            m_real->registerHandler(m_observers[static_cast<std::size_t>(deed)].get());
            break;
        case 4:
        case 5:
            m_real->unregisterHandler(m_observers[static_cast<std::size_t>(deed - 4)].get());
            break;
        case 6:
            m_real->unregisterHandler(&own);
            m_real->registerHandler(&own);
            break;
        case 7:
            m_root.getField(Text("string:x"), 0, 0);
            break;
        case 8:
            if (DataHandler* marker = m_real->getHandlerByName(Text("DUMMY")))
                m_real->unregisterHandler(marker);
            break;
        case 9:
            m_real->unregisterHandler(&own);
            break;
        case 10:
            m_real->unregisterAllHandlers();
            break;
        default:
            m_real->setData("2");
            break;
        }
    }

    void actModel(int deed, int self) {
        switch (deed) {
        case 0:
        case 1:
        case 2:
        case 3:
            m_model.add(deed);
            break;
        case 4:
        case 5:
            m_model.remove(deed - 4);
            break;
        case 6:
            m_model.remove(self);
            m_model.add(self);
            break;
        case 7:
            m_model.add(ObserverModel::marker);
            break;
        case 8:
            m_model.remove(ObserverModel::marker);
            break;
        case 9:
            m_model.remove(self);
            break;
        case 10:
            m_model.list.clear();
            break;
        default:
            m_model.fire(true);
            break;
        }
    }

    Dice m_dice;
    Orbel m_root{Text("root")};
    std::vector<std::unique_ptr<Observer>> m_observers;
    DataField* m_real;
    ObserverModel m_model;
};

class Seeded : public testing::TestWithParam<unsigned> {};

} // namespace

TEST_P(Seeded, PathsLeadWhereAPlainWalkLeads) {
    Model model(GetParam());
    for (int step = 0; step < 2'500 && !HasFailure(); ++step) {
        SCOPED_TRACE("seed " + std::to_string(GetParam()) + ", step " + std::to_string(step));
        model.step();
        model.compare();
    }
}

TEST_P(Seeded, HandlersHearWhatAWalkByPositionTells) {
    Play play(GetParam());
    for (int round = 0; round < 2'500 && !HasFailure(); ++round) {
        SCOPED_TRACE("seed " + std::to_string(GetParam()) + ", round " + std::to_string(round));
        play.round();
    }
}

INSTANTIATE_TEST_SUITE_P(PathModel, Seeded, testing::Values(1u, 2u, 3u, 4u, 5u, 6u, 7u, 8u));
