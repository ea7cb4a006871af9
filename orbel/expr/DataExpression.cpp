#include <orbel/expr/DataExpression.h>

#include <orbel/expr/DataVariableQuery.h>
#include <orbel/tree/Orbel.h>

#include "../foundation/text/FixedText.h"
#include "../foundation/text/Scanner.h"
#include "ExpressionState.h"
#include "ExpressionText.h"
#include "ExpressionWatch.h"

namespace {

using HostCommand = int (*)(const char* request, const char** answer);

/// What an embedded host command begins with. The request itself begins at the "0".
constexpr std::string_view embedded = "==0 ";

std::string_view answerOf(HostCommand command, const char* request) {
    const char* answer = nullptr;
    if (command)
        command(request, &answer);
    return text::viewOf(answer);
}

/// Calls with each text between embedded commands and with each request, in turn; requests come without their ";".
template <class Text, class Command>
void splitEmbedded(std::string_view rest, Text onText, Command onCommand) {
    while (true) {
        const std::size_t start = rest.find(embedded);
        onText(rest.substr(0, start));
        if (start == std::string_view::npos)
            return;
        rest.remove_prefix(start + embedded.find('0'));
        const bool last = rest.find(';') == std::string_view::npos;
        onCommand(text::cutAt(rest, ';'));
        if (last)
            return;
    }
}

void sendRequest(HostCommand command, std::string_view request) {
    text::LentText text(expressionState.texts, "-1");
    text.get().append(request.substr(1));
    answerOf(command, text.get().c_str());
}

void runExtended(Orbel& root, HostCommand command, char* written) {
    while (*written == ' ')
        ++written;
    const std::string_view text = written;
    if (text.starts_with("0 "))
        sendRequest(command, text);
    else if (text.starts_with("C "))
        root.parseCopyCommand(written + 2);
    else if (text.starts_with("L "))
        root.parseLinkCommand(written + 2);
    else
        root.parseCommand(written, 0);
}

} // namespace

DataExpression::DataExpression() = default;

DataExpression::~DataExpression() {
    ExpressionWatch::destroyed(*this);
}

void DataExpression::registerVariableQuery(DataVariableQuery* query) {
    m_query = query;
}

void DataExpression::setHostField(Orbel* root, DataField* hostField) {
    FieldRef newRoot(root);
    FieldRef newHostField(hostField);
    FieldRef context(hostField ? hostField->getParent() : nullptr);
    m_root = std::move(newRoot);
    m_hostField = std::move(newHostField);
    if (hostField)
        m_context = std::move(context);
}

void DataExpression::parse(char* text) {
    const text::LentText copy(expressionState.texts, text::viewOf(text));
    ExpressionWatch::parsedAnew(*this);
    const ExpressionWatch watch(*this);
    clear();
    if (DataField* hostField = m_hostField.get())
        m_context = FieldRef(hostField->getParent());
    if (!m_context.get())
        m_context = m_root;

    try {
        addPieces(copy.view(), watch);
    } catch (...) {
        // Half of an expression could be a command that nobody has written.
        if (!watch.ended())
            clear();
        throw;
    }
}

void DataExpression::clear() {
    while (m_count > 0)
        m_segments[--m_count].release();
}

void DataExpression::addPieces(std::string_view text, const ExpressionWatch& watch) {
    ExpressionText pieces(text);
    while (!watch.ended() && m_count < maxSegments) {
        const auto piece = pieces.next();
        if (!piece)
            return;
        addPiece(*piece, watch);
    }
}

