#include "ExpressionState.h"

ExpressionState expressionState;
