#include <orbel/tables/PluginPreSets.h>

#include <gtest/gtest.h>

#include <type_traits>

TEST(PluginPreSets, AreEmptyUntilTheyAreLoaded) {
    PluginPreSets presets;
    EXPECT_EQ(presets.getNameColumn(), -999);
    EXPECT_EQ(presets.getNumColumns(), 0);
    EXPECT_EQ(presets.getNumRows(), 0);
    EXPECT_EQ(presets.getColumn("Name"), -1);
    EXPECT_EQ(presets.getColumn(nullptr), -1);
    EXPECT_EQ(presets.getRow(0), nullptr);
    EXPECT_EQ(presets.getRow(-1), nullptr);
    EXPECT_EQ(presets.findRow("Name"), nullptr);
    EXPECT_EQ(presets.findRow(nullptr), nullptr);
}

static_assert(!std::is_copy_constructible_v<PluginPreSets>, "the library owns the presets of a plug-in");
