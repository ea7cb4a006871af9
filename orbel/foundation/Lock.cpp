#include <orbel/foundation/Lock.h>

#include "platform/CriticalSection.h"

namespace QX {

Lock::Lock() : m_section(std::make_unique<CriticalSection>()) {}

Lock::~Lock() = default;

void Lock::Enter() {
    m_section->enter();
}

void Lock::Leave() {
    m_section->leave();
}

} // namespace QX
