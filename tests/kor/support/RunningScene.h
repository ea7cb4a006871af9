#ifndef ORBEL_TESTS_KOR_SUPPORT_RUNNINGSCENE_H
#define ORBEL_TESTS_KOR_SUPPORT_RUNNINGSCENE_H

#include <orbel/orbel.h>

#include <kor/Host.h>
#include <kor/SceneFile.h>
#include <support/Console.h>
#include <support/Environment.h>
#include <support/Text.h>

#include <iostream>
#include <sstream>
#include <streambuf>
#include <string>
#include <utility>

/// Collects what is written to std::cerr while it exists.
class ErrorOutput {
public:
    ErrorOutput() : m_before(std::cerr.rdbuf(m_output.rdbuf())) {}
    ErrorOutput(const ErrorOutput&) = delete;
    ErrorOutput& operator=(const ErrorOutput&) = delete;
    ~ErrorOutput() { std::cerr.rdbuf(m_before); }

    /// All since the last call.
    std::string take() {
        std::string output = m_output.str();
        m_output.str("");
        return output;
    }

private:
    std::ostringstream m_output;
    std::streambuf* m_before;
};

/// A scene with its host. Texts have ' in the place of ".
class RunningScene {
public:
    explicit RunningScene(const std::string& containers, const std::string& modules = KOR_TEST_MODULES)
        : m_modules(modules) {
        clearTypeVariables();
        std::string text = "{\"containers\": " + containers + '}';
        for (char& c : text)
            c = c == '\'' ? '"' : c;
        readScene(text, "test", scene);
        host.attachAll();
    }

    Orbel& tree() { return *IDataHandlerImpl::getOrbel(scene.id(), false); }
    void set(const std::string& path, const std::string& value) { tree().setFieldData(Text(path), Text(value)); }
    /// The value of a field; empty when there is no such field.
    std::string value(const std::string& path) {
        std::string text;
        tree().getFieldData(Text(path), &text);
        return text;
    }
    DataField* field(const std::string& path) { return tree().getField(Text(path), 0, 0); }
    Container& container(const std::string& name) { return *scene.container(scene.find(name)); }
    Geometry& geometry(const std::string& name) { return *container(name).geometry; }
    std::string ask(const std::string& command) { return host.answer(command); }

    Console console;
    ErrorOutput errors;

private:
    Modules m_modules;

public:
    Scene scene;
    Host host{scene, m_modules};
};

#endif
