#include <orbel/tree/DataValue.h>

#include <orbel/foundation/DataClassType.h>
#include <orbel/tree/DataHandler.h>

#include "../foundation/text/FixedText.h"
#include "../foundation/text/Writer.h"
#include "DumpRange.h"
#include "DumpUnderWay.h"
#include "FieldTies.h"
#include "FieldWatch.h"
#include "HandlerWalk.h"
#include "Limits.h"
#include "TreeState.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>
#include <ostream>

namespace {

/// Kept out of the way of nearly every change, which then needs half the registers.
[[gnu::noinline]] void replace(std::string& stored, std::string_view text) {
    stored.assign(text);
}

/// Copies so many characters, of which one word holds half or more. Both ends are read before one is written, for the
/// two texts may be the same.
template <class Word>
void copyEnds(char* to, const char* from, std::size_t size) {
    const std::size_t last = size - sizeof(Word);
    Word ends[2];
    std::memcpy(&ends[0], from, sizeof(Word));
    std::memcpy(&ends[1], from + last, sizeof(Word));
    std::memcpy(to, &ends[0], sizeof(Word));
    std::memcpy(to + last, &ends[1], sizeof(Word));
}

/// Numbers and times, most of what a show writes, are short and keep their lengths: then nothing but the characters
/// changes, without a call. The new text may lie in the old one.
void write(std::string& stored, std::string_view text) {
    const std::size_t size = text.size();
    if (stored.size() != size)
        replace(stored, text);
    else if (size >= 8 && size <= 16)
        copyEnds<std::uint64_t>(stored.data(), text.data(), size);
    else if (size >= 4 && size < 8)
        copyEnds<std::uint32_t>(stored.data(), text.data(), size);
    else
        std::memmove(stored.data(), text.data(), size);
}

} // namespace

inline ValueTexts* DataValue::textsIfAny() const {
    return m_ties && m_ties->texts ? &*m_ties->texts : nullptr;
}

inline std::string* DataValue::firstText() {
    ValueTexts* texts = textsIfAny();
    return texts ? texts->list.data() : &m_text;
}

/// Stores and tells whether handlers are to hear of a change.
inline bool DataValue::storeAt(std::string_view value, std::size_t index) {
    std::string& stored = firstText()[index];
    const bool changed = m_handlers.notifyCount() < 1 || stored != value;
    write(stored, value);
    return changed;
}

/// Stores all of `count` texts or, without memory for one, none. Tells whether handlers are to hear of a change.
template <class Next>
bool DataValue::storeAll(int from, int count, Next next) {
    std::string* const stored = firstText() + from;
    int fitting = 0;
    while (fitting < count && next(fitting).size() <= stored[fitting].capacity())
        ++fitting;
    bool changed = false;
    if (fitting == count) {
        for (int done = 0; done < count; ++done)
            changed |= storeAt(next(done), static_cast<std::size_t>(from) + static_cast<std::size_t>(done));
        return changed;
    }
    std::vector<std::string> made;
    made.reserve(static_cast<std::size_t>(count));
    for (int done = 0; done < count; ++done)
        made.emplace_back(next(done));
    for (int done = 0; done < count; ++done) {
        std::string& text = made[static_cast<std::size_t>(done)];
        changed |= m_handlers.notifyCount() < 1 || stored[done] != text;
        stored[done].swap(text);
    }
    return changed;
}

DataType* DataValue::classType = nullptr;

void DataValue::init() {
    if (classType)
        return;
    DataField::init();
    char name[] = "DataValue";
    classType = new DataClassType<DataValue, DataField>(name);
}

DataType* DataValue::getClassType() {
    init();
    return classType;
}

DataValue::DataValue(char* name) : DataValue(getClassType(), text::viewOf(name)) {}

DataValue::DataValue(DataType* type, std::string_view name) : DataField(type, name) {}

DataValue::DataValue(char* name, std::string* value) : DataValue(name) {
    if (!value)
        return;
    m_text = *value;
    m_dataInitialized = 1;
}

DataValue::DataValue(const DataValue& other) : DataField(other) {
    shareTexts(other);
}

DataValue& DataValue::operator=(const DataValue& other) {
    const_cast<DataValue&>(other).texts();
    DataField::operator=(other);
    shareTexts(other);
    return *this;
}

DataValue::~DataValue() = default;

const char* DataValue::getTypeName() {
    return "DataValue";
}

