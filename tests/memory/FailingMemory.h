#ifndef ORBEL_TESTS_MEMORY_FAILINGMEMORY_H
#define ORBEL_TESTS_MEMORY_FAILINGMEMORY_H

namespace memory {

/// Whether there is memory again after the allocation that failed.
enum class Shortage { passing, lasting };

/// As long as it lives, the allocation of this number fails, counted from 1 on, and all others after it in a lasting
/// shortage. Only one can exist at a time.
class Fault {
public:
    Fault(long long number, Shortage shortage);
    Fault(const Fault&) = delete;
    Fault& operator=(const Fault&) = delete;
    ~Fault();

    /// Whether there were so many allocations.
    bool happened() const;
};

/// How many allocations of the process have not been given back; always 0 on Windows.
long long held();

} // namespace memory

#endif
