#include "Input.h"
#include "Show.h"
#include "Target.h"

#include <algorithm>
#include <string>

namespace {

class Query : public DataVariableQuery {
public:
    const char* queryVariable(const char* name) override {
        m_answer = std::string("<") + name + '>';
        return m_answer.c_str();
    }

private:
    std::string m_answer;
};

int answer(const char* request, const char** out) {
    static std::string text;
    text = std::string(request).substr(0, 3);
    *out = text.c_str();
    return 1;
}

/// What the expression says at a few indices.
std::string evaluated(DataExpression& expression) {
    std::string all;
    for (const int index : {0, 1, 2, -1, 1'000})
        all.append(expression.evaluate(index)).append("\n");
    return all;
}

void runAsCommands(Show& show, DataExpression& expression) {
    // Values may have made a text of digits and stars that the input did not have.
    if (asksForMuch(expression.evaluate(1)))
        return;
    expression.execute(1);
    show.checkSound();
    if (asksForMuch(expression.evaluate(1)))
        return;
    expression.executeExtended(&show.root(), answer, 1);
    show.checkSound();
}

void checkEvaluation(DataExpression& expression, Show& show, std::string_view text) {
    expression.setHostField(&show.root(), show.at("scene/text/size"));
    Lent lent(text);
    expression.parse(lent);
    check(lent.isStill(text), "an expression's text is not changed");
    const std::string first = evaluated(expression);
    check(evaluated(expression) == first, "an expression says the same again");
    expression.parse(lent);
    check(evaluated(expression) == first, "and when it is parsed again");
    if (text.find("$(") == std::string_view::npos)
        check(expression.evaluate(0) == text.substr(std::min(text.find_first_not_of(" \t\r\n"), text.size())),
              "a text without macros is itself");
}

const Target target("expressions", [](std::string_view input) {
    const std::string_view text = upToNul(input);
    Show show;
    DataExpression alone;
    checkEvaluation(alone, show, text);
    Query query;
    DataExpression expression;
    expression.registerVariableQuery(&query);
    checkEvaluation(expression, show, text);
    expression.evaluate_Kor_Cmds(Lent(text), answer);
    runAsCommands(show, expression);
    check(evaluated(alone) == evaluated(alone), "an expression says the same again when the tree has changed");
    check(!show.dumped().empty(), "a tree can be printed");
    expression.parse(Text(""));
    check(evaluated(expression) == "\n\n\n\n\n", "an empty expression says nothing");
});

} // namespace
