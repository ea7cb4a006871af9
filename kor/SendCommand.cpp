#include "SendCommand.h"

#include <orbel/host/HostApi.h>

#include <orbel/foundation/platform/Symbols.h>

void sendCommand(const std::string& command) {
    // Linked against one executable, a plug-in could be loaded by no other on Windows.
    static auto* const send =
        reinterpret_cast<decltype(&_api__kor_send_command)>(symbols::find("Kor.exe", "_api__kor_send_command"));
    const char* answer = nullptr;
    if (send)
        send(command.c_str(), &answer);
}
