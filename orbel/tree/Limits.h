#ifndef ORBEL_TREE_LIMITS_H
#define ORBEL_TREE_LIMITS_H

#include <cstddef>
#include <string_view>

namespace limits {

/// What an array or a value can hold: a mistyped index in a show must not eat the host's memory.
constexpr int maxElements = 16'777'216;

/// How many fields and elements an object gets from its type, at every depth together. Types that contain each other
/// multiply from level to level; this many take some hundred megabytes.
constexpr int maxFieldsOfObject = 262'144;

/// The longest name; what is beyond is cut.
constexpr std::size_t maxNameLength = 99;

/// The longest field path that is resolved.
constexpr std::size_t maxPathLength = 511;

/// What is kept of a name.
constexpr std::string_view cutName(std::string_view name) {
    return name.substr(0, maxNameLength);
}

/// How many indices beyond the end of an array one range text may select: each stands for an entry that is missing,
/// and a few characters can name thousands of millions.
constexpr int maxMissing = 65'536;

/// How deep commands may call commands, by braces inside braces, "*" behind "*", links from node to node, or handlers
/// that run commands: a text must not use up the stack of the host. What is deeper has no effect.
constexpr int maxCommandDepth = 64;

/// How much text the repetitions of one command, by "*" and by links from node to node, may run together, where each
/// command counts as at least `minRepeatedText` characters: so at most 1,048,576 commands. Each "../*" multiplies, and
/// a short text could keep the host busy for years. What is beyond has no effect.
constexpr long long maxRepeatedText = 1LL << 28;
constexpr long long minRepeatedText = 256;

/// How deep under the top of its tree a path creates fields: what goes over a whole tree goes down it by calls.
constexpr int maxTreeDepth = 1'000;

/// How many fields in a row a change is passed on along links, for the same reason.
constexpr int maxLinkDepth = 256;

} // namespace limits

#endif
