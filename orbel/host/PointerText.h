#ifndef ORBEL_HOST_POINTERTEXT_H
#define ORBEL_HOST_POINTERTEXT_H

#include <string>
#include <string_view>

/// Pointers as texts, in Base64 (RFC 4648, section 4).
namespace pointertext {

inline constexpr const char* alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

std::string encode(unsigned long long value);
/// Contract: bytes past the fourth fall onto the first four, and each is sign-extended; hosts rely on it.
unsigned long long decode(std::string_view text);

} // namespace pointertext

#endif
