#include "CriticalSection.h"

#include <windows.h>

struct CriticalSection::Section {
    CRITICAL_SECTION section;
};

CriticalSection::CriticalSection() : m_section(std::make_unique<Section>()) {
    InitializeCriticalSectionAndSpinCount(&m_section->section, 0);
}

CriticalSection::~CriticalSection() {
    DeleteCriticalSection(&m_section->section);
}

void CriticalSection::enter() {
    EnterCriticalSection(&m_section->section);
}

void CriticalSection::leave() {
    LeaveCriticalSection(&m_section->section);
}
