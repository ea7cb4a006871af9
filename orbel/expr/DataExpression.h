#ifndef ORBEL_EXPR_DATAEXPRESSION_H
#define ORBEL_EXPR_DATAEXPRESSION_H

#include <orbel/expr/DataExpSegment.h>
#include <orbel/foundation/Export.h>
#include <orbel/tree/FieldRef.h>

#include <string>
#include <string_view>

class DataField;
class DataVariableQuery;
class ExpressionWatch;
class Orbel;
struct ExpressionPiece;

/// A text template that is parsed once and evaluated against a live tree many times. Up to 100 segments; the rest of
/// a longer text is dropped.
///
///     $(title)                 the value of the nearest enclosing field at this path, found once and then kept
///     $(list[2])               value 2 of it; without a number the value at the evaluation's index. A single value is
///                              given whatever the index. Brackets end the path: what follows them is ignored
///     $(INDEX)                 the evaluation's index
///     $(REFRESH) $(title)      fires the handlers of title, then gives its value
///     $(FIELD_DATA)            the value of the host field
///     $(PARENT)                the full path of the host field's parent
///     $(PARENT_NAME) $(PARENT_FULL_NAME) $(FIELD_NAME) $(FIELD_FULL_NAME)
///                              names and full paths as they were when the text was parsed
///
/// Whatever cannot be found gives no text. The owner keeps the query alive; the tree, the host field and every field
/// an expression has found may be destroyed at any time and then count as missing.
///
/// What may happen inside a callback (handlers fired by $(REFRESH) or by commands, queries, host commands): anything,
/// also with the same expression. When it is parsed anew or destroyed while it is evaluated, the evaluation ends with
/// the text gathered so far, and execute and executeExtended then run nothing. While handlers run for a $(REFRESH) of
/// an expression, evaluating it again refreshes nothing; while its query is asked, evaluating it again does not ask.
class ORBEL_API DataExpression {
public:
    DataExpression();
    DataExpression(const DataExpression&) = delete;
    DataExpression& operator=(const DataExpression&) = delete;
    ~DataExpression();

    /// Asked, by the name without its index, for every piece that gives no text: names that the tree does not hold,
    /// values that do not exist, the field of a $(REFRESH), and $(PARENT) without a parent by an empty name. Null
    /// removes it.
    void registerVariableQuery(DataVariableQuery* query);

    /// Names are looked up from the parent of `hostField` upwards, from the root when there is none. A null host field
    /// leaves the place of the lookup as it was; segments keep the fields they have found.
    void setHostField(Orbel* root, DataField* hostField);

    /// Replaces the expression and lets go of all fields found. `text` is not changed.
    void parse(char* text);

    /// The text for this index. In one process-wide buffer that the next evaluate of any expression overwrites.
    char* evaluate(int index);

    /// Replaces each "==0 COMMAND;" of `text` by "=", the answer of `command` to the request "0 COMMAND", and ";".
    /// Ends the commands inside `text` with a null character. In one process-wide buffer that the next
    /// evaluate_Kor_Cmds or executeExtended of any expression overwrites. Without `command` the answers are empty.
    char* evaluate_Kor_Cmds(char* text, int (*command)(const char* request, const char** answer));

    /// Runs the evaluated text as commands on the root; see DataNode::parseCommand.
    void execute(int index);

    /// Runs the evaluated text on `root`, after evaluate_Kor_Cmds, command by command up to the first empty one:
    ///
    ///     0 COMMAND            sends `command` "-1 COMMAND", valid during the call; the answer is ignored
    ///     C target = source    DataNode::parseCopyCommand
    ///     L target = source    DataStructure::parseLinkCommand
    ///     path = value         DataNode::parseCommand
    void executeExtended(Orbel* root, int (*command)(const char* request, const char** answer), int index);

private:
    static constexpr int maxSegments = 100;

    void clear();
    void addPieces(std::string_view text, const ExpressionWatch& watch);
    void addPiece(const ExpressionPiece& piece, const ExpressionWatch& watch);
    void addReference(DataExpSegment::Kind kind, std::string_view written, const ExpressionWatch& watch);
    void addSegment(DataExpSegment::Kind kind, std::string_view text);

    bool gather(int index, std::string& out);
    void appendAnswer(int segment, ExpressionWatch& watch, std::string& out);

    DataExpSegment m_segments[maxSegments];
    int m_count = 0;
    DataVariableQuery* m_query = nullptr;
    FieldRef m_root;
    FieldRef m_hostField;
    FieldRef m_context;
};

#endif
