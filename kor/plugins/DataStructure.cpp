#include <kor/Structure.h>

namespace {

/// Stands for a structure of the tree.
class StructurePlugIn : public KorStructure {
public:
    explicit StructurePlugIn(const KorSettings& settings) : KorStructure("DataStructure", settings) {}

    DataType* getFieldType() override { return DataStructure::getClassType(); }
};

} // namespace

korDataHandler* korCreatePlugin(const KorSettings& settings) {
    return new StructurePlugIn(settings);
}
