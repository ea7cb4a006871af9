#include <orbel/orbel.h>

#include <support/Text.h>

#include <gtest/gtest.h>

namespace {

/// The least a plug-in can be.
class Plugin : public korDataHandler {
public:
    int getPluginType() override { return 0; }
    char* getPluginFolder() override { return nullptr; }
};

TEST(WithoutAHost, PlugInsAreNowhere) {
    Plugin plugin;
    plugin.setLocalContainer();
    plugin.setLocalScene();
    EXPECT_EQ(plugin.getLocalContainer().id, -1);
    EXPECT_EQ(plugin.getLocalScene().id, -1);
    EXPECT_STREQ(plugin.getContainerName(), "");
    EXPECT_STREQ(plugin.getSceneFullName(), "");
}

} // namespace
