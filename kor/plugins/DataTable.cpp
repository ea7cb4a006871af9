#include <kor/Structure.h>

namespace {

/// Stands for a hash table of the tree, "TypeStr" for the type of its entries.
class TablePlugIn : public KorStructure {
public:
    explicit TablePlugIn(const KorSettings& settings) : KorStructure("DataTable", settings) {
        setTypedName("DataHashTable:", ":" + setting("TypeStr"));
    }

    DataType* getFieldType() override { return DataHashTable::getClassType(); }
};

} // namespace

korDataHandler* korCreatePlugin(const KorSettings& settings) {
    return new TablePlugIn(settings);
}
