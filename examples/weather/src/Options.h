#ifndef WEATHER_OPTIONS_H
#define WEATHER_OPTIONS_H

#include <stdexcept>
#include <string>

struct Options {
    std::string csvPath;
    std::string folder = ".";
    std::string svgPath = "weather.svg";
    std::string style = "day";
    bool plain = false;
    bool dump = false;
    bool verbose = false;
    bool help = false;
    double seconds = 14;
};

class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

Options readOptions(int argc, char** argv);

extern const char* const usageText;

#endif
