#ifndef WEATHER_PICTURES_H
#define WEATHER_PICTURES_H

#include <map>
#include <set>
#include <string>

/// A drawing that another one can hold.
struct Picture {
    std::string viewBox;
    /// What stands between the svg tags.
    std::string content;
};

/// The operator's pictures by file name, for all that the tables make of the weather that was observed.
class Pictures {
public:
    /// Throws InputError when a picture cannot be used; one that is missing is left out if the settings allow that.
    explicit Pictures(const std::set<std::string>& skies);

    const std::map<std::string, Picture>& all() const { return m_pictures; }

private:
    void load(const std::string& name);

    std::map<std::string, Picture> m_pictures;
};

#endif
