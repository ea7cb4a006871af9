#ifndef ORBEL_TESTS_SUPPORT_EXPRESSIONS_H
#define ORBEL_TESTS_SUPPORT_EXPRESSIONS_H

#include <orbel/orbel.h>
#include <support/Text.h>
#include <support/TreeCleanup.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

/// A show with the values a, far/b, near/v (three values) and near/host, the host field of `expression`.
class ExpressionStage {
public:
    ExpressionStage() {
        root.addField(near, 0);
        root.addField(far, 0);
        add(root, "a", "outer");
        add(*far, "b", "beyond");
        near->addField(host, 0);
        host->setData("hosted");
        add(*near, "v", "zero")->setSize(3);
        v()->setData("one", 1);
        v()->setData("two", 2);
        expression.setHostField(&root, host);
    }

    static DataValue* add(DataNode& parent, const char* name, const char* value) {
        auto* field = new DataValue(Text(name));
        parent.addField(field, 0);
        field->setData(value);
        return field;
    }

    DataField* v() { return root.getField(Text("near/v"), 0, 0); }
    DataField* a() { return root.getField(Text("a"), 0, 0); }

    void parse(const std::string& text) { expression.parse(Text(text)); }
    std::string evaluate(int index = 0) { return expression.evaluate(index); }
    /// Parses and evaluates.
    std::string textOf(const std::string& text, int index = 0) {
        parse(text);
        return evaluate(index);
    }

    Orbel root{Text("show")};
    const SubtreeCleanup belowRoot{root};
    DataStructure* near = new DataStructure(Text("near"));
    DataStructure* far = new DataStructure(Text("far"));
    DataValue* host = new DataValue(Text("host"));
    DataExpression expression;
};

/// Answers with a text, or what a function says, and keeps the names it was asked for.
class RecordingQuery : public DataVariableQuery {
public:
    const char* queryVariable(const char* name) override {
        asked.emplace_back(name);
        if (react)
            react();
        return answer;
    }

    std::vector<std::string> asked;
    std::function<void()> react;
    const char* answer = nullptr;
};

/// A host: its commands are plain functions, so what it hears is kept per process.
class Host {
public:
    Host() { current = this; }
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;
    ~Host() { current = nullptr; }

    static int command(const char* request, const char** answer) {
        // A copy, then the reaction, then the text again: the request must have stayed as it was.
        const std::string before = request;
        if (current->react)
            current->react();
        current->requests.emplace_back(request);
        current->requestsStay = current->requestsStay && before == request;
        if (!current->silent)
            *answer = current->answer;
        return 1;
    }

    std::vector<std::string> requests;
    std::function<void()> react;
    const char* answer = "5";
    bool silent = false;
    bool requestsStay = true;

private:
    static inline Host* current = nullptr;
};

#endif
