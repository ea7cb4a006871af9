#include <orbel/tree/FieldStream.h>

std::ostream& operator<<(std::ostream& os, DataField& field) {
    field.dump(os, -1, -1, 1);
    return os;
}
