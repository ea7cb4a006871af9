#ifndef ORBEL_TESTS_SUPPORT_VIRTUALSLOT_H
#define ORBEL_TESTS_SUPPORT_VIRTUALSLOT_H

#include <cstddef>
#include <cstring>

/// The position of a virtual operation in the table of its class, as compiled plug-ins know it. A virtual destructor
/// takes two.
template <class Result, class Class, class... Parameters>
std::size_t virtualSlot(Result (Class::*operation)(Parameters...)) {
    // The C++ ABI of both platforms writes a pointer to a virtual member as its byte offset in the table plus one.
    std::size_t offset = 0;
    std::memcpy(&offset, &operation, sizeof offset);
    return (offset - 1) / sizeof(void*);
}

#endif
