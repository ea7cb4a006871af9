#include <kor/PlugIn.h>

korDataHandler* korCreatePlugin(const KorSettings& /*settings*/) {
    return nullptr;
}
