#ifndef KOR_SENDCOMMAND_H
#define KOR_SENDCOMMAND_H

#include <string>

/// Sends a command to the host of the running program, whichever that is; nothing happens when it is none.
void sendCommand(const std::string& command);

#endif
