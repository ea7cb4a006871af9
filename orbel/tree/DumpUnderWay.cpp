#include "DumpUnderWay.h"

#include <orbel/tree/DataBaseType.h>

#include "TreeState.h"

#include <fstream>
#include <ostream>
#include <sstream>
#include <typeinfo>

namespace {

/// Exactly these classes: one that derives from them may want to see every flush.
bool isStandard(const std::streambuf* buffer) {
    return buffer && (typeid(*buffer) == typeid(std::filebuf) || typeid(*buffer) == typeid(std::stringbuf));
}

} // namespace

DumpUnderWay::DumpUnderWay(std::ostream& os)
    : m_os(os), m_indentation(DataBaseType::indentation), m_outerStream(treeState.dumpStream),
      m_outerFlushesOnce(treeState.dumpFlushesOnce) {
    if (m_outerStream == &os)
        return;
    treeState.dumpStream = &os;
    treeState.dumpFlushesOnce = isStandard(os.rdbuf());
}

DumpUnderWay::~DumpUnderWay() {
    if (!m_isComplete)
        DataBaseType::indentation = m_indentation;
    treeState.dumpStream = m_outerStream;
    treeState.dumpFlushesOnce = m_outerFlushesOnce;
}

void DumpUnderWay::endFlushed() {
    if (treeState.dumpFlushesOnce) {
        end();
        return;
    }
    m_os.flush();
    m_isComplete = true;
}

void DumpUnderWay::end() {
    if (treeState.dumpFlushesOnce && m_outerStream != &m_os)
        m_os.flush();
    m_isComplete = true;
}
