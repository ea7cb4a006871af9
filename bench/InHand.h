#ifndef BENCH_INHAND_H
#define BENCH_INHAND_H

#include "Suite.h"

#include <cstddef>

/// Sets of fields that the caller holds, so without any path. The floor is a plain string that is assigned the same
/// const char*, and a vector of observers with one virtual call each.

/// One field after the other of so many, with one observer each.
void addSetsInHand(Suite& suite, std::size_t fields);
/// One field with so many observers.
void addFanOutInHand(Suite& suite, std::size_t observers);
/// The first field of a chain of so many links; the floor is the same number of fields of the library, set one by one.
void addChain(Suite& suite, std::size_t links);

#endif