void DataExpression::addPiece(const ExpressionPiece& piece, const ExpressionWatch& watch) {
    using Kind = ExpressionPiece::Kind;
    switch (piece.kind) {
    case Kind::Literal:
        addSegment(DataExpSegment::Literal, piece.text);
        return;
    case Kind::Refresh:
        if (!piece.text.empty())
            addReference(DataExpSegment::Refresh, piece.text, watch);
        return;
    case Kind::ParentPath:
        addSegment(DataExpSegment::ParentPath, "");
        return;
    case Kind::ParentName:
        if (DataField* context = m_context.get())
            addSegment(DataExpSegment::Literal, context->getName());
        return;
    case Kind::ParentFullName:
        if (DataField* context = m_context.get())
            addSegment(DataExpSegment::Literal, context->getFullPath());
        return;
    case Kind::FieldName:
        if (DataField* hostField = m_hostField.get())
            addSegment(DataExpSegment::Literal, hostField->getName());
        return;
    case Kind::FieldFullName:
        if (DataField* hostField = m_hostField.get())
            addSegment(DataExpSegment::Literal, hostField->getFullPath());
        return;
    case Kind::FieldData:
        if (DataField* hostField = m_hostField.get()) {
            text::LentText written(expressionState.texts, "$(");
            written.get().append(hostField->getName());
            addReference(DataExpSegment::FieldReference, written.view(), watch);
        }
        return;
    case Kind::Reference:
        addReference(DataExpSegment::FieldReference, piece.text, watch);
        return;
    }
}

void DataExpression::addSegment(DataExpSegment::Kind kind, std::string_view text) {
    m_segments[m_count++].fill(kind, text);
}

void DataExpression::addReference(DataExpSegment::Kind kind, std::string_view written, const ExpressionWatch& watch) {
    m_segments[m_count++].fillReference(kind, written, m_context, watch);
}

/// False when the expression was destroyed or parsed anew meanwhile.
bool DataExpression::gather(int index, std::string& out) {
    ExpressionWatch watch(*this);
    for (int at = 0; at < m_count; ++at) {
        const char* value = m_segments[at].evaluate(index, m_context, watch);
        if (watch.ended())
            return false;
        if (value)
            out += value;
        else if (m_query)
            appendAnswer(at, watch, out);
        if (watch.ended())
            return false;
    }
    return true;
}

void DataExpression::appendAnswer(int segment, ExpressionWatch& watch, std::string& out) {
    // A copy, for the query may parse the expression anew while it reads the name, or answer with the name.
    text::LentText name(expressionState.texts, m_segments[segment].m_text);
    const char* answer = nullptr;
    watch.callBack(ExpressionWatch::Callback::Query, [&] { answer = m_query->queryVariable(name.get().c_str()); });
    if (!watch.ended())
        out += text::viewOf(answer);
}

char* DataExpression::evaluate(int index) {
    text::LentText text(expressionState.texts);
    gather(index, text.get());
    expressionState.evaluateResult.assign(text.get());
    return expressionState.evaluateResult.data();
}

char* DataExpression::evaluate_Kor_Cmds(char* text, HostCommand command) {
    // Commands may overwrite the buffer that `text` stands in, so it is cut before the first of them runs.
    text::LentText copy(expressionState.texts, text::viewOf(text));
    const auto ignore = [](std::string_view) {};
    splitEmbedded(copy.view(), ignore,
                  [&](std::string_view request) { text[request.data() + request.size() - copy.view().data()] = '\0'; });
    text::LentText lent(expressionState.texts);
    std::string& result = lent.get();
    splitEmbedded(
        copy.view(), [&](std::string_view literal) { result += literal; },
        [&](std::string_view request) {
            result += '=';
            result += answerOf(command, copy.cut(request));
            result += ';';
        });
    expressionState.hostCommandResult.assign(result);
    return expressionState.hostCommandResult.data();
}

void DataExpression::execute(int index) {
    const FieldRef root = m_root;
    text::LentText text(expressionState.texts);
    if (root.get() && gather(index, text.get()) && root.get())
        static_cast<Orbel*>(root.get())->parseCommand(text.get().data(), 0);
}

void DataExpression::executeExtended(Orbel* root, HostCommand command, int index) {
    const FieldRef tree(root);
    text::LentText text(expressionState.texts);
    if (!root || !gather(index, text.get()))
        return;
    if (text.view().find(embedded) != std::string_view::npos)
        text.get().assign(evaluate_Kor_Cmds(text.get().data(), command));
    for (std::string_view rest = text.view(); tree.get();) {
        const std::string_view written = text::cutAt(rest, ';');
        if (written.empty())
            return;
        runExtended(*static_cast<Orbel*>(tree.get()), command, text.cut(written));
    }
}
