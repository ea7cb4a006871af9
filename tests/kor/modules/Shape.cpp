#include "TrialPlugIn.h"

korDataHandler* korCreatePlugin(const KorSettings& settings) {
    return new TrialPlugIn("Shape", settings);
}
