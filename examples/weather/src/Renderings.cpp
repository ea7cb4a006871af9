#include "Renderings.h"

void printRenderings(std::ostream& os, WeatherTree& tree, const std::vector<std::string>& cities) {
    Orbel& root = tree.root();
    os << "== Dump\n";
    root.dump(os, -1, -1, 1);
    os << "\n== XML\n";
    root.dumpXML(os);
    os << "== Children with their types\n";
    root.dumpInternal(os, -1, -1);
    os << "== Schema of the tree\n";
    Orbel::dumpSpec(os, &root);
    os << "== All types\n";
    DataObject::dumpAllTypes(os);

    std::string paths = pathOf(cities.back()) + "/week[5-6]; headline";
    os << "== " << paths << '\n';
    root.dumpData(paths.data(), 0, os);
    os << '\n';
}
