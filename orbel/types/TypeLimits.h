#ifndef ORBEL_TYPES_TYPELIMITS_H
#define ORBEL_TYPES_TYPELIMITS_H

namespace limits {

/// How deep types are expanded inside each other, in renderings as in objects: types may contain each other in a
/// circle or in a chain of any length, and neither may use up the stack.
constexpr int maxTypeNesting = 100;

/// How many types the rendering of one type expands: types that contain others twice multiply from level to level.
constexpr int maxTypeExpansions = 65'536;

} // namespace limits

#endif
