#include <orbel/expr/DataExpression.h>

#include <orbel/expr/DataVariableQuery.h>
#include <orbel/tree/Orbel.h>

#include "../foundation/text/FixedText.h"
#include "../foundation/text/Scanner.h"
#include "ExpressionState.h"
#include "ExpressionText.h"
#include "ExpressionWatch.h"

#include <algorithm>

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
    LentText text(expressionState.hostRequest);
    text.get().append("-1").append(request.substr(1));
    answerOf(command, text.get().c_str());
}

void runExtended(Orbel& root, HostCommand command, std::string_view written) {
    written.remove_prefix(std::min(written.find_first_not_of(' '), written.size()));
    if (written.starts_with("0 ")) {
        sendRequest(command, written);
        return;
    }
    if (written.starts_with("C ")) {
        root.parseCopyCommand(std::string(written.substr(2)).data());
        return;
    }
    if (written.starts_with("L ")) {
        root.parseLinkCommand(std::string(written.substr(2)).data());
        return;
    }
    root.parseCommand(std::string(written).data(), 0);
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
    m_root = FieldRef(root);
    m_hostField = FieldRef(hostField);
    if (!hostField)
        return;
    m_context = FieldRef(hostField->getParent());
    for (int at = 0; at < m_count; ++at)
        m_segments[at].m_context = m_context;
}

void DataExpression::parse(char* text) {
    const std::string copy(text::viewOf(text));
    ExpressionWatch::parsedAnew(*this);
    const ExpressionWatch watch(*this);
    for (DataExpSegment& segment : m_segments)
        segment.release();
    m_count = 0;
    if (DataField* hostField = m_hostField.get())
        m_context = FieldRef(hostField->getParent());
    if (!m_context.get())
        m_context = m_root;

    ExpressionText pieces(copy);
    while (!watch.ended() && m_count < maxSegments) {
        const auto piece = pieces.next();
        if (!piece)
            return;
        addPiece(*piece, watch);
    }
}

void DataExpression::addPiece(const ExpressionPiece& piece, const ExpressionWatch& watch) {
    using Kind = ExpressionPiece::Kind;
    DataField* context = m_context.get();
    DataField* hostField = m_hostField.get();
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
        if (context)
            addSegment(DataExpSegment::Literal, context->getName());
        return;
    case Kind::ParentFullName:
        if (context)
            addSegment(DataExpSegment::Literal, context->getFullPath());
        return;
    case Kind::FieldName:
        if (hostField)
            addSegment(DataExpSegment::Literal, hostField->getName());
        return;
    case Kind::FieldFullName:
        if (hostField)
            addSegment(DataExpSegment::Literal, hostField->getFullPath());
        return;
    case Kind::FieldData:
        if (hostField)
            addReference(DataExpSegment::FieldReference, std::string("$(") + hostField->getName(), watch);
        return;
    case Kind::Reference:
        addReference(DataExpSegment::FieldReference, piece.text, watch);
        return;
    }
}

void DataExpression::addSegment(DataExpSegment::Kind kind, std::string_view text) {
    m_segments[m_count++].fill(kind, text, m_context);
}

void DataExpression::addReference(DataExpSegment::Kind kind, std::string_view written, const ExpressionWatch& watch) {
    m_segments[m_count++].fillReference(kind, written, m_context, watch);
}

/// False when the expression was destroyed or parsed anew meanwhile.
bool DataExpression::gather(int index, std::string& out) {
    ExpressionWatch watch(*this);
    for (int at = 0; at < m_count; ++at) {
        const char* value = m_segments[at].evaluate(index, watch);
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
    const std::string name = m_segments[segment].m_text;
    const char* answer = nullptr;
    watch.callBack(ExpressionWatch::Callback::Query, [&] { answer = m_query->queryVariable(name.c_str()); });
    if (!watch.ended())
        out += text::viewOf(answer);
}

char* DataExpression::evaluate(int index) {
    LentText text(expressionState.gathering);
    gather(index, text.get());
    expressionState.evaluateResult.assign(text.get());
    return expressionState.evaluateResult.data();
}

char* DataExpression::evaluate_Kor_Cmds(char* text, HostCommand command) {
    // Commands may overwrite the buffer that `text` stands in, so it is cut before the first of them runs.
    const std::string copy(text::viewOf(text));
    const auto ignore = [](std::string_view) {};
    splitEmbedded(copy, ignore, [&](std::string_view request) {
        const std::size_t end = static_cast<std::size_t>(request.data() - copy.data()) + request.size();
        text[end] = '\0';
    });
    std::string result;
    splitEmbedded(
        copy, [&](std::string_view literal) { result += literal; },
        [&](std::string_view request) {
            result += '=';
            result += answerOf(command, std::string(request).c_str());
            result += ';';
        });
    expressionState.hostCommandResult = std::move(result);
    return expressionState.hostCommandResult.data();
}

void DataExpression::execute(int index) {
    const FieldRef root = m_root;
    std::string text;
    if (root.get() && gather(index, text) && root.get())
        static_cast<Orbel*>(root.get())->parseCommand(text.data(), 0);
}

void DataExpression::executeExtended(Orbel* root, HostCommand command, int index) {
    const FieldRef tree(root);
    std::string text;
    if (!root || !gather(index, text))
        return;
    if (text.find(embedded) != std::string::npos)
        text = evaluate_Kor_Cmds(text.data(), command);
    for (std::string_view rest = text; tree.get();) {
        const std::string_view written = text::cutAt(rest, ';');
        if (written.empty())
            return;
        runExtended(*static_cast<Orbel*>(tree.get()), command, written);
    }
}
