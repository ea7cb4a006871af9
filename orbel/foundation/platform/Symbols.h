#ifndef ORBEL_FOUNDATION_PLATFORM_SYMBOLS_H
#define ORBEL_FOUNDATION_PLATFORM_SYMBOLS_H

/// What the running executable exports.
namespace symbols {

using Function = void (*)();

/// Null when it exports no function of this name. On Windows the module `host` is asked when it is loaded, and the
/// process's main module else.
Function find(const char* host, const char* name);

} // namespace symbols

#endif
