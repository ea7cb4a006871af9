#ifndef ORBEL_TESTS_SUPPORT_PLATFORM_H
#define ORBEL_TESTS_SUPPORT_PLATFORM_H

#include <filesystem>

constexpr bool onWindows = std::filesystem::path::preferred_separator == L'\\';

#endif
