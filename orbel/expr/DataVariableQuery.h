#ifndef ORBEL_EXPR_DATAVARIABLEQUERY_H
#define ORBEL_EXPR_DATAVARIABLEQUERY_H

/// Supplies the texts of names that the tree does not hold, see DataExpression::registerVariableQuery.
class DataVariableQuery {
public:
    /// The text for a name, null when there is none. `name` is valid during the call and until the answer has been
    /// taken over, so it may be the answer. The answer stays the query's and is copied at once.
    virtual const char* queryVariable(const char* name) = 0;

protected:
    ~DataVariableQuery() = default;
};

#endif
