#include <kor/Structure.h>

namespace {

/// Stands for an array of the tree: the plug-ins on its containers take one element each. A "TypeStr" such as "Day[7]"
/// makes seven elements.
class ArrayPlugIn : public KorStructure {
public:
    explicit ArrayPlugIn(const KorSettings& settings) : KorStructure("DataArray", settings) {
        makeNode(setting("TypeStr") + ":", "");
    }

    DataType* getFieldType() override { return DataArray::getClassType(); }
};

} // namespace

korDataHandler* korCreatePlugin(const KorSettings& settings) {
    return new ArrayPlugIn(settings);
}
