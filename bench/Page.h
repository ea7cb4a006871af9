#ifndef BENCH_PAGE_H
#define BENCH_PAGE_H

#include "Goals.h"
#include "Results.h"

#include <filesystem>
#include <string>

/// Writes the goals, and the times of operations by path by leaves, as Markdown to performance.md in a folder, and the
/// curves for the chart to performance.dat. In a page that exists, only what is between its two marker lines is
/// replaced. Nothing is written when nothing of it was measured.
void writePage(const std::filesystem::path& folder, const Results& results, const Goals& goals,
               const std::string& machine);

#endif
