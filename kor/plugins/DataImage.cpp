#include <kor/Leaf.h>

namespace {

/// Shows the picture whose name the value is, usually by a conversion table.
class ImagePlugIn : public KorLeaf {
public:
    explicit ImagePlugIn(const KorSettings& settings) : KorLeaf("DataImage", settings) {}

private:
    void show(const std::string& value) override { setProperty("GEOM*IMAGE", value); }
};

} // namespace

korDataHandler* korCreatePlugin(const KorSettings& settings) {
    return new ImagePlugIn(settings);
}
