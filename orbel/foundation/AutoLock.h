#ifndef ORBEL_FOUNDATION_AUTOLOCK_H
#define ORBEL_FOUNDATION_AUTOLOCK_H

#include <orbel/foundation/Lock.h>

namespace QX {

/// Holds a lock for its lifetime. The lock must outlive it.
class ORBEL_API AutoLock {
public:
    /// Enters `lock`, and leaves it when destroyed.
    explicit AutoLock(Lock& lock);
    AutoLock(const AutoLock&) = delete;
    AutoLock& operator=(const AutoLock&) = delete;
    virtual ~AutoLock();

private:
    Lock* m_lock;
};

} // namespace QX

#endif
