#ifndef ORBEL_TOOLS_CHECK_COLOUREDOUTPUT_H
#define ORBEL_TOOLS_CHECK_COLOUREDOUTPUT_H

/// Whether standard output is a terminal that shows colours; prepares it to do so.
bool prepareColours();

#endif
