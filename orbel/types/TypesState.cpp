#include "TypesState.h"

#include <orbel/foundation/DataPrintf.h>
#include <orbel/types/DataObjectTypesTable.h>

TypesState typesState;

/// Never freed: the chain hangs on a plain pointer, so that it is still reachable when the process ends.
struct RetiredTable {
    DataObjectTypesTable* table;
    RetiredTable* before;
};

void printTableEnd(int numTypes) {
    // Contract: hosts look for this line as it is, with its second capital "Y".
    DataPrintf("DataObjectTYpesTable::~DataObjectTypesTable(): deleting %d types.\n", numTypes);
}

void retireTypesTable(DataObjectTypesTable* table) {
    if (!table)
        return;
    typesState.retired = new RetiredTable{table, typesState.retired};
    printTableEnd(table->getNumTypes());
}
