#ifndef ORBEL_EXPR_EXPRESSIONSTATE_H
#define ORBEL_EXPR_EXPRESSIONSTATE_H

#include "../foundation/text/LentText.h"

#include <string>

class ExpressionWatch;

/// All state of the expressions that is kept per process.
struct ExpressionState {
    /// The result of DataExpression::evaluate.
    std::string evaluateResult;
    /// The result of DataExpression::evaluate_Kor_Cmds.
    std::string hostCommandResult;
    /// What operations under way gather their texts in.
    text::TextShelf texts;
    /// $(INDEX), with room for every int.
    char indexText[12] = {};
    /// The operations under way, innermost first.
    ExpressionWatch* watches = nullptr;
};

extern ExpressionState expressionState;

#endif
