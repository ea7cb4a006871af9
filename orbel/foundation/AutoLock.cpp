#include <orbel/foundation/AutoLock.h>

namespace QX {

AutoLock::AutoLock(Lock& lock) : m_lock(&lock) {
    m_lock->Enter();
}

AutoLock::~AutoLock() {
    m_lock->Leave();
}

} // namespace QX
