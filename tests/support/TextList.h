#ifndef ORBEL_TESTS_SUPPORT_TEXTLIST_H
#define ORBEL_TESTS_SUPPORT_TEXTLIST_H

#include <orbel/tree/DataField.h>

#include <string>
#include <utility>
#include <vector>

/// Lends texts to parameters of the type std::vector<char*>*: value.setData(TextList({"a", "b"}), 0, -1).
class TextList {
public:
    explicit TextList(std::vector<std::string> texts) : m_texts(std::move(texts)) {
        for (std::string& text : m_texts)
            m_pointers.push_back(text.data());
    }
    TextList(const TextList&) = delete;
    TextList& operator=(const TextList&) = delete;

    operator std::vector<char*>*() { return &m_pointers; }

private:
    std::vector<std::string> m_texts;
    std::vector<char*> m_pointers;
};

/// All texts of a field: "a|b|c".
inline std::string allTexts(DataField& field) {
    std::string all;
    for (int index = 0; index < field.getSize(); ++index)
        all += (index == 0 ? "" : "|") + *field.getData(index);
    return all;
}

/// Makes a field hold exactly these texts without the help of setData; none for a field that is larger.
inline void fill(DataField& field, const std::vector<std::string>& texts) {
    field.setSize(static_cast<int>(texts.size()));
    *field.getDataVector() = texts;
    field.setDataInitialized(1);
}

#endif
