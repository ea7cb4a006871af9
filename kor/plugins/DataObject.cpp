#include <kor/Structure.h>

namespace {

/// Stands for an object of the tree.
class ObjectPlugIn : public KorStructure {
public:
    explicit ObjectPlugIn(const KorSettings& settings) : KorStructure("DataObject", settings) {
        setTypedName(setting("TypeStr") + ":", "");
    }

    DataType* getFieldType() override { return DataObject::getClassType(); }
};

} // namespace

korDataHandler* korCreatePlugin(const KorSettings& settings) {
    return new ObjectPlugIn(settings);
}
