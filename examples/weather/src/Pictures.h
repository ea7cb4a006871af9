#ifndef WEATHER_PICTURES_H
#define WEATHER_PICTURES_H

#include <kor/Picture.h>

#include <map>
#include <set>
#include <string>

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