void DataValue::dump(std::ostream& os, int first, int last, int withName) {
    DumpUnderWay dump(os);
    text::LentText line(treeState.texts);
    appendDump(line.get(), first, last, withName);
    std::string_view toWrite = line.view();
    if (os.width() != 0) {
        // A width that the caller has set is for the name alone.
        const std::size_t name = withName != 0 ? text::viewOf(getName()).size() : 0;
        os << toWrite.substr(0, name);
        toWrite.remove_prefix(name);
    }
    text::write(os, toWrite);
    dump.endFlushed();
}

void DataValue::appendDump(std::string& out, int first, int last, int withName) {
    const DumpRange range(getSize(), first, last);
    if (withName != 0) {
        out += getName();
        range.appendIndex(out);
        out += '=';
    }
    for (int index = range.from(); index <= range.to(); ++index) {
        if (index != range.from())
            out += ',';
        // The vector is the client's too, and may be empty.
        if (const std::string* stored = getData(index))
            out += *stored;
    }
    out += ';';
}

void DataValue::dumpXML(std::ostream& os) {
    indent(os);
    os << '<' << getName() << '>';
    for (int index = 0; index < getSize(); ++index)
        os << (index == 0 ? "" : ",") << *getData(index);
    os << "</" << getName() << '>' << std::flush;
}

void DataValue::setSize(int n) {
    if (n > getSize() && n <= limits::maxElements)
        texts().resize(static_cast<std::size_t>(n));
}

int DataValue::getSize() {
    const ValueTexts* texts = textsIfAny();
    return texts ? static_cast<int>(texts->list.size()) : 1;
}

std::vector<std::string>& DataValue::texts() {
    SharedPart<ValueTexts>& texts = ties().texts;
    if (!texts) {
        // Copied: whoever was given the single text may still read it.
        auto made = std::make_unique<ValueTexts>();
        made->list.assign(1, m_text);
        texts = SharedPart(made.release());
    }
    return texts->list;
}

/// From now on both have the same texts. Takes no memory when `other` has the vector and this field its ties.
void DataValue::shareTexts(const DataValue& other) {
    const_cast<DataValue&>(other).texts();
    ties().texts = other.m_ties->texts;
}

DataField* DataValue::clone() {
    texts();
    std::unique_ptr<DataValue> copy(static_cast<DataValue*>(type()->alloc(getName(), getSize())));
    static_cast<DataField&>(*copy) = *this;
    copy->shareTexts(*this);
    return copy.release();
}

/// The way of nearly every change: one text, and at most one observer, who wants to hear of every store.
inline bool DataValue::isSimple() const {
    return !textsIfAny() && m_handlers.isSimple();
}

inline void DataValue::storeSimply(const char* value) {
    write(m_text, text::viewOf(value));
    m_dataInitialized = 1;
}

inline void DataValue::tellSimply(const FieldWatch& watch) {
    walkSingle(watch, [this](DataHandler& handler) { handler.onChange(*this, true); });
}

inline void DataValue::storeAndTell(const FieldWatch& watch, const char* value) {
    // The vector is the client's too.
    if (ValueTexts* texts = textsIfAny(); texts && texts->list.empty())
        texts->list.resize(1);
    const bool changed = storeAt(text::viewOf(value), 0);
    m_dataInitialized = 1;
    walkHandlers(watch, [this, changed](DataHandler& handler) { handler.onChange(*this, changed); });
}

/// Apart, for it needs more registers than what is simple.
[[gnu::noinline]] void DataValue::store(const FieldWatch& watch, const char* value) {
    storeAndTell(watch, value);
}

/// Only chooses: then no way of storing pays for the registers that another one needs.
void DataValue::setData(const char* value) {
    if (targetsIfAny())
        setAndPassOn(value);
    else if (isSimple())
        setAlone(value);
    else
        setAmongOthers(value);
}

[[gnu::noinline]] void DataValue::setAlone(const char* value) {
    storeSimply(value);
    const FieldWatch watch(*this);
    tellSimply(watch);
}

/// For a field with followers, which may make it less simple. Not by DataField::setData: along a chain of links every
/// call counts.
[[gnu::noinline]] void DataValue::setAndPassOn(const char* value) {
    const FieldWatch watch(*this);
    if (!walkTargets(watch, [value](DataField& target) { target.setData(value); }))
        return;
    if (!isSimple()) {
        store(watch, value);
        return;
    }
    storeSimply(value);
    tellSimply(watch);
}

