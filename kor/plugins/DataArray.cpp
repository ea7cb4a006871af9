#include <kor/Numbers.h>
#include <kor/Structure.h>

#include <algorithm>
#include <string>

namespace {

/// Stands for an array of the tree: the plug-ins on its containers take one element each. A "TypeStr" such as "Day[7]"
/// makes seven elements.
class ArrayPlugIn : public KorStructure {
public:
    explicit ArrayPlugIn(const KorSettings& settings) : KorStructure("DataArray", settings) {}

    /// A registered name has no place for the number of elements, so the array is made beforehand.
    void onLoad() override {
        DataNode* const above = hasTypedName() ? nodeAbove() : nullptr;
        if (!above)
            return;
        const std::string type = setting("TypeStr");
        DataField* const field = above->getField((type + ':' + setting("FieldName")).data(), m_index, 1);
        // One that is already there is as long as it was.
        const auto size = numbers::read(type.substr(std::min(type.find('['), type.size() - 1) + 1));
        if (field && size && *size <= maxSize)
            field->setSize(static_cast<int>(*size));
    }

    DataType* getFieldType() override { return DataArray::getClassType(); }

private:
    static constexpr int maxSize = 16'777'216;

    /// The field of the structure that this one is below, or the tree.
    DataNode* nodeAbove() {
        korDataStructureHandler* parent = nullptr;
        getParentHandler(&parent, &m_index);
        auto* const node = parent ? dynamic_cast<DataNode*>(parent->getField()) : nullptr;
        return node ? node : static_cast<Orbel*>(getOrbel());
    }

    int m_index = 0;
};

} // namespace

korDataHandler* korCreatePlugin(const KorSettings& settings) {
    return new ArrayPlugIn(settings);
}
