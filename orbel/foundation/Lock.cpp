#include <orbel/foundation/Lock.h>

#include "platform/CriticalSection.h"

namespace QX {

Lock::Lock() : m_section(new CriticalSection) {}

Lock::~Lock() {
    delete m_section;
}

void Lock::Enter() {
    m_section->enter();
}

void Lock::Leave() {
    m_section->leave();
}

} // namespace QX
