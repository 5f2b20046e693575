// Which sound a ball's contact makes, and how loud.
#include "objects/contact_sounds.h"

#include <gtest/gtest.h>

#include "objects/actor_group.h"

namespace {

TEST(ContactSoundTable, VolumeFallsWithTheForce) {
    EXPECT_STREQ(ChooseContactSound(GroupTrack, {0, 40, 0}).name, "claves");
    EXPECT_EQ(ChooseContactSound(GroupTrack, {0, 40, 0}).volume, -500);
    EXPECT_EQ(ChooseContactSound(GroupPeg, {4, 0, 0}).volume, -5000);
    EXPECT_EQ(ChooseContactSound(GroupTrack, {0, 0, 200}).volume, -100);
    EXPECT_EQ(ChooseContactSound(GroupTrack, {0, 30, 40}).volume, -400);  // the vector's length counts
    EXPECT_STREQ(ChooseContactSound(GroupProp, {5, 0, 0}).name, "cowbell");
    EXPECT_EQ(ChooseContactSound(GroupProp, {5, 0, 0}).volume, -1000);
    EXPECT_STREQ(ChooseContactSound(GroupBumper, {0, 0, 0}).name, "oriental_gong");
    EXPECT_EQ(ChooseContactSound(GroupBumper, {0, 0, 0}).volume, 0);
    // Weak and forceless impacts are as quiet as a sound can be.
    EXPECT_EQ(ChooseContactSound(GroupTrack, {1, 0, 0}).volume, -10000);
    EXPECT_EQ(ChooseContactSound(GroupTrack, {0, 0, 0}).volume, -10000);
    EXPECT_EQ(ChooseContactSound(GroupBall, {0, 40, 0}).name, nullptr);
    EXPECT_EQ(ChooseContactSound(0, {0, 40, 0}).name, nullptr);
}

}  // namespace
