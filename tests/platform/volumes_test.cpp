// The volumes root: default, override, restore.
#include <gtest/gtest.h>

#include <string>

#include "platform/toolbox/volumes.h"
#include "support/temp_volumes.h"

TEST(VolumesRoot, SetterOverridesAndTrailingSlashesGo) {
    std::string before = vitrail_volumes_root();
    EXPECT_EQ(vitrail_set_volumes_root("/tmp/some/where//"), 0);
    EXPECT_STREQ(vitrail_volumes_root(), "/tmp/some/where");
    EXPECT_EQ(platform::VolumesRoot(), "/tmp/some/where");
    EXPECT_EQ(vitrail_set_volumes_root(std::string(1024, 'x').c_str()), -1);
    EXPECT_STREQ(vitrail_volumes_root(), "/tmp/some/where");
    EXPECT_EQ(vitrail_set_volumes_root(nullptr), 0);
    EXPECT_STREQ(vitrail_volumes_root(), before.c_str());
}

TEST(VolumesRoot, TempVolumesRestoresTheRootAndRemovesItsFolder) {
    std::string before = vitrail_volumes_root();
    std::filesystem::path made;
    {
        vitrail_test::TempVolumes volumes;
        made = volumes.root();
        EXPECT_EQ(platform::VolumesRoot(), made.string());
        volumes.write("Data/a.txt", "abc");
        EXPECT_EQ(volumes.read("Data/a.txt"), "abc");
    }
    EXPECT_FALSE(std::filesystem::exists(made));
    EXPECT_EQ(platform::VolumesRoot(), before);
}
