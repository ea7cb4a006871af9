#include <orbel/host/HostInfo.h>

#include <gtest/gtest.h>

#include <string>

namespace {

/// "name at address".
std::string read(const std::string& answer) {
    const HostInfo info = readHostInfo(answer);
    return info.name + " at " + info.address;
}

} // namespace

TEST(HostInfoText, IsReadFromAnyPlace) {
    EXPECT_EQ(read("Hostname studio IP address: 10.0.0.7"), "studio at 10.0.0.7");
    EXPECT_EQ(read("IP address: 10.0.0.7 Hostname studio"), "studio at 10.0.0.7");
    EXPECT_EQ(read("Version 5 Hostname studio Build 7 IP = 10.0.0.7 Up 3"), "studio at 10.0.0.7");
    EXPECT_EQ(read("\n Hostname\tstudio\n\nIP\t:\n10.0.0.7\n"), "studio at 10.0.0.7");
}

TEST(HostInfoText, MayTellLess) {
    EXPECT_EQ(read(""), "localhost at 0.0.0.0");
    EXPECT_EQ(read(" \t\n:"), "localhost at 0.0.0.0");
    EXPECT_EQ(read("Version 5"), "localhost at 0.0.0.0");
    EXPECT_EQ(read("Hostname studio"), "studio at 0.0.0.0");
    EXPECT_EQ(read("IP address: 10.0.0.7"), "localhost at 10.0.0.7");
}

TEST(HostInfoText, MayEndBeforeAValue) {
    EXPECT_EQ(read("Hostname"), "localhost at 0.0.0.0");
    EXPECT_EQ(read("Hostname \n"), "localhost at 0.0.0.0");
    EXPECT_EQ(read("IP"), "localhost at 0.0.0.0");
    EXPECT_EQ(read("IP address:"), "localhost at 0.0.0.0");
    EXPECT_EQ(read("IP address: "), "localhost at 0.0.0.0");
    EXPECT_EQ(read("Hostname studio IP"), "studio at 0.0.0.0");
    EXPECT_EQ(read("Hostname studio IP address:"), "studio at 0.0.0.0");
    EXPECT_EQ(read("IP address: 10.0.0.7 Hostname"), "localhost at 10.0.0.7");
}

TEST(HostInfoText, TakesTheNextTokenWhateverItIs) {
    EXPECT_EQ(read("Hostname IP address: 10.0.0.7"), "IP at 0.0.0.0");
    EXPECT_EQ(read("Hostname Hostname studio"), "Hostname at 0.0.0.0");
    EXPECT_EQ(read("Hostname IP IP address: 10.0.0.7"), "IP at 10.0.0.7");
    EXPECT_EQ(read("IP Hostname studio"), "localhost at studio");
    EXPECT_EQ(read("IP Hostname studio Hostname camera"), "camera at studio");
    EXPECT_EQ(read("IP IP IP"), "localhost at IP");
}

TEST(HostInfoText, KeepsTheFirstOfEach) {
    EXPECT_EQ(read("Hostname studio Hostname camera IP a 1 IP b 2"), "studio at 1");
    EXPECT_EQ(read("IP a 1 IP b 2 Hostname studio Hostname camera"), "studio at 1");
}

TEST(HostInfoText, IsWrittenExactly) {
    EXPECT_EQ(read("hostname studio ip address: 10.0.0.7"), "localhost at 0.0.0.0");
    EXPECT_EQ(read("HOSTNAME studio IPs address: 10.0.0.7"), "localhost at 0.0.0.0");
    EXPECT_EQ(read("TheHostname studio"), "localhost at 0.0.0.0");
}

TEST(HostInfoText, ColonsEndTheFirstTokenOnly) {
    EXPECT_EQ(read("Hostname:studio IP address: 10.0.0.7"), "studio at 10.0.0.7");
    EXPECT_EQ(read("Hostname: studio"), "studio at 0.0.0.0");
    EXPECT_EQ(read(":: Hostname:studio"), "studio at 0.0.0.0");
    EXPECT_EQ(read("Hostname::studio"), ":studio at 0.0.0.0");
    EXPECT_EQ(read("Hostname :studio"), ":studio at 0.0.0.0");
    EXPECT_EQ(read("Hostname : studio"), ": at 0.0.0.0");
    EXPECT_EQ(read("Version:5 Hostname:studio"), "localhost at 0.0.0.0");
    EXPECT_EQ(read("Version 5 Hostname: studio"), "localhost at 0.0.0.0");
    EXPECT_EQ(read("IP:address 10.0.0.7"), "localhost at 10.0.0.7");
    EXPECT_EQ(read("IP:10.0.0.7 Hostname studio"), "localhost at Hostname");
    EXPECT_EQ(read("Hostname a:b IP : fe80::1"), "a:b at fe80::1");
}

TEST(HostInfoText, CarriageReturnsBelongToTokens) {
    EXPECT_EQ(read("Hostname studio\r\nIP address: 10.0.0.7\r\n"), "studio\r at 10.0.0.7\r");
}

TEST(HostInfoText, ValuesHave255CharactersAtMost) {
    const std::string value(300, 'v');
    EXPECT_EQ(read("Hostname " + value + " IP address: " + value),
              std::string(255, 'v') + " at " + std::string(255, 'v'));
    EXPECT_EQ(read("Hostname " + std::string(255, 'v')), std::string(255, 'v') + " at 0.0.0.0");
}

TEST(HostInfoText, OnlyTheFirst1023CharactersAreRead) {
    // "Hostname abc" ends with character 1,023, then one character too far, then before the value.
    EXPECT_EQ(read(std::string(1'011, ' ') + "Hostname abcdef"), "abc at 0.0.0.0");
    EXPECT_EQ(read(std::string(1'013, ' ') + "Hostname abcdef"), "a at 0.0.0.0");
    EXPECT_EQ(read(std::string(1'014, ' ') + "Hostname abcdef"), "localhost at 0.0.0.0");
    EXPECT_EQ(read(std::string(1'016, ' ') + "Hostname abcdef"), "localhost at 0.0.0.0");
    EXPECT_EQ(read(std::string(1'000'000, 'x') + " Hostname studio"), "localhost at 0.0.0.0");
    EXPECT_EQ(read("Hostname studio " + std::string(2'000, 'x') + " IP address: 10.0.0.7"), "studio at 0.0.0.0");
}
