#ifndef ORBEL_TESTS_SUPPORT_NUMBERFORMAT_H
#define ORBEL_TESTS_SUPPORT_NUMBERFORMAT_H

#include <ios>
#include <locale>
#include <sstream>
#include <string>

/// What is written to a stream that shows 4660 as "1.2.3.4": hosts set up their streams as they like.
template <class Write>
std::string writtenWithOtherNumbers(Write write) {
    class Dots : public std::numpunct<char> {
    protected:
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\1"; }
    };
    std::ostringstream os;
    os.imbue(std::locale(std::locale::classic(), new Dots));
    os << std::hex;
    write(os);
    return os.str();
}

#endif
