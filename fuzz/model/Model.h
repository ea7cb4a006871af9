#ifndef ORBEL_FUZZ_MODEL_MODEL_H
#define ORBEL_FUZZ_MODEL_MODEL_H

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

/// What a tree is and does, told by the plainest means: maps, vectors and recursion. Nothing here is ever freed, so a
/// field that was destroyed in the middle of something can be asked whether it was.
namespace model {

struct TypeField {
    std::string type;
    std::string name;
    int count = 1;
    std::string standard;
};

struct Type {
    std::string name;
    std::vector<TypeField> fields;
};

using Types = std::map<std::string, std::shared_ptr<const Type>>;

enum class Kind { Value, Structure, Object, Array };

struct Field {
    /// In the place of a handler: what a field created by a path is marked with.
    static constexpr int marker = -1;

    int id = 0;
    Kind kind = Kind::Value;
    bool isRoot = false;
    bool isAlive = true;
    /// Whether the other side knows it too.
    bool isKnown = false;
    std::string name;
    Field* parent = nullptr;
    int instance = 0;
    bool isInitialized = false;
    std::vector<int> handlers;
    int asking = 0;
    Field* source = nullptr;
    std::vector<Field*> targets;
    /// Null for the owner that has no name.
    std::set<const Field*> owners;
    int references = 0;
    int referenceCalls = 0;
    std::vector<std::string> texts;
    /// Null for one that was destroyed in its place.
    std::map<std::string, Field*> children;
    std::vector<Field*> elements;
    std::shared_ptr<const Type> type;

    bool isNode() const { return kind != Kind::Value; }
    bool isStructure() const { return kind == Kind::Structure || kind == Kind::Object; }
    int size() const;
};

struct Handler {
    bool isAlive = true;
    bool asks = false;
    Field* field = nullptr;
};

class Model {
public:
    explicit Model(int handlers);

    /// A handler hears something.
    std::function<void(int handler, Field& field, const std::string& what)> heard;

    Field& root() { return *fields.front(); }
    Field& make(Kind kind, const std::string& name);
    void kill(Field& field);
    Field* parentOf(const Field& field) const;
    bool isElement(const Field& field) const;
    bool isBelow(Field& field, const Field& above) const;
    /// By what is listed: an element that was moved elsewhere is still one of its array.
    bool isWithin(const Field& field, const Field& above) const;
    std::string fullPath(Field& field) const;
    std::string dump(Field& field);

    void setSize(Field& field, int size);
    void setData(Field& field, const std::string& text);
    void setData(Field& field, const std::string& text, int index);
    void setData(Field& field, const std::vector<std::string>& texts, int from, int to);
    void clearData(Field& field);
    bool copyData(Field& field, Field* source, int sourceIndex, int targetIndex, int count);

    void registerHandler(Field& field, int handler);
    void unregisterHandler(Field& field, int handler);
    void unregisterAll(Field& field);
    void destroyHandler(int handler);
    void fire(Field& field, bool changed);
    bool registerByPath(Field& node, const std::string& path, int handler, int index);
    bool unregisterByNode(Field& node, int handler);

    bool addField(Field& parent, Field& field, int instance);
    void removeField(Field& node, const std::string& name, int index);
    void removeChildren(Field& node);
    void deleteChildren(Field& node);
    int numFields(const Field& node) const;
    Field* childOf(Field& node, const std::string& name) const;
    Field* find(Field& node, const std::string& path, int index, bool flag);

    void addLink(Field& source, Field& target);
    void removeSource(Field& field);
    void removeTargets(Field& field);
    void clearLinks(Field& field);

    void setType(Field& field, std::shared_ptr<const Type> type);
    void setType(Field& field, const std::string& name);

    void runCommands(Field& node, const std::string& text, int index);
    void runCommand(Field& node, const std::string& text, int index);
    void runCopyCommand(Field& node, const std::string& text);
    void runClearCommand(Field& node, const std::string& text);
    bool link(Field& node, const std::string& sourcePath, const std::string& targetPath);
    void runLinkCommand(Field& node, const std::string& text);
    void runLinkCommands(Field& node, const std::string& text);

    std::vector<std::unique_ptr<Field>> fields;
    std::vector<Handler> handlers;
    Types types;

private:
    struct Wildcard {
        Field* node = nullptr;
        std::string rest;
    };

    bool passOn(Field& field, const std::function<void(Field&)>& call);
    bool storeAt(Field& field, const std::string& text, int index);
    void fire(Field& field, bool changed, int from, int to);
    void fireType(Field& field, const std::string& name);
    void tell(Field& field, const std::function<void(int)>& call);
    void recount(Field& field);
    void tellOfJoining(Field& field);
    void mark(Field& field);
    bool registerInStructure(Field& node, const std::string& path, int handler, int index);
    bool registerInObject(Field& node, const std::string& path, int handler, int index);

    void ref(Field& field, const Field* owner);
    void unref(Field& field, const Field* owner);
    Field* nextChild(Field& node, std::optional<std::string>& last) const;
    void disposeIfUnused(Field& field);

    Field* findIn(Field& node, const std::string* path, int index, bool flag, Wildcard& wildcard);
    Field* findOrCreate(Field& node, const std::string& kind, const std::string& name);
    Field* create(const std::string& kind, const std::string& name);

    std::shared_ptr<const Type> typeOf(const std::string& name) const;
    void createStructure(Field& object);
    Field* createField(Field& object, const TypeField& declaration);
    Field& createObject(const std::shared_ptr<const Type>& type, const std::string& name);
    Field& createArray(const std::shared_ptr<const Type>& type, const std::string& name, int size);

    void parse(Field& field, const std::string* indices, const std::string& text);
    void parseValue(Field& field, const std::string* indices, const std::string& text);
    void parseStructure(Field& field, const std::string* indices, const std::string& text);
    void parseArray(Field& field, const std::string* indices, const std::string& text);
    void broadcast(Field& node, const std::string& rest, const std::string& value, int index);
    std::vector<Field*> rangeOf(Field& node, const std::string* range);
    Field* rootAbove(Field& node) const;
    void dump(Field& field, bool withName, std::string& out, int& level);

    int m_commandDepth = 0;
};

/// "2-5]" and such, range by range; -1 for what is missing.
struct Range {
    int start = -1;
    int end = -1;
};
std::vector<Range> readRanges(const std::string& text);

} // namespace model

#endif
