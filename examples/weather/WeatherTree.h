#ifndef WEATHER_WEATHERTREE_H
#define WEATHER_WEATHERTREE_H

#include <orbel/orbel.h>

#include <stdexcept>
#include <string>
#include <vector>

/// What is wrong with the types, in one line that names the folder.
class TypesError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The live data, as the type file declares it:
///
///     cities[Seattle]    a City in a hash table, one for each name
///     headline           a Headline
///
/// Must outlive whatever holds fields of it, and frees them all.
class WeatherTree {
public:
    /// Loads the types from the "*.qx" files of the folder.
    WeatherTree(const std::string& typesFolder, const std::vector<std::string>& cities);
    ~WeatherTree();

    WeatherTree(const WeatherTree&) = delete;
    WeatherTree& operator=(const WeatherTree&) = delete;

    Orbel& root() { return m_root; }
    /// Throws TypesError when the types declare no field at this path.
    DataField& field(const std::string& path);

private:
    void loadTypes();

    std::string m_typesFolder;
    Orbel m_root;
};

/// "cities[Seattle]", which every path of a city begins with.
std::string pathOf(const std::string& city);

#endif
