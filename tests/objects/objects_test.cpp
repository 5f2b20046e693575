// Every object family in play, in small levels written here and stepped at 1/60 s.
#include <cmath>
#include <set>

#include "level/object_kinds.h"
#include "objects/ball.h"
#include "objects/bumpers.h"
#include "objects/goal.h"
#include "objects/particle_system.h"
#include "objects/teleporters.h"
#include "objects/turbines.h"
#include "physics/actor.h"
#include "physics/joint.h"
#include "tests/level/level_fixture.h"

namespace {

using Objects = LevelTest;

TEST_F(Objects, BumpersKickEverythingButBumpOnlyForTheCurrentBall) {
    ASSERT_TRUE(Load(BallXml("hero", 0, 9) + BallXml("other", 30, 9) +
                     R"(<Bumper name="one" x="0" y="4" radius="2" force="30"/>
                        <Bumper name="two" x="30" y="4" radius="2" force="30"/>
                        <Bumper name="dud" x="-30" y="4" radius="2" force="0"/>)"));
    EXPECT_EQ(static_cast<Bumper*>(Named("dud"))->GetTrigger(), nullptr);
    const int hit = RunUntil([&] { return !game->events.empty(); }, 120);
    ASSERT_GE(hit, 0);
    Run(20);
    EXPECT_EQ(Raised("Bump"), std::vector<std::string>(Raised("Bump").size(), "one"));
    EXPECT_GE(Raised("Bump").size(), 1u);
    // Both balls were thrown up and away from their bumpers' centres.
    EXPECT_GT(Named("hero")->GetPosition().y, 5.5f);
    EXPECT_GT(Named("other")->GetPosition().y, 5.5f);
    EXPECT_GE(level().GetParticles()->LiveCount(), 55);
}

TEST_F(Objects, AReverseGravityBumperFlipsGravityForTheCurrentBallOnly) {
    ASSERT_TRUE(Load(BallXml("other", 0, 9) + BallXml("hero", 30, 9) +
                     R"(<RevGravBumper name="flip" x="0" y="4" radius="2" force="10"/>
                        <RevGravBumper name="flop" x="30" y="4" radius="2" force="10"/>)"));
    Run(1, kNext);  // hero, the second ball, becomes current
    ASSERT_GE(RunUntil([&] { return level().GetBaseGravity().y > 0; }, 120), 0);
    EXPECT_EQ(Raised("GravityUp"), std::vector<std::string>{"flop"});
    EXPECT_TRUE(Raised("GravityDown").empty());
    EXPECT_EQ(level().GetBaseGravity().x, 0.0f);

    // With gravity pointing up, a ball rising into the bumper turns it down again.
    game = std::make_unique<HeadlessGame>(2);
    ASSERT_TRUE(Load(BallXml("hero", 0, 14) + R"(<RevGravBumper name="flip" x="0" y="20" radius="2" force="10"/>)"));
    level().SetBaseGravity({0, 60, 0});
    ASSERT_GE(RunUntil([&] { return level().GetBaseGravity().y < 0; }, 120), 0);
    EXPECT_EQ(Raised("GravityDown"), std::vector<std::string>{"flip"});
}

TEST_F(Objects, SpawnersMakeOneTwoOrThreeBallsPerEntryOfTheCurrentBall) {
    for (const auto& [count, made] : std::vector<std::pair<int, int>>{{1, 1}, {2, 2}, {3, 3}, {0, 3}, {-5, 3}}) {
        game = std::make_unique<HeadlessGame>(3);
        ASSERT_TRUE(Load(BallXml("hero", 0, 9) + BallXml("other", 40, 9) +
                         R"(<SpawnerBumper name="s" x="0" y="4" radius="2" force="30" count=")" +
                         std::to_string(count) + R"("/><SpawnerBumper name="t" x="40" y="4" radius="2" force="30" count="3"/>)"));
        ASSERT_GE(RunUntil([&] { return Count("Bump") > 0; }, 120), 0) << count;
        EXPECT_EQ(level().GetBallCount(), 2 + made) << count;
        EXPECT_EQ(level().FindObjectsByName("").size(), size_t(made));
        EXPECT_EQ(level().GetCurrentBall(), Named("hero")) << "spawned balls join the end of the list";
    }
}

TEST_F(Objects, TeleportersFallBackToTheFirstExitThatNamesSomethingAndChooseAtRandom) {
    const std::string level = BallXml("hero", 0, 8) +
                              R"(<TeleportEntrance name="in" x="0" y="3" radius="2">
                                   <Exits><Exit name="nowhere"/><Exit name=""/><Exit name="out"/></Exits>
                                 </TeleportEntrance>
                                 <TeleportExit name="out" x="40" y="10" radius="1"/>
                                 <TeleportExit name="out" x="-40" y="10" radius="1"/>)";
    std::set<int> arrivals;
    for (uint32_t seed = 1; seed <= 8; ++seed) {
        game = std::make_unique<HeadlessGame>(seed);
        ASSERT_TRUE(Load(level));
        ASSERT_GE(RunUntil([&] { return Count("Enter") > 0; }, 120), 0);
        const Vector3 at = Named("hero")->GetPosition();
        EXPECT_NEAR(std::fabs(at.x), 40.0f, 0.5f);
        arrivals.insert(at.x > 0 ? 1 : -1);
        EXPECT_EQ(Raised("Exit"), std::vector<std::string>{"out"});
        EXPECT_EQ(static_cast<TeleporterEntrance*>(Named("in"))->GetExits().size(), 2u);
    }
    EXPECT_EQ(arrivals.size(), 2u) << "both exits named out are used";
}

// Put back inside the entrance by its own exit, the ball enters again: it jumps every step.
TEST_F(Objects, AnExitInsideItsOwnEntranceSendsTheBallOnAtEveryStep) {
    ASSERT_TRUE(Load(BallXml("hero", 0, 8) +
                     R"(<TeleportEntrance name="in" x="0" y="3" radius="3"><Exits><Exit name="out"/></Exits></TeleportEntrance>
                        <TeleportExit name="out" x="1" y="3" radius="1"/>)"));
    ASSERT_GE(RunUntil([&] { return Count("Enter") > 0; }, 120), 0);
    Run(10);
    EXPECT_GE(Count("Enter"), 10) << "once a step";
    EXPECT_NEAR(Named("hero")->GetPosition().x, 1.0f, 0.5f);
}

TEST_F(Objects, DeadBallsAreTeleportedSilently) {
    ASSERT_TRUE(Load(R"(<DeadBall name="lump" x="0" y="8" radius="1" mass="1"/>)" + BallXml("hero", 60, 1) +
                     R"(<TeleportEntrance name="in" x="0" y="3" radius="2"><Exits><Exit name="out"/></Exits></TeleportEntrance>
                        <TeleportExit name="out" x="40" y="10" radius="1"/>)"));
    ASSERT_GE(RunUntil([&] { return Named("lump")->GetPosition().x > 30; }, 120), 0);
    EXPECT_EQ(Count("Enter"), 0);
    EXPECT_EQ(Count("Exit"), 0);
}

TEST_F(Objects, DisabledGoalsAndEntrancesLetThingsThroughAndForgetThem) {
    ASSERT_TRUE(Load(BallXml("hero", 0, 8) + BallXml("late", 0, 150) +
                     R"(<Goal name="goal" x="0" y="3" radius="3" quota="1"/>
                        <Peg name="switch" x="50" y="30" radius="0.5">
                          <Messages><Message event="Off" target="goal" content="Disable"/>
                                    <Message event="On" target="goal" content="Enable"/>
                                    <Message event="Odd" target="goal" content="disable "/></Messages>
                        </Peg>)"));
    Named("switch")->RaiseEvent("Odd");
    Run(1);
    EXPECT_TRUE(static_cast<Goal*>(Named("goal"))->IsEnabled()) << "contents match exactly";
    Named("switch")->RaiseEvent("Off");
    Run(60);
    EXPECT_FALSE(static_cast<Goal*>(Named("goal"))->IsEnabled());
    EXPECT_EQ(level().GetCollected(), 0);
    // Switched on again, the ball resting inside is not collected: it entered while off.
    Named("switch")->RaiseEvent("On");
    Run(20);
    EXPECT_EQ(level().GetCollected(), 0);
    EXPECT_NE(Named("hero"), nullptr);
    // The late ball falls in and scores.
    ASSERT_GE(RunUntil([&] { return level().GetCollected() == 1; }, 240), 0);
    EXPECT_EQ(Named("late"), nullptr);
}

TEST_F(Objects, ADisabledEntranceLetsBallsRestInsideUntilTheyEnterAgain) {
    ASSERT_TRUE(Load(BallXml("hero", 0, 8) + BallXml("late", 0, 150) +
                     R"(<TeleportEntrance name="gate" x="0" y="3" radius="3"><Exits><Exit name="out"/></Exits></TeleportEntrance>
                        <TeleportExit name="out" x="60" y="10" radius="1"/>
                        <Peg name="switch" x="50" y="30" radius="0.5">
                          <Messages><Message event="Off" target="gate" content="Disable"/>
                                    <Message event="On" target="gate" content="Enable"/></Messages></Peg>)"));
    Named("switch")->RaiseEvent("Off");
    Run(60);
    EXPECT_FALSE(static_cast<TeleporterEntrance*>(Named("gate"))->IsEnabled());
    EXPECT_NEAR(Named("hero")->GetPosition().x, 0.0f, 0.5f) << "rolled in and stayed";
    Named("switch")->RaiseEvent("On");
    Run(20);
    EXPECT_NEAR(Named("hero")->GetPosition().x, 0.0f, 0.5f) << "entered while off: not moved";
    ASSERT_GE(RunUntil([&] { return Named("late")->GetPosition().x > 50; }, 240), 0);
    EXPECT_EQ(Count("Enter"), 0) << "only the current ball raises Enter";
}

TEST_F(Objects, SetSpeedScalesItsNumberButTheLevelFileSpeedDoesNot) {
    ASSERT_TRUE(Load(BallXml("hero", -60, 1) +
                     R"(<Turbine name="wheel" x="0" y="20" radius="4.5" speed="2"/>
                        <Peg name="switch" x="50" y="30" radius="0.5"><Messages>
                          <Message event="One" target="wheel" content="SetSpeed 1"/>
                          <Message event="Again" target="wheel" content="SetSpeed"/>
                          <Message event="Case" target="wheel" content="setspeed 9"/>
                          <Message event="Back" target="wheel" content="SetSpeed -1"/></Messages></Peg>)"));
    auto* wheel = static_cast<Turbine*>(Named("wheel"));
    ASSERT_NE(wheel->GetHinge(), nullptr);
    EXPECT_EQ(wheel->GetHinge()->GetMotor().velTarget, 2.0f);
    EXPECT_EQ(wheel->GetHinge()->GetMotor().maxForce, 99.0f);
    Run(60);
    EXPECT_NEAR(wheel->GetActor()->GetAngularVelocity().z, 2.0f, 0.1f);
    EXPECT_NEAR(wheel->GetPosition().x, 0.0f, 1e-3f);

    const float factor = 180.0f / 3.14159f;
    for (const auto& [event, target] : std::vector<std::pair<const char*, float>>{
             {"One", 1 * factor}, {"Again", 1 * factor}, {"Case", 1 * factor}, {"Back", -1 * factor}}) {
        Named("switch")->RaiseEvent(event);
        Run(1);
        EXPECT_FLOAT_EQ(wheel->GetHinge()->GetMotor().velTarget, target) << event;
    }
}

TEST_F(Objects, ADoorSwingsAboutItsHingeAndFreeWheelsTurnWhenHit) {
    ASSERT_TRUE(Load(BallXml("hero", 20, 14) +
                     R"(<HingedDoor name="door" x="0" y="10" radius="1" mass="2" initialAngle="45"/>
                        <FreeTurbine name="mill" x="20" y="6" radius="4.5" mass="2"/>)"));
    Run(20, kLeft);  // tilted, gravity pulls the door over
    Run(60);
    GameObject* door = Named("door");
    EXPECT_NEAR(door->GetPosition().x, 0.0f, 0.05f);
    EXPECT_NEAR(door->GetPosition().y, 10.0f, 0.05f);
    EXPECT_EQ(door->GetPosition().z, 0.0f);
    EXPECT_NE(door->GetActor()->GetAngularVelocity().z, 0.0f);
    GameObject* mill = Named("mill");
    EXPECT_NEAR(mill->GetPosition().x, 20.0f, 1e-3f);
    EXPECT_NE(mill->GetActor()->GetAngularVelocity().z, 0.0f) << "the falling ball turned the wheel";
}

TEST_F(Objects, MessagesQueueInRuleOrderAndOverflowSilently) {
    ASSERT_TRUE(Load(BallXml("hero", -60, 1) + R"(<Goal name="goal" x="60" y="30" radius="3" quota="1"/>
        <Peg name="switch" x="50" y="30" radius="0.5"><Messages>
          <Message event="Three" target="goal" content="first"/>
          <Message event="Three" target="goal" content="second"/>
          <Message event="Three" target="goal" content="third"/>
          <Message event="Self" target="switch" content="to me"/></Messages></Peg>)"));
    for (int i = 0; i < 9; ++i) Named("switch")->RaiseEvent("Three");
    EXPECT_EQ(Named("goal")->GetQueuedCount(), 20u) << "27 sent, 20 kept";
    Named("switch")->RaiseEvent("Self");
    Run(1);
    ASSERT_EQ(game->messages.size(), 21u);
    EXPECT_EQ(game->messages[0].text, "first");
    EXPECT_EQ(game->messages[1].text, "second");
    EXPECT_EQ(game->messages[2].text, "third");
    EXPECT_EQ(game->messages[20].object, "switch");
}

TEST_F(Objects, TheCurrentBallRaisesContactWhenItStartsTouching) {
    ASSERT_TRUE(Load(BallXml("hero", 0, 4) + BallXml("other", 20, 4)));
    Run(60);
    const auto contacts = Raised("Contact");
    ASSERT_GE(contacts.size(), 1u);
    for (const auto& name : contacts) EXPECT_EQ(name, "hero");
    EXPECT_GE(game->sounds.size(), 2u) << "both balls sound on landing";
}

TEST_F(Objects, ANudgeIsAtMost20InThePlaneAndBallsStayInIt) {
    ASSERT_TRUE(Load(BallXml("hero", 0, 1)));
    Run(30);
    Run(1, kNudge);
    Run(1);  // released: the nudge and its burst
    const Vector3 v = Named("hero")->GetVelocity();
    EXPECT_LE(std::hypot(v.x, v.y), 20.01f);
    EXPECT_GT(std::hypot(v.x, v.y), 0.1f);
    EXPECT_EQ(Named("hero")->GetPosition().z, 0.0f);
    EXPECT_GE(level().GetParticles()->LiveCount(), 50);
}

// The one list of kinds builds each object and finds its class model: a wrong class name
// there would leave a kind unseen, or built as another.
TEST_F(Objects, EveryKindIsBuiltAsItsOwnClassWithItsClassModel) {
    std::string objects;
    for (const ObjectKind& kind : ObjectKinds()) {
        if (!std::filesystem::exists(folder / "Media" / kind.model))
            WriteBytes(folder / "Media" / kind.model, mediagen::WriteMaxFile({MaxBox("m", {-1, -1, -1}, {1, 1, 1})}));
        objects += std::string("<") + kind.element + " name=\"" + kind.className +
                   "\" x=\"0\" y=\"50\" radius=\"1\" mass=\"1\" health=\"1\" force=\"1\" speed=\"1\" "
                   "initialAngle=\"0\" quota=\"1\" count=\"1\"/>";
    }
    ASSERT_TRUE(Load(objects));
    for (const ObjectKind& kind : ObjectKinds()) {
        GameObject* object = Named(kind.className);
        ASSERT_NE(object, nullptr) << kind.element;
        EXPECT_STREQ(object->KindName(), kind.className);
        EXPECT_NE(object->GetModel(), nullptr) << kind.className;
    }
}

TEST_F(Objects, RefusedValuesLeaveObjectsWithoutBodiesAndNothingBreaks) {
    ASSERT_TRUE(Load(R"(<Ball name="flat" x="0" y="5" radius="0" mass="1" health="1"/>
                        <Ball name="heavy" x="5" y="5" radius="1" mass="-2" health="1"/>
                        <Bumper name="b" x="10" y="5" radius="-1" force="10"/>
                        <Peg name="p" x="15" y="5" radius="0"/>
                        <HingedDoor name="d" x="20" y="5" radius="1" mass="0" initialAngle="0"/>
                        <Goal name="g" x="25" y="5" radius="0" quota="1"/>
                        <TeleportEntrance name="t" x="30" y="5" radius="-3"/>)"));
    for (const char* name : {"flat", "heavy", "b", "p"}) EXPECT_EQ(Named(name)->GetActor(), nullptr) << name;
    Run(60, kNudge);
    Run(60, kNext);
    EXPECT_EQ(level().GetBallCount(), 2);
}

}  // namespace
