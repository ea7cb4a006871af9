#ifndef ORBEL_FOUNDATION_PLATFORM_CRITICALSECTION_H
#define ORBEL_FOUNDATION_PLATFORM_CRITICALSECTION_H

#include <memory>

/// The platform's lock for one process. The thread that holds it may enter it again.
class CriticalSection {
public:
    CriticalSection();
    CriticalSection(const CriticalSection&) = delete;
    CriticalSection& operator=(const CriticalSection&) = delete;
    ~CriticalSection();

    void enter();
    void leave();

private:
    struct Section;
    std::unique_ptr<Section> m_section;
};

#endif
