#ifndef ORBEL_EXPR_EXPRESSIONSTATE_H
#define ORBEL_EXPR_EXPRESSIONSTATE_H

#include <string>
#include <utility>

class ExpressionWatch;

/// All state of the expressions that is kept per process.
struct ExpressionState {
    /// The result of DataExpression::evaluate, and what an evaluation under way gathers its text in.
    std::string evaluateResult;
    std::string gathering;
    /// The result of DataExpression::evaluate_Kor_Cmds.
    std::string hostCommandResult;
    /// The "-1" request that executeExtended sends.
    std::string hostRequest;
    /// $(INDEX), with room for every int.
    char indexText[12] = {};
    /// The operations under way, innermost first.
    ExpressionWatch* watches = nullptr;
};

extern ExpressionState expressionState;

/// Takes a process-wide buffer for one operation and gives it back with the room it has gained. An operation inside
/// that one finds an empty buffer, so neither writes into the other's text.
class LentText {
public:
    explicit LentText(std::string& shelf) : m_shelf(shelf), m_text(std::exchange(shelf, {})) { m_text.clear(); }
    LentText(const LentText&) = delete;
    LentText& operator=(const LentText&) = delete;
    ~LentText() { m_shelf = std::move(m_text); }

    std::string& get() { return m_text; }

private:
    std::string& m_shelf;
    std::string m_text;
};

#endif
