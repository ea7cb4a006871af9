#ifndef ORBEL_EXPR_EXPRESSIONWATCH_H
#define ORBEL_EXPR_EXPRESSIONWATCH_H

class DataExpression;

/// Tells an operation whether its expression was destroyed or parsed anew by a callback meanwhile. Lives on the
/// stack; the watches of all operations under way form one chain.
class ExpressionWatch {
public:
    enum class Callback { None, Handlers, Query };

    explicit ExpressionWatch(const DataExpression& expression);
    ExpressionWatch(const ExpressionWatch&) = delete;
    ExpressionWatch& operator=(const ExpressionWatch&) = delete;
    ~ExpressionWatch();

    bool ended() const { return m_ended; }

    /// Makes the call, unless the expression is inside a callback of this sort already: a handler that evaluates the
    /// expression it was fired by would be fired by that without end.
    template <class Call>
    void callBack(Callback callback, Call call) {
        if (isInside(callback))
            return;
        m_inside = callback;
        call();
        m_inside = Callback::None;
    }

    static void parsedAnew(const DataExpression& expression);
    static void destroyed(const DataExpression& expression);

private:
    bool isInside(Callback callback) const;

    const DataExpression* m_expression;
    bool m_ended = false;
    Callback m_inside = Callback::None;
    ExpressionWatch* m_outer;
};

#endif
