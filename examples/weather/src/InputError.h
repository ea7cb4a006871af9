#ifndef WEATHER_INPUTERROR_H
#define WEATHER_INPUTERROR_H

#include <stdexcept>

/// A file is missing or cannot be used: one line that names it and what is wrong.
class InputError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

#endif
