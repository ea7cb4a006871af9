#include <orbel/expr/DataExpSegment.h>

#include <orbel/tree/DataNode.h>

#include "../tree/Limits.h"
#include "../tree/TreeState.h"
#include "ExpressionState.h"
#include "ExpressionText.h"
#include "ExpressionWatch.h"

#include <cstdio>

namespace {

/// The field at `name` in the nearest enclosing node that has it. Paths can create fields, so this may run callbacks,
/// which must not reach the name.
DataField* findFrom(const FieldRef& start, std::string_view name) {
    if (name.size() > limits::maxPathLength)
        return nullptr;
    // Nobody is called, and what the name leads to is there: it need not be kept from anybody.
    if (start.get())
        if (DataField* known = treeState.resolveKnownValue(*start.get(), name))
            return known;
    FieldRef node = start;
    text::LentText scratch(expressionState.texts);
    while (node.get()) {
        // Each time anew, for the lookup may cut its text up.
        scratch.get().assign(name);
        if (DataField* found = static_cast<DataNode*>(node.get())->getField(scratch.get().data(), 0, 1))
            return found;
        if (node.get())
            node = FieldRef(node.get()->getParent());
    }
    return nullptr;
}

} // namespace

DataExpSegment::DataExpSegment() = default;

DataExpSegment::~DataExpSegment() {
    release();
}

void DataExpSegment::hold(DataField* field) {
    FieldRef found(field);
    release();
    field->ref(this, nullptr);
    m_field = std::move(found);
}

void DataExpSegment::release() {
    if (DataField* field = m_field.get())
        field->unref(this, nullptr);
    m_field = FieldRef();
}

void DataExpSegment::fill(Kind kind, std::string_view text) {
    m_text = text;
    m_kind = kind;
}

void DataExpSegment::fillReference(Kind kind, std::string_view written, const FieldRef& context,
                                   const ExpressionWatch& watch) {
    const WrittenReference reference = readReference(written);
    if (reference.isIndex) {
        fill(Index, "");
        return;
    }
    fill(kind, reference.name);
    m_firstIndex = reference.range.start;
    if (reference.name.empty())
        return;
    DataField* found = findFrom(context, reference.name);
    if (found && !watch.ended())
        hold(found);
}

const char* DataExpSegment::evaluate(int index, const FieldRef& context, ExpressionWatch& watch) {
    switch (m_kind) {
    case FieldReference:
        return fieldValue(index, context, watch);
    case Literal:
        return m_text.c_str();
    case Index:
        std::snprintf(expressionState.indexText, sizeof expressionState.indexText, "%d", index);
        return expressionState.indexText;
    case Refresh:
        refresh(context, watch);
        return nullptr;
    case ParentPath:
        break;
    }
    return context.get() ? context.get()->getFullPath() : nullptr;
}

const char* DataExpSegment::fieldValue(int index, const FieldRef& context, const ExpressionWatch& watch) {
    if (!m_field.get()) {
        const text::LentText name(expressionState.texts, m_text);
        DataField* found = findFrom(context, name.view());
        if (!found || watch.ended())
            return nullptr;
        hold(found);
    }
    DataField* field = m_field.get();
    char* value = nullptr;
    // Contract: a single value is read whatever index is asked for, and whatever the field answers.
    if (field->getSize() == 1) {
        field->getData(&value, 0);
        return value;
    }
    return field->getData(&value, m_firstIndex == -1 ? index : m_firstIndex) ? value : nullptr;
}

void DataExpSegment::refresh(const FieldRef& context, ExpressionWatch& watch) {
    watch.callBack(ExpressionWatch::Callback::Handlers, [&] {
        const text::LentText name(expressionState.texts, m_text);
        DataField* field = findFrom(context, name.view());
        if (!field || watch.ended())
            return;
        const int size = field->getSize();
        if (size >= 2)
            field->fireHandlers(true, 0, size - 1);
        else
            field->fireHandlers(true);
    });
}