[[gnu::noinline]] void DataValue::setAmongOthers(const char* value) {
    const FieldWatch watch(*this);
    storeAndTell(watch, value);
}

void DataValue::setData(const char* value, int index) {
    const FieldWatch watch(*this);
    DataField::setData(value, index);
    if (!watch.ended())
        setAt(text::viewOf(value), index);
}

void DataValue::setData(std::string* value, int index) {
    const FieldWatch watch(*this);
    DataField::setData(value, index);
    if (!watch.ended())
        setAt(value ? std::string_view(*value) : std::string_view(), index);
}

void DataValue::setAt(std::string_view value, int index) {
    if (index < 0 || index >= getSize())
        return;
    const bool changed = storeAt(value, static_cast<std::size_t>(index));
    m_dataInitialized = 1;
    // Contract: handlers rely on the end 0 here; fireHandlers raises it to the index.
    fireHandlers(changed, index, 0);
}

void DataValue::setData(std::vector<char*>* values, int from, int to) {
    const FieldWatch watch(*this);
    DataField::setData(values, from, to);
    if (watch.ended() || !values)
        return;
    const int size = getSize();
    if (from < 0 || from >= size) {
        m_dataInitialized = 1;
        return;
    }
    const long long count = static_cast<long long>(values->size());
    const long long wanted = to == -1 ? from + count - 1 : std::min<long long>(to, 0LL + size + from - 1);
    const int last = static_cast<int>(std::min<long long>(wanted, size - 1));

    bool changed = getCountNotifyOnValueChange() < 1;
    if (count > 0 && from <= last) {
        const auto next = [&](int done) {
            return text::viewOf((*values)[static_cast<std::size_t>(std::min<long long>(done, count - 1))]);
        };
        changed |= storeAll(from, last - from + 1, next);
    }
    m_dataInitialized = 1;
    fireHandlers(changed, from, last);
}

bool DataValue::getData(char** value, int index) {
    std::string* stored = DataValue::getData(index);
    if (!stored || !value)
        return false;
    *value = stored->data();
    return true;
}

std::string* DataValue::getData(int index) {
    return index >= 0 && index < DataValue::getSize() ? firstText() + index : nullptr;
}

void DataValue::getData(std::vector<char*>* out, int from, int to) {
    if (!out)
        return;
    out->clear();
    if (from < 0)
        return;
    const int last = to == -1 ? getSize() - 1 : std::min(to, getSize() - 1);
    out->reserve(static_cast<std::size_t>(std::max(last - from + 1, 0)));
    for (int index = from; index <= last; ++index)
        out->push_back(firstText()[index].data());
}

std::vector<std::string>* DataValue::getDataVector() {
    return &texts();
}

void DataValue::clearData() {
    const int size = getSize();
    if (size == 1) {
        setData("");
        return;
    }
    const FieldWatch watch(*this);
    for (int index = 0; index < size && !watch.ended(); ++index)
        setData("", index);
}

bool DataValue::copyData(DataField* source, int sourceIndex, int targetIndex, int count) {
    if (!source || source->isOfType(getClassType()) == 0 || sourceIndex < 0 || targetIndex < 0)
        return false;
    // A clone shares the values, so source and target may overlap.
    std::string* from = static_cast<DataValue*>(source)->firstText();
    std::string* into = firstText();
    const int both = std::min(getSize(), source->getSize());
    count = count < 0 ? both : std::min(count, both);
    count = std::clamp(std::min(source->getSize() - sourceIndex, getSize() - targetIndex), 0, count);

    const std::string* first = from + std::min(sourceIndex, source->getSize());
    std::string* target = into + std::min(targetIndex, getSize());
    const bool changed = !std::equal(first, first + count, target);
    if (!std::equal(first, first + count, target,
                    [](const std::string& text, const std::string& old) { return text.size() <= old.capacity(); })) {
        std::vector<std::string> made(first, first + count);
        std::swap_ranges(made.begin(), made.end(), target);
    } else if (from == into && sourceIndex < targetIndex) {
        std::copy_backward(first, first + count, target + count);
    } else if (from != into || sourceIndex != targetIndex) {
        std::copy(first, first + count, target);
    }
    m_dataInitialized = 1;
    fireHandlers(changed, targetIndex, targetIndex + count - 1);
    return true;
}
