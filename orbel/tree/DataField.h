#ifndef ORBEL_TREE_DATAFIELD_H
#define ORBEL_TREE_DATAFIELD_H

#include <orbel/tree/DataBaseType.h>
#include <orbel/tree/FieldHandlers.h>
#include <orbel/tree/FieldRef.h>
#include <orbel/tree/SharedPart.h>

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

class DataHandler;
class DataNode;
class FieldWatch;
class LinkTargets;
struct FieldTies;

/// A member of a tree: an item with a parent, observers, links, and values that are set and read as text.
///
/// Null texts read as empty texts. A field may be destroyed at any time, also from inside one of its own
/// notifications; what is under way on it then ends. Destroying a field takes its handlers off and ends its links,
/// but leaves the parent alone: take it out of its parent first (DataNode::removeField).
class ORBEL_API DataField : public DataBaseType {
public:
    static DataType* classType;
    static void init();
    static DataType* getClassType();

    explicit DataField(char* name);
    /// Copies share the handlers and the link targets of `other`, see clone().
    DataField(const DataField& other);
    DataField& operator=(const DataField& other);

    const char* getTypeName() override;

    /// Ends the links to this field's source and to its targets.
    virtual void ClearLinks();

    virtual ~DataField();

    /// Grows to `n` values or elements, at most 16,777,216; never shrinks.
    virtual void setSize(int n);
    /// How many values or elements there are; 0 here.
    virtual int getSize();

    /// A new item of the same class and name, owned by the caller.
    virtual DataField* clone();

    /// Loads values from text: comma-separated tokens, in doubled quotes where they hold commas. Without an index
    /// text the first token is stored; with one ("2]", "0-3,7") each index takes the next token.
    virtual void parse(char* indexSpec, char* text);

    /// Each form of setData first passes the call to the link targets, in order.
    virtual void setData(const char* value);
    virtual void setData(const char* value, int index);
    virtual void setData(std::string* value, int index);
    /// Stores the texts from index `from` on; the last one repeats up to `to`, -1 stands for as many as there are.
    virtual void setData(std::vector<char*>* values, int from, int to);

    /// The texts belong to the field and stay valid until the next store.
    virtual bool getData(char** value, int index);
    virtual std::string* getData(int index);
    /// Replaces the content of `out` by the texts of `from` to `to`, both included; -1 stands for all the rest.
    virtual void getData(std::vector<char*>* out, int from, int to);
    /// All texts, which belong to the field; null where there are none.
    virtual std::vector<std::string>* getDataVector();

    /// Empties the values, also those of what is below; nothing here.
    virtual void clearData();
    /// Copies values of another field, `count` of them from one index to another; false when it cannot, as here.
    virtual bool copyData(DataField* source, int sourceIndex, int targetIndex, int count);

    /// Null also when the parent has been destroyed.
    DataNode* getParent();
    /// Only notes who the parent is, and where the field stands in it; DataNode::addField takes a field in.
    void setParent(DataNode* parent, int instance);
    /// What setParent was given.
    int getParentInstance();
    /// 1 once a value has been stored; before that, stores are the only thing handlers are not told of.
    int getDataInitialized();
    /// See getDataInitialized.
    void setDataInitialized(int initialized);

    /// The path from the root, as getField of the root reads it back. In one process-wide buffer that the next call
    /// overwrites. Counts at most 30 levels up.
    char* getFullPath();

    /// Adds `handler` at the end of the list and notifies every handler once, with changed = false. Does not take it
    /// off another field; registering by path through a node does.
    void registerHandler(DataHandler* handler);
    /// Nothing happens when it is not on this field.
    void unregisterHandler(DataHandler* handler);
    /// The handlers are then on no field.
    void unregisterAllHandlers();

    /// Notify in order of registration; nothing is told before the first store.
    void fireHandlers(bool changed);
    void fireHandlers(bool changed, int from, int to);
    /// Told also before the first store.
    void fireOnTypeChange(char* typeName);

    /// Counts the handlers that ask for real changes only; registering and unregistering do it by themselves.
    void countNotifyOnValueChange();
    /// What countNotifyOnValueChange counted last.
    int getCountNotifyOnValueChange();

    /// The first handler of exactly this name, else null.
    DataHandler* getHandlerByName(char* name);
    /// Null when out of range.
    DataHandler* getHandlerByID(int index);
    /// How many handlers are on the field; one created by path counts its marker.
    int getNumHandlers();
    /// Calls dump of each handler.
    void dumpHandlers();

    /// Makes `target` follow this field. Refused, without a word, when it would close a cycle or exists already.
    /// A change is passed along at most 256 links in a row. It goes by position through the live list of targets: when
    /// one of them is destroyed or released while it is set, the next in line is skipped this once.
    void addTargetLink(DataField* target);
    /// Follows `source` from now on, which does not set this field, as it does those of addTargetLink. Null ends the
    /// link.
    void setLinkSource(DataField* source);
    /// Contract: `target` stops following its source, also when that is another field.
    void removeTargetLink(DataField* target);
    /// Ends the link to the source.
    void removeSourceLink();
    /// Ends the links of all that follow this field.
    void removeAllTargets();
    /// True when `field` is on this field's chain of sources.
    bool findLinkSource(DataField* field);
    /// Null when the field follows none.
    DataField* getLinkSource();

private:
    friend class DataHandler;
    friend class DataNode;
    friend class DataStructure;
    friend class DataValue;
    friend class FieldRef;
    friend class LinkTargets;

    DataField(DataType* type, std::string_view name);
    void parseOne(std::string_view tokens);
    void parseRanges(std::string_view ranges, std::string_view tokens);
    void registerMarker();
    void leave(DataHandler& handler);
    void tellHandlers();
    template <class Call>
    void walkHandlers(Call call);
    template <class Call>
    void walkHandlers(const FieldWatch& watch, Call call);
    template <class Call>
    void walkSingle(const FieldWatch& watch, Call call);
    template <class Call>
    void walkOn(const FieldWatch& watch, std::size_t next, Call call);

    const SharedPart<FieldHold>& hold();
    const SharedPart<FieldHold>& makeHold();
    FieldTies& ties();
    LinkTargets& targets();
    /// Null when nothing was ever linked to this field.
    LinkTargets* targetsIfAny() const;
    template <class Call>
    bool walkTargets(Call call);
    template <class Call>
    bool walkTargets(const FieldWatch& watch, Call call);
    template <class Call>
    bool walkTargetsFrom(std::size_t skips, const FieldWatch& watch, Call call);
    void setSource(DataField* source);
    void leaveSourceFor(LinkTargets& joined);
    void shareFrom(const DataField& other);

    // In this order what a store touches lies together, with the text that a DataValue adds.
    int m_parentInstance = 0;
    FieldRef m_parent;
    std::unique_ptr<FieldTies> m_ties;
    FieldHandlers m_handlers;
    int m_dataInitialized = 0;
};

#endif
