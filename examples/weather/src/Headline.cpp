#include "Headline.h"

Headline::Headline(WeatherTree& tree) : m_tree(tree) {
    char text[] = "$(caption): $(words), high $(high)";
    // Of a field with several values, an evaluation takes the one at its index.
    char dayOfWeek[] = "$(highs)";
    for (DataExpression* label : {&m_text, &m_dayOfWeek})
        label->setHostField(&tree.root(), &tree.field("headline/city"));
    m_text.parse(text);
    m_dayOfWeek.parse(dayOfWeek);
}

void Headline::follow(const std::string& city) {
    const std::string path = pathOf(city);
    std::string links = "headline/city = " + path + "/name; headline/weather = " + path +
                        "/today/weather; headline/high = " + path + "/today/temp_max; headline/highs = " + path +
                        "/highs";
    // Replaces all links of the tree, and copies what the city holds now.
    m_tree.root().parseLinkCommand(links.data());
}

std::string Headline::text() {
    return m_text.evaluate(0);
}

std::array<std::string, daysInWeek> Headline::week() {
    std::array<std::string, daysInWeek> highs;
    for (std::size_t day = 0; day < daysInWeek; ++day)
        highs[day] = m_dayOfWeek.evaluate(static_cast<int>(day));
    return highs;
}
