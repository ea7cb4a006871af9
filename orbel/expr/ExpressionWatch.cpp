#include "ExpressionWatch.h"

#include "ExpressionState.h"

ExpressionWatch::ExpressionWatch(const DataExpression& expression)
    : m_expression(&expression), m_outer(expressionState.watches) {
    expressionState.watches = this;
}

ExpressionWatch::~ExpressionWatch() {
    expressionState.watches = m_outer;
}

bool ExpressionWatch::isInside(Callback callback) const {
    for (const ExpressionWatch* watch = this; watch; watch = watch->m_outer)
        if (watch->m_expression == m_expression && watch->m_inside == callback)
            return true;
    return false;
}

void ExpressionWatch::parsedAnew(const DataExpression& expression) {
    for (ExpressionWatch* watch = expressionState.watches; watch; watch = watch->m_outer)
        if (watch->m_expression == &expression)
            watch->m_ended = true;
}

void ExpressionWatch::destroyed(const DataExpression& expression) {
    parsedAnew(expression);
    for (ExpressionWatch* watch = expressionState.watches; watch; watch = watch->m_outer)
        if (watch->m_expression == &expression)
            watch->m_expression = nullptr;
}
