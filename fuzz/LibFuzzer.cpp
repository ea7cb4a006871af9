#include "Target.h"

#include <cstddef>
#include <cstdint>

// What libFuzzer calls. Its executables hold one target each.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // An empty input comes without data.
    const char* const text = size == 0 ? "" : reinterpret_cast<const char*>(data);
    runSilently(*targets().front(), std::string_view(text, size));
    return 0;
}
