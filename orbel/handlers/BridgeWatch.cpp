#include "BridgeWatch.h"

#include "HandlerState.h"

BridgeWatch::BridgeWatch(IDataHandlerImpl& bridge) : m_bridge(&bridge), m_outer(handlerState().watches) {
    handlerState().watches = this;
}

BridgeWatch::~BridgeWatch() {
    handlerState().watches = m_outer;
}

void BridgeWatch::bridgeEnds(IDataHandlerImpl& bridge) {
    for (BridgeWatch* watch = handlerState().watches; watch; watch = watch->m_outer)
        if (watch->m_bridge == &bridge)
            watch->m_bridge = nullptr;
}
