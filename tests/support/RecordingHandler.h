#ifndef ORBEL_TESTS_SUPPORT_RECORDINGHANDLER_H
#define ORBEL_TESTS_SUPPORT_RECORDINGHANDLER_H

#include <orbel/tree/DataField.h>
#include <orbel/tree/DataHandler.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

/// What handlers have heard, in order.
class Diary {
public:
    void note(const std::string& who, const std::string& what) { m_entries.emplace_back(who, what); }

    /// All entries since the last call: "A changed, B same 3-3, A type City". Empty when nobody heard anything.
    std::string take() {
        std::string all;
        for (const auto& [who, what] : m_entries)
            all += (all.empty() ? "" : ", ") + who + ' ' + what;
        m_entries.clear();
        return all;
    }

    /// The names alone: "ABA".
    std::string takeNames() {
        std::string names;
        for (const auto& [who, what] : m_entries)
            names += who;
        m_entries.clear();
        return names;
    }

private:
    std::vector<std::pair<std::string, std::string>> m_entries;
};

/// Notes each call in a diary under its own name, then does once what it was told to do.
class RecordingHandler : public DataHandler {
public:
    RecordingHandler(Diary& diary, std::string name) : DataHandler(name.data()), m_diary(&diary) {}

    /// For the next call only. The reaction may destroy the handler.
    void onceThen(std::function<void()> reaction) { m_reaction = std::move(reaction); }

    /// The field of the last call.
    DataField* lastField() const { return m_lastField; }

    void onChange(DataField& field, bool changed) override { hear(field, changed ? "changed" : "same"); }

    void onChange(DataField& field, bool changed, int from, int to) override {
        hear(field, (changed ? "changed " : "same ") + std::to_string(from) + '-' + std::to_string(to));
    }

    void onTypeChange(DataField& field, char* typeName) override { hear(field, std::string("type ") + typeName); }

private:
    void hear(DataField& field, const std::string& what) {
        m_lastField = &field;
        m_diary->note(getName(), what);
        if (const auto reaction = std::exchange(m_reaction, nullptr))
            reaction();
    }

    Diary* m_diary;
    std::function<void()> m_reaction;
    DataField* m_lastField = nullptr;
};

#endif
