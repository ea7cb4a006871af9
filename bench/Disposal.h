#ifndef BENCH_DISPOSAL_H
#define BENCH_DISPOSAL_H

#include "Suite.h"
#include "Workload.h"

/// deleteChildren on a tree that was made with new and addField, where no kind has put a handler: the library's own way
/// to delete. The workload must live until the group has run.
void addDisposal(Suite& suite, Workload& workload);

#endif
