#ifndef ORBEL_TESTS_KOR_MODULES_TRIALPLUGIN_H
#define ORBEL_TESTS_KOR_MODULES_TRIALPLUGIN_H

#include <orbel/orbel.h>

#include <kor/PlugIn.h>

#include <iostream>
#include <stdexcept>
#include <string>

/// Writes a line for each call, and then does what the setting of that name says: "throw", "throw REASON", "initOrbel",
/// or a command for the host.
class TrialPlugIn : public KorPlugIn<korDataHandler> {
public:
    using korDataHandler::onDataChange;

    TrialPlugIn(const std::string& kind, const KorSettings& settings) : KorPlugIn(kind, settings), m_name(kind) {
        act("made");
    }
    ~TrialPlugIn() override { std::cout << m_name << " destroyed" << '\n'; }

    void onLoad() override { act("onLoad"); }
    void onFunctionInit() override { act("onFunctionInit"); }
    void onInit() override { act("onInit"); }
    void perFrame() override { act("perFrame"); }
    void onCleanup() override { act("onCleanup"); }
    void onDataChange(char* fieldName, char* value) override {
        act("onDataChange", std::string(" ") + fieldName + '=' + value);
    }

private:
    void act(const std::string& call, const std::string& details = "") {
        std::cout << m_name << ' ' << call << details << " in " << getContainerName() << '\n';
        const std::string action = setting(call);
        if (action == "throw")
            throw 1;
        if (action.compare(0, 6, "throw ") == 0)
            throw std::runtime_error(action.substr(6));
        if (action == "initOrbel")
            initOrbel();
        else if (!action.empty())
            sendCommand(action);
    }

    std::string m_name;
};

#endif
