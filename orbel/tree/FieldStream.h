#ifndef ORBEL_TREE_FIELDSTREAM_H
#define ORBEL_TREE_FIELDSTREAM_H

#include <orbel/tree/DataArray.h>
#include <orbel/tree/DataHashTable.h>
#include <orbel/tree/DataValue.h>
#include <orbel/tree/Orbel.h>

/// Write the item as its dump with the name and all values does; return the stream.
ORBEL_API std::ostream& operator<<(std::ostream& os, DataField& field);

#endif
