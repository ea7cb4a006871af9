#ifndef ORBEL_TYPES_PRINTINGLISTENER_H
#define ORBEL_TYPES_PRINTINGLISTENER_H

#include "TypeParseListener.h"

/// Prints the messages that users of type files know.
class PrintingListener : public TypeParseListener {
public:
    void onTypeCreated(std::string_view name) override;
    void onTypeExtended(std::string_view name) override;
    void onFieldIgnored(std::string_view statement) override;
};

#endif
