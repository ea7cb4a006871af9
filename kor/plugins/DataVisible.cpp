#include <kor/Leaf.h>

namespace {

/// Shows its container and all below it, unless the value is blank or 0. With "Is" only for this value.
class VisiblePlugIn : public KorLeaf {
public:
    explicit VisiblePlugIn(const KorSettings& settings) : KorLeaf("DataVisible", settings) {}

private:
    void show(const std::string& value) override {
        const std::string wanted = setting("Is");
        const bool isVisible =
            wanted.empty() ? value.find_first_not_of(' ') != std::string::npos && value != "0" : value == wanted;
        setProperty("ACTIVE", isVisible ? "1" : "0");
    }
};

} // namespace

korDataHandler* korCreatePlugin(const KorSettings& settings) {
    return new VisiblePlugIn(settings);
}
