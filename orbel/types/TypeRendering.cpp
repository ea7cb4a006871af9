#include "TypeRendering.h"

#include "../foundation/text/Writer.h"
#include "TypeLimits.h"
#include "TypesState.h"

#include <algorithm>
#include <ostream>

namespace rendering {

Indentation::Indentation() {
    ++typesState.indentation;
}

Indentation::~Indentation() {
    --typesState.indentation;
}

Expansion::Expansion(const DataObjectType& type) {
    if (typesState.expanding.empty())
        typesState.expansions = 0;
    ++typesState.expansions;
    typesState.expanding.push_back(&type);
}

Expansion::~Expansion() {
    typesState.expanding.pop_back();
}

bool Expansion::isPossible(const DataObjectType& type) {
    const auto& outer = typesState.expanding;
    return outer.size() < limits::maxTypeNesting && typesState.expansions < limits::maxTypeExpansions &&
           std::find(outer.begin(), outer.end(), &type) == outer.end();
}

void writeIndentation(std::ostream& os) {
    text::writeTabs(os, typesState.indentation);
}

} // namespace rendering
