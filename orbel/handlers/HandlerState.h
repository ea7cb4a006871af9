#ifndef ORBEL_HANDLERS_HANDLERSTATE_H
#define ORBEL_HANDLERS_HANDLERSTATE_H

#include "../foundation/text/LentText.h"
#include "../tables/AllPluginPreSets.h"
#include "../tables/CaseTable.h"
#include "../tables/ConversionTables.h"
#include "SceneRegistry.h"
#include "Settings.h"

#include <memory>

class BridgeWatch;

/// All state of the handler framework that is kept per process.
struct HandlerState {
    Settings settings;
    std::unique_ptr<ConversionTables> conversions;
    std::unique_ptr<CaseTable> cases;
    std::shared_ptr<AllPluginPreSets> presets;
    SceneRegistry scenes;
    /// What converted values are delivered in.
    text::TextShelf texts;
    /// The operations under way, innermost first.
    BridgeWatch* watches = nullptr;
};

/// Made on first use: plug-ins may ask for a tree while they are being loaded.
HandlerState& handlerState();

#endif
