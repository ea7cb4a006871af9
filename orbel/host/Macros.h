#ifndef ORBEL_HOST_MACROS_H
#define ORBEL_HOST_MACROS_H

#include <string>
#include <string_view>

class korDataHandler;

/// Names that stand for where a plug-in is.
namespace macros {

/// The value of a macro of texts, such as "SCENE_NAME"; null for any other name. Valid until the next call
/// for the same macro.
char* valueOf(korDataHandler& handler, std::string_view name);

/// A field name; what it stands for when the whole of it is a macro such as "$(CONTNAME)".
std::string expandWhole(korDataHandler& handler, std::string_view fieldName);

/// The same, also for a name that only begins with "$(SCENE)" or "$(SCENE_ID)".
std::string expandStart(korDataHandler& handler, std::string_view fieldName);

} // namespace macros

#endif
