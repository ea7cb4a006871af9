#ifndef ORBEL_TESTS_SUPPORT_RECORDINGPLUGIN_H
#define ORBEL_TESTS_SUPPORT_RECORDINGPLUGIN_H

#include <orbel/handlers/IDataHandler.h>
#include <support/RecordingHandler.h>

#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <vector>

/// A plug-in that notes each call in a diary under its own name ("A title=news", "A list=1|2 0-1"), then does once
/// what it was told to do.
template <class Base>
class RecordingPluginOf : public Base {
public:
    RecordingPluginOf(Diary& diary, std::string name) : m_diary(&diary), m_name(std::move(name)) {}

    /// For the next call only. The reaction may destroy the plug-in.
    void onceThen(std::function<void()> reaction) { m_reaction = std::move(reaction); }

    /// The list of the last call; may be dead by now.
    const void* lastList() const { return m_lastList; }

    /// The text of the last call; may be dead by now.
    const char* lastValue() const { return m_lastValue; }

    char* getPluginName() override { return m_name.data(); }
    int getPluginType() override { return 1; }
    char* getPluginFolder() override { return m_name.data(); }

    void onInit() override { hear("init"); }
    void onFunctionInit() override { hear("function init"); }

    void onDataChange(char* fieldName, std::vector<std::string>& values, int from, int to) override {
        m_lastList = &values;
        std::string all = fieldName + std::string("=");
        for (std::size_t index = 0; index < values.size(); ++index)
            all += (index == 0 ? "" : "|") + values[index];
        hear(all + ' ' + std::to_string(from) + '-' + std::to_string(to));
    }

    void onDataChange(char* fieldName, char* value) override {
        m_lastValue = value;
        hear(fieldName + std::string("=") + value);
    }

    void onTypeChange(char* fieldName, char* typeName) override { hear(fieldName + std::string(":") + typeName); }

    void dump() override { hear("dump"); }

private:
    void hear(const std::string& what) {
        m_diary->note(m_name, what);
        if (const auto reaction = std::exchange(m_reaction, nullptr))
            reaction();
    }

    Diary* m_diary;
    std::string m_name;
    std::function<void()> m_reaction;
    const void* m_lastList = nullptr;
    const char* m_lastValue = nullptr;
};

using RecordingPlugin = RecordingPluginOf<IDataHandler>;

#endif
