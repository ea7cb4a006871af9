#ifndef ORBEL_HANDLERS_BRIDGEWATCH_H
#define ORBEL_HANDLERS_BRIDGEWATCH_H

class IDataHandlerImpl;

/// Tells an operation whether the plug-in destroyed its handler, and so the bridge, in a callback meanwhile. Lives on
/// the stack; the watches of all operations under way form one chain, which the destructor of a bridge walks.
class BridgeWatch {
public:
    explicit BridgeWatch(IDataHandlerImpl& bridge);
    BridgeWatch(const BridgeWatch&) = delete;
    BridgeWatch& operator=(const BridgeWatch&) = delete;
    ~BridgeWatch();

    bool ended() const { return !m_bridge; }

    static void bridgeEnds(IDataHandlerImpl& bridge);

private:
    IDataHandlerImpl* m_bridge;
    BridgeWatch* m_outer;
};

#endif
