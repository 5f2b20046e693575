// What the physics step reports: triggers and start-of-touch contacts.
#include "physics/trigger_callback.h"
#include "tests/physics/physics_fixture.h"

namespace {

using ReportTest = PhysicsTest;

TEST_F(ReportTest, EachLandingOfABallIsReportedOnceAndAResterIsNot) {
    physics.SetGravity({0, -60, 0});
    Floor(0);
    phys::Actor* ball = Ball({3, 10, 0});
    Steps(240);

    EXPECT_NEAR(ball->GetGlobalPosition().y, 1.0f, 0.05f);
    EXPECT_NEAR(ball->GetLinearVelocity().y, 0.0f, 0.05f);
    // Falling 9 units under 60 gives about 33 units/s: a blow of at least 33 for a ball of
    // mass 1, stopped (and thrown back up) within one tick. Each bounce lands softer.
    ASSERT_GE(sounds.played.size(), 1u);
    ASSERT_LE(sounds.played.size(), 4u);
    EXPECT_EQ(sounds.played[0].otherGroup, GroupTrack);
    EXPECT_NEAR(sounds.played[0].position.x, 3.0f, 0.01f);
    EXPECT_NEAR(sounds.played[0].position.y, 1.0f, 0.2f);
    EXPECT_GT(sounds.played[0].force, 30.0f);
    EXPECT_LT(sounds.played[0].force, 70.0f);
    for (size_t i = 1; i < sounds.played.size(); ++i)
        EXPECT_LT(sounds.played[i].force, sounds.played[i - 1].force);

    // Resting for ten seconds is one long touch.
    const float hardest = sounds.played[0].force;
    sounds.played.clear();
    Steps(600);
    EXPECT_TRUE(sounds.played.empty());

    // Set down gently, a ball touches once.
    phys::Actor* gentle = Ball({-10, 1.02f, 0});
    Steps(120);
    ASSERT_EQ(sounds.played.size(), 1u);
    EXPECT_LT(sounds.played[0].force, hardest);
    EXPECT_NEAR(gentle->GetGlobalPosition().y, 1.0f, 0.05f);
}

TEST_F(ReportTest, OnlyBallPairsOfTheReportedGroupsAreReported) {
    physics.SetGravity({0, -60, 0});
    phys::Actor* floor = Floor(0);
    // Two balls landing on each other, and a dead ball on the track: no sounds.
    Ball({0, 1, 0});
    Steps(60);
    sounds.played.clear();
    Ball({0, 6, 0});
    phys::Actor* dead = physics.CreateSphereActor(1, 1, 1);
    dead->SetGlobalPosition({20, 4, 0});
    dead->SetGroup(GroupProp);
    Steps(120);
    ASSERT_EQ(sounds.played.size(), 0u);

    // A ball falling onto the resting dead ball is reported, and so are a peg and a bumper.
    Ball({20, 10, 0});
    Steps(120);
    ASSERT_GE(sounds.played.size(), 1u);
    for (const ReportedContact& contact : sounds.played) EXPECT_EQ(contact.otherGroup, GroupProp);
    sounds.played.clear();
    floor->SetGroup(0);
    phys::Actor* peg = physics.CreateSphereActor(1, 0, 0);
    peg->SetGlobalPosition({-20, 3, 0});
    peg->SetGroup(GroupPeg);
    Ball({-20, 8, 0});
    phys::Actor* bumper = physics.CreateSphereActor(1, 0, 0);
    bumper->SetGlobalPosition({-40, 3, 0});
    bumper->SetGroup(GroupBumper);
    Ball({-40, 8, 0});
    Steps(30);
    ASSERT_GE(sounds.played.size(), 2u);
    EXPECT_EQ(sounds.played[0].otherGroup, GroupPeg);
    EXPECT_EQ(sounds.played[1].otherGroup, GroupBumper);
}

TEST_F(ReportTest, RemovingAListenerThatIsNoLongerCurrentKeepsTheCurrentOne) {
    RecordingContacts newer;
    physics.SetContactListener(&newer);
    physics.RemoveContactListener(&sounds);
    physics.SetGravity({0, -60, 0});
    Floor(0);
    Ball({0, 5, 0});
    Steps(60);
    EXPECT_FALSE(newer.played.empty());
    EXPECT_TRUE(sounds.played.empty());
    physics.RemoveContactListener(&newer);
    const size_t heard = newer.played.size();
    Ball({10, 5, 0});
    Steps(60);
    EXPECT_EQ(newer.played.size(), heard) << "once removed, nobody hears";
}

TEST_F(ReportTest, TriggersReportEnterStayAndLeaveButNeverTouch) {
    RecordingTrigger owner;
    phys::Actor* trigger = physics.CreateSphereTrigger(2, &owner);
    ASSERT_NE(trigger, nullptr);
    EXPECT_EQ(trigger->userData, &owner);
    EXPECT_EQ(trigger->GetGroup(), 0);
    trigger->SetGlobalPosition({0, 0, 0});
    Floor(-1.5f);  // overlaps the trigger: statics are never reported
    phys::Actor* post = physics.CreateSphereActor(1, 0, 0);
    post->SetGlobalPosition({0, 2.5f, 0});

    // A ball rolls through the trigger with nothing to stop it, another stays away.
    physics.SetGravity({0, 0, 0});
    phys::Actor* ball = Ball({-10, 0.2f, 0});
    ball->SetLinearVelocity({10, 0, 0});
    Ball({-20, 20, 0});
    Steps(150);

    EXPECT_TRUE(owner.Count('E') == 1 && owner.Count('L') == 1 && owner.Count('S') > 0);
    for (const auto& [kind, actor] : owner.log) EXPECT_EQ(actor, ball);
    EXPECT_TRUE(owner.log.front().first == 'E' && owner.log.back().first == 'L');
    // The trigger never pushed the ball: it went straight through.
    EXPECT_FLOAT_EQ(ball->GetLinearVelocity().x, 10.0f);
    EXPECT_NEAR(ball->GetGlobalPosition().x, 15.0f, 0.01f);
    EXPECT_TRUE(sounds.played.empty());
}

TEST(TriggerCallbackFlags, StayWinsOverEnterAndEnterOverLeave) {
    PhysicsSystem physics;
    ASSERT_TRUE(physics.Startup());
    RecordingTrigger owner;
    phys::Actor* trigger = physics.CreateSphereTrigger(1, &owner);
    phys::Actor* other = physics.CreateSphereActor(1, 1, 0);
    TriggerCallback callback;
    callback.OnTrigger(trigger, other, phys::TriggerOnStay | phys::TriggerOnEnter);
    callback.OnTrigger(trigger, other, phys::TriggerOnEnter | phys::TriggerOnLeave);
    callback.OnTrigger(trigger, other, phys::TriggerOnLeave);
    callback.OnTrigger(trigger, other, 0);
    ASSERT_EQ(owner.log.size(), 3u);
    EXPECT_TRUE(owner.log[0].first == 'S' && owner.log[1].first == 'E' && owner.log[2].first == 'L');
}

TEST_F(ReportTest, AnActorReleasedMidStepIsNeverReported) {
    RecordingTrigger owner;
    physics.CreateSphereTrigger(3, &owner);
    phys::Actor* ball = Ball({0, 0, 0});
    physics.ReleaseActor(ball);
    Steps(5);
    EXPECT_TRUE(owner.log.empty());

    // Released while inside: no leave arrives for an actor that no longer exists.
    phys::Actor* second = Ball({0, 0, 0});
    Steps(2);
    ASSERT_EQ(owner.Count('E'), 1);
    physics.ReleaseActor(second);
    Steps(5);
    EXPECT_EQ(owner.Count('L'), 0);
}

}  // namespace
