#ifndef ORBEL_HOST_HOSTINFO_H
#define ORBEL_HOST_HOSTINFO_H

#include <string>
#include <string_view>

/// The name and the address of the machine that the host runs on.
struct HostInfo {
    std::string name = "localhost";
    std::string address = "0.0.0.0";
};

/// Reads the host's answer to the info request; what it does not tell stays as it is by default.
HostInfo readHostInfo(std::string_view answer);

/// Asks the host once per process.
HostInfo& hostInfo();

#endif
