#include "Detail.h"

namespace {

std::string cell(std::optional<double> figure, int digits) {
    return figure ? fixed(*figure, digits) : "-";
}

std::string allocationsOf(const Samples* samples) {
    return samples ? fixed(samples->allocations, 2) : "-";
}

std::string bytesOf(const Samples* samples) {
    return samples && samples->bytes > 0 ? fixed(samples->bytes, 0) : "-";
}

bool isCompared(const Results& results, const std::string& operation) {
    return results.has(operation, floorMap) || results.has(operation, floorHash);
}

bool isAlone(const Results& results, const std::string& operation) {
    return results.subjects(operation) == std::vector<std::string>{library};
}

void print(const char* title, const Table& table, std::ostream& out) {
    if (table.empty())
        return;
    out << '\n' << title << "\n\n";
    table.print(out);
}

} // namespace

void printComparison(const Results& results, std::ostream& out) {
    Table table({"operation", "leaves", "library ns", "map ns", "hash ns", "bare ns", "lib/map", "lib/hash", "allocs",
                 "library B", "map B", "hash B", "bare B"},
                1);
    for (const std::string& operation : results.operations()) {
        if (!isCompared(results, operation))
            continue;
        for (const std::size_t leaves : results.sizes(operation)) {
            std::vector<std::string> row{operation, std::to_string(leaves)};
            for (const char* subject : {library, floorMap, floorHash, floorBare})
                row.push_back(cell(results.nanoseconds(operation, subject, leaves), 1));
            for (const char* floor : {floorMap, floorHash})
                row.push_back(cell(results.ratio(operation, library, floor, leaves), 2));
            row.push_back(allocationsOf(results.find(operation, library, leaves)));
            for (const char* subject : {library, floorMap, floorHash, floorBare})
                row.push_back(bytesOf(results.find(operation, subject, leaves)));
            table.add(row);
        }
    }
    print("Medians of CPU time per operation on one leaf. Allocations are calls of operator new per operation of the\n"
          "library. Bytes per leaf (B) are usable sizes of live blocks from operator new: after \"set\" with one\n"
          "registration per leaf, after \"build\" without; observer objects are not counted.",
          table, out);
}

void printPeers(const Results& results, std::ostream& out) {
    for (const char* operation : {"set", "get", "build", "delete"})
        if (results.has(operation, boostTree))
            print((std::string("Nanoseconds per ") + operation + ". " + silentSets).c_str(),
                  bySubject(results, operation), out);
}

void printOthers(const Results& results, std::ostream& out) {
    Table table({"operation", "subject", "items", "ns", "allocs"}, 2);
    for (const std::string& operation : results.operations()) {
        if (isCompared(results, operation) || isAlone(results, operation))
            continue;
        for (const std::size_t items : results.sizes(operation))
            for (const std::string& subject : results.subjects(operation))
                table.add({operation, subject, std::to_string(items),
                           cell(results.nanoseconds(operation, subject, items), 1),
                           allocationsOf(results.find(operation, subject, items))});
    }
    print("Medians of CPU time per operation. Items are fields in hand, observers, links, or leaves of the tree.",
          table, out);
}

void printGrowth(const Results& results, std::ostream& out) {
    Table table({"operation", "items", "ns", "growth", "allocs"}, 1);
    for (const std::string& operation : results.operations()) {
        if (!isAlone(results, operation))
            continue;
        const std::vector<std::size_t> sizes = results.sizes(operation);
        for (const std::size_t items : sizes) {
            const std::optional<double> nanoseconds = results.nanoseconds(operation, library, items);
            const std::optional<double> fewest = results.nanoseconds(operation, library, sizes.front());
            table.add({operation, std::to_string(items), cell(nanoseconds, 1), cell(quotient(nanoseconds, fewest), 2),
                       allocationsOf(results.find(operation, library, items))});
        }
    }
    print("Medians of CPU time per item, the library alone. Growth is the cost of an item among so many to that among\n"
          "the fewest.",
          table, out);
}

Table bySubject(const Results& results, const std::string& operation) {
    const std::vector<std::string> subjects = results.subjects(operation);
    std::vector<std::string> header{"leaves"};
    header.insert(header.end(), subjects.begin(), subjects.end());
    Table table(header, 0);
    for (const std::size_t leaves : results.sizes(operation)) {
        std::vector<std::string> row{std::to_string(leaves)};
        for (const std::string& subject : subjects)
            row.push_back(cell(results.nanoseconds(operation, subject, leaves), 1));
        table.add(row);
    }
    return table;
}
