#ifndef BENCH_DRIVE_H
#define BENCH_DRIVE_H

#include <string>
#include <vector>

/// Makes a tree ready and then does one thing a number of times, nothing else, so that instructions can be counted from
/// outside: "set library 1000 50000" sets 50,000 texts in a tree of 1,000 leaves. Returns what the program returns.
int drive(const std::vector<std::string>& words);

#endif
