#include "VerbRun.h"

#include <exception>
#include <fstream>
#include <iostream>
#include <iterator>

void runVerb(const std::string& verb, Outcome& outcome, const std::function<Outcome()>& work) {
    try {
        outcome = work();
    } catch (const std::exception& error) {
        std::cerr << "orbel " << verb << ": " << error.what() << '\n';
        outcome = Outcome::trouble;
    }
}

std::string readWhole(const std::string& path) {
    using Characters = std::istreambuf_iterator<char>;
    if (path == "-")
        return {Characters(std::cin), Characters()};
    std::ifstream file(path, std::ios::binary);
    // A folder can be opened, but not read.
    if (!file || (file.peek() == std::ifstream::traits_type::eof() && file.bad()))
        throw Trouble("cannot read " + path);
    return {Characters(file), Characters()};
}
