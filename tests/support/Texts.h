#ifndef ORBEL_TESTS_SUPPORT_TEXTS_H
#define ORBEL_TESTS_SUPPORT_TEXTS_H

#include <orbel/orbel.h>

#include <initializer_list>
#include <string>
#include <vector>

/// Lends a list of texts to the std::vector<char*>* parameters of the library.
class Texts {
public:
    Texts(std::initializer_list<const char*> texts) : m_texts(texts.begin(), texts.end()) {
        for (std::string& text : m_texts)
            m_pointers.push_back(text.data());
    }

    operator std::vector<char*>*() { return &m_pointers; }

private:
    std::vector<std::string> m_texts;
    std::vector<char*> m_pointers;
};

/// All values of a field, for comparison.
inline std::vector<std::string> valuesOf(DataField* field) {
    return *field->getDataVector();
}

#endif
