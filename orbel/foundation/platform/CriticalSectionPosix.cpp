#include "CriticalSection.h"

#include <mutex>

struct CriticalSection::Section {
    std::recursive_mutex mutex;
};

CriticalSection::CriticalSection() : m_section(std::make_unique<Section>()) {}

CriticalSection::~CriticalSection() = default;

void CriticalSection::enter() {
    m_section->mutex.lock();
}

void CriticalSection::leave() {
    m_section->mutex.unlock();
}
