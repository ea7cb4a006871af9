#include <orbel/orbel.h>

#include <support/TestHost.h>

#include <gtest/gtest.h>

#include <string>

namespace {

const std::string request = "0 MAIN*ONAIR GET_INFO";

/// What the host answers when it is asked for its name and address. Each test is a process of its own.
class HostInfoLookup : public testing::Test {
protected:
    class Plugin : public korDataHandler {
    public:
        int getPluginType() override { return 0; }
        char* getPluginFolder() override { return nullptr; }
    };

    /// "name at address".
    std::string lookUp(const std::string& answer) {
        host.answers[request] = answer;
        return std::string(plugin.parseMacro("HOSTNAME")) + " at " + plugin.parseMacro("HOSTIP");
    }

    TestHost& host = TestHost::get();
    Plugin plugin;
};

} // namespace

TEST_F(HostInfoLookup, IsMadeOnFirstUseOnly) {
    plugin.parseMacro("SCENE_NAME");
    EXPECT_TRUE(host.log.empty());
    EXPECT_EQ(lookUp("Hostname studio IP address: 10.0.0.7"), "studio at 10.0.0.7");
    EXPECT_EQ(lookUp("Hostname other IP address: 10.0.0.8"), "studio at 10.0.0.7");
    EXPECT_EQ(host.log, std::vector<std::string>{request});
}

TEST_F(HostInfoLookup, IsMadeForTheAddressToo) {
    host.answers[request] = "Hostname studio IP address: 10.0.0.7";
    EXPECT_STREQ(plugin.parseMacro("HOSTIP"), "10.0.0.7");
    EXPECT_STREQ(plugin.parseMacro("HOSTNAME"), "studio");
    EXPECT_EQ(host.log, std::vector<std::string>{request});
}

TEST_F(HostInfoLookup, IsSharedByAllPlugIns) {
    EXPECT_EQ(lookUp("Hostname studio IP address: 10.0.0.7"), "studio at 10.0.0.7");
    Plugin other;
    EXPECT_STREQ(other.parseMacro("HOSTNAME"), "studio");
    EXPECT_EQ(host.log.size(), 1U);
}

TEST_F(HostInfoLookup, IsNotRepeatedWhenItFoundNothing) {
    EXPECT_EQ(lookUp("nothing to tell"), "localhost at 0.0.0.0");
    EXPECT_EQ(lookUp("Hostname studio IP address: 10.0.0.7"), "localhost at 0.0.0.0");
    EXPECT_EQ(host.log.size(), 1U);
}

TEST_F(HostInfoLookup, FindsNothingInAnEmptyAnswer) {
    EXPECT_EQ(lookUp(""), "localhost at 0.0.0.0");
}

TEST_F(HostInfoLookup, FindsNothingWithoutAnAnswer) {
    host.isSilent = true;
    EXPECT_EQ(lookUp("Hostname studio"), "localhost at 0.0.0.0");
    host.isSilent = false;
    EXPECT_EQ(lookUp("Hostname studio"), "localhost at 0.0.0.0");
}

TEST_F(HostInfoLookup, LeavesTheNameAloneWithoutOne) {
    EXPECT_EQ(lookUp("Version 5 IP address: 10.0.0.7"), "localhost at 10.0.0.7");
}

TEST_F(HostInfoLookup, KeepsItsOwnCopy) {
    EXPECT_EQ(lookUp("Hostname studio IP address: 10.0.0.7"), "studio at 10.0.0.7");
    host.answers.clear();
    EXPECT_EQ(lookUp(""), "studio at 10.0.0.7");
    plugin.parseMacro("HOSTNAME")[0] = 'X';
    EXPECT_STREQ(plugin.parseMacro("HOSTNAME"), "studio");
}

TEST_F(HostInfoLookup, IsNotMadeAgainWhileTheHostAnswers) {
    std::string meanwhile;
    host.onCommand = [&] { meanwhile = plugin.parseMacro("HOSTNAME"); };
    EXPECT_EQ(lookUp("Hostname studio IP address: 10.0.0.7"), "studio at 10.0.0.7");
    EXPECT_EQ(meanwhile, "localhost");
    EXPECT_EQ(host.log.size(), 1U);
}

TEST_F(HostInfoLookup, IsSharedWithFieldNames) {
    host.answers[request] = "Hostname studio IP address: 10.0.0.7";
    host.localScene = host.addScene("Today");
    plugin.init(host.localScene);
    plugin.setLocalScene();
    plugin.Register("$(HOSTNAME)", 0);
    ASSERT_NE(plugin.getField(), nullptr);
    EXPECT_STREQ(plugin.getField()->getName(), "studio");
    plugin.parseMacro("HOSTIP");
    EXPECT_EQ(host.log, std::vector<std::string>{request});
}
