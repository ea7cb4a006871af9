#ifndef WEATHER_WEATHERTREE_H
#define WEATHER_WEATHERTREE_H

#include <orbel/orbel.h>

#include <string>
#include <vector>

/// The live data in the tree of the board's scene, as the type file declares it:
///
///     cities[Seattle]    a City in a hash table, one for each name
///     headline           a Headline
///
/// The library owns the tree, which lives as long as the process.
class WeatherTree {
public:
    /// Throws InputError when the types are not as the board needs them.
    explicit WeatherTree(const std::vector<std::string>& cities);

    Orbel& root() { return m_root; }
    /// Throw InputError when the types declare no such field, or none that holds others.
    DataField& field(const std::string& path);
    DataNode& node(const std::string& path);

private:
    void addCities(const std::vector<std::string>& cities);
    void checkFields(const std::string& city);

    Orbel& m_root;
};

/// "cities[Seattle]", which every path of a city begins with.
std::string pathOf(const std::string& city);

#endif
