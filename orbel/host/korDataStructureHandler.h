#ifndef ORBEL_HOST_KORDATASTRUCTUREHANDLER_H
#define ORBEL_HOST_KORDATASTRUCTUREHANDLER_H

#include <orbel/host/korDataHandler.h>

#include <vector>

/// What plug-ins derive from that stand for a structure, an array or an object of the tree: the plug-ins on the
/// containers below theirs register relative to their field.
class ORBEL_API korDataStructureHandler : public korDataHandler {
public:
    korDataStructureHandler();
    ~korDataStructureHandler() override;

    using korDataHandler::Register;
    /// Attaches to a field, and then all handlers on the containers below. Contract: always refreshes.
    virtual void Register(char* fieldName, int refresh);
    /// Registers a child relative to this handler's field; nothing when that is no node.
    virtual void RegisterChild(korDataHandler* child, const char* fieldName, int index);
    /// Unregisters the handlers on the local container and on all below it.
    virtual void UnregisterAllChildren();
    /// Does nothing.
    virtual void syncChildren(korDataHandler* source, std::vector<int>& indices);

    /// Contract: the handlers below are unregistered too, and stay so until they register again.
    void Unregister() override;

    /// Registers the handlers on the containers below again, each under its field name.
    void registerChildrenHandlers();
};

#endif
