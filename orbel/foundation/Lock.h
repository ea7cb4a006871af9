#ifndef ORBEL_FOUNDATION_LOCK_H
#define ORBEL_FOUNDATION_LOCK_H

#include <orbel/foundation/Export.h>

#include <memory>

class CriticalSection;

namespace QX {

/// A lock between threads of one process. The thread that holds it may enter it again, and leaves it as often.
class ORBEL_API Lock {
public:
    Lock();
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;
    virtual ~Lock();

    /// Waits until no other thread holds the lock.
    void Enter();
    /// By the thread that holds it, once for each Enter.
    void Leave();

private:
    std::unique_ptr<CriticalSection> m_section;
};

} // namespace QX

#endif
