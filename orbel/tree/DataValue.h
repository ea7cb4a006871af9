#ifndef ORBEL_TREE_DATAVALUE_H
#define ORBEL_TREE_DATAVALUE_H

#include <orbel/tree/DataField.h>

#include <string_view>

struct ValueTexts;

/// A leaf: one or more texts, indexed from 0. A new one holds a single space and counts as not stored yet.
class ORBEL_API DataValue : public DataField {
public:
    static DataType* classType;
    static void init();
    static DataType* getClassType();

    explicit DataValue(char* name);
    /// Holds this text.
    DataValue(char* name, std::string* value);
    /// Copies share as clones do, see clone().
    DataValue(const DataValue& other);
    DataValue& operator=(const DataValue& other);
    ~DataValue() override;

    const char* getTypeName() override;
    /// "name=value;", or "name[0-2]=a,b,c;" for several values; `first` -1 stands for all.
    void dump(std::ostream& os, int first, int last, int withName) override;
    void dumpXML(std::ostream& os) override;

    void setSize(int n) override;
    int getSize() override;

    /// The copy shares the values, the handlers and the link targets with this item; either may be destroyed first,
    /// and the first to go takes the shared handlers off and ends the shared links. Until a node adopts the copy it
    /// names this item's parent.
    DataField* clone() override;

    void setData(const char* value) override;
    /// Nothing happens for an index that is not there.
    void setData(const char* value, int index) override;
    void setData(std::string* value, int index) override;
    void setData(std::vector<char*>* values, int from, int to) override;

    bool getData(char** value, int index) override;
    std::string* getData(int index) override;
    void getData(std::vector<char*>* out, int from, int to) override;
    std::vector<std::string>* getDataVector() override;

    /// Stores the empty text in every value, each store notifying.
    void clearData() override;
    /// Copies up to `count` texts from another DataValue, all that both have for a negative count. False when the
    /// source is no DataValue or an index is negative. Not passed on to link targets.
    bool copyData(DataField* source, int sourceIndex, int targetIndex, int count) override;

private:
    friend class DataStructure;

    DataValue(DataType* type, std::string_view name);
    void appendDump(std::string& out, int first, int last, int withName);
    ValueTexts* textsIfAny() const;
    std::string* firstText();
    std::vector<std::string>& texts();
    void shareTexts(const DataValue& other);
    bool isSimple() const;
    void storeSimply(const char* value);
    void tellSimply(const FieldWatch& watch);
    void storeAndTell(const FieldWatch& watch, const char* value);
    void store(const FieldWatch& watch, const char* value);
    void setAlone(const char* value);
    void setAndPassOn(const char* value);
    void setAmongOthers(const char* value);
    bool storeAt(std::string_view value, std::size_t index);
    template <class Next>
    bool storeAll(int from, int count, Next next);
    void setAt(std::string_view value, int index);

    // A single text stands in the item itself, until somebody asks for the vector, sets a size or shares it. Others
    // stand with what ties fields to others.
    std::string m_text = " ";
};

#endif
