#ifndef ORBEL_TESTS_SUPPORT_TEXT_H
#define ORBEL_TESTS_SUPPORT_TEXT_H

#include <string>
#include <utility>

/// Lends a text to the char* parameters of the library: root.getField(Text("scene/title"), 0, 0).
class Text {
public:
    explicit Text(std::string text) : m_text(std::move(text)) {}

    operator char*() { return m_text.data(); }

private:
    std::string m_text;
};

#endif
