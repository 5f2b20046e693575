// Which sound a ball's contact makes, and how loud.
#include "objects/contact_sounds.h"

#include <gtest/gtest.h>

#include "objects/actor_group.h"

namespace {

TEST(ContactSoundTable, EachGroupHasItsSoundLouderTheHarderTheImpact) {
    EXPECT_STREQ(ChooseContactSound(GroupTrack, {0, 40, 0}).name, "claves");
    EXPECT_STREQ(ChooseContactSound(GroupPeg, {0, 40, 0}).name, "claves");
    EXPECT_STREQ(ChooseContactSound(GroupProp, {5, 0, 0}).name, "cowbell");
    EXPECT_EQ(ChooseContactSound(GroupBall, {0, 40, 0}).name, nullptr);
    EXPECT_EQ(ChooseContactSound(0, {0, 40, 0}).name, nullptr);
    // The force vector's length counts; the gong always plays at full volume.
    EXPECT_EQ(ChooseContactSound(GroupTrack, {0, 30, 40}).volume, -400);
    EXPECT_EQ(ChooseContactSound(GroupProp, {5, 0, 0}).volume, -1000);
    EXPECT_EQ(ChooseContactSound(GroupBumper, {0, 0, 0}).volume, 0);
    // Weak and forceless impacts are as quiet as a sound can be.
    EXPECT_EQ(ChooseContactSound(GroupTrack, {1, 0, 0}).volume, -10000);
    EXPECT_EQ(ChooseContactSound(GroupTrack, {0, 0, 0}).volume, -10000);
}

}  // namespace
