#ifndef BENCH_DETAIL_H
#define BENCH_DETAIL_H

#include "Results.h"
#include "Table.h"

#include <ostream>
#include <string>

/// The tables of what was measured; each prints nothing when nothing of it was.

/// Operations that the library and the floors have alike.
void printComparison(const Results& results, std::ostream& out);
/// The same with the other systems, where they were measured.
void printPeers(const Results& results, std::ostream& out);
/// Operations with subjects of their own.
void printOthers(const Results& results, std::ostream& out);
/// Operations that the library alone has: how the cost of one item grows with the number of items.
void printGrowth(const Results& results, std::ostream& out);

/// Nanoseconds of one operation on every subject, by leaves; "-" where it was not measured.
Table bySubject(const Results& results, const std::string& operation);

#endif
