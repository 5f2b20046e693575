// Reading level files: what is kept, in what order, and what is recorded as wrong.
#include "level/level_file.h"
#include "level/level_limits.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "level/object_kinds.h"
#include "tests/support/files.h"

namespace {

std::string WriteLevel(const TempDir& dir, const std::string& text) {
    WriteText(dir.File("level.xml"), text);
    return dir.File("level.xml");
}

LevelFile ReadGood(const std::string& text) {
    TempDir dir;
    LevelFile file;
    std::string error;
    EXPECT_TRUE(ReadLevelFile(WriteLevel(dir, text), file, error)) << error;
    EXPECT_EQ(error, "");
    return file;
}

// Problems as "attribute:kind" so a whole list compares at once.
std::vector<std::string> Problems(const std::vector<AttributeProblem>& problems) {
    static const char* kinds[] = {"missing", "nan", "trailing"};
    std::vector<std::string> out;
    for (const AttributeProblem& p : problems) out.push_back(p.attribute + ":" + kinds[p.kind]);
    return out;
}

TEST(ReadNumbers, StopWhereStreamExtractionStops) {
    float value = 42;
    bool trailing = false;
    EXPECT_TRUE(ReadNumber("2.5m", value, &trailing));
    EXPECT_EQ(value, 2.5f);
    EXPECT_TRUE(trailing);
    EXPECT_TRUE(ReadNumber(" -1e2 ", value, &trailing));  // white space around is not text
    EXPECT_EQ(value, -100);
    EXPECT_FALSE(trailing);
    EXPECT_TRUE(ReadNumber("1.5.2", value, &trailing));
    EXPECT_EQ(value, 1.5f);
    EXPECT_TRUE(trailing);
    for (const char* none : {"abc", "", "-"}) {
        value = 42;
        EXPECT_FALSE(ReadNumber(none, value)) << none;
        EXPECT_EQ(value, 0) << none;
    }

    int32_t whole = 42;
    EXPECT_TRUE(ReadWholeNumber("10abc", whole, &trailing));
    EXPECT_EQ(whole, 10);
    EXPECT_TRUE(trailing);
    EXPECT_TRUE(ReadWholeNumber("2.9", whole, &trailing));
    EXPECT_EQ(whole, 2);
    EXPECT_FALSE(ReadWholeNumber("99999999999", whole));  // beyond 32 bits
    EXPECT_EQ(whole, 0);
}

TEST(ReadLevelFile, KeepsDocumentOrderAndOnlyTheFirstOfEachSectionWithANameByDefault) {
    const LevelFile file = ReadGood(R"(<?xml version="1.0"?>
<VelloranLevel>
  <LevelInfo name="Spiral" description="Round &amp; down"/>
  <LevelInfo name="Ignored"/>
  <Objects>
    <Peg name="p2" x="1" y="2" radius="0.5"/>
    <Bumper name="b" x="3" y="4" radius="1" force="7.5"/>
    <!-- a comment is not an object -->
    <Peg name="p1" x="5" y="6" radius="0.5"/>
  </Objects>
  <Tracks>
    <Track name="t2" x="1" y="-2" collisionModel="c2.3DS" renderModel="r2.3DS"/>
    <Note/>
    <Track name="t1" x="0" y="0" collisionModel="c1.3DS" renderModel="r1.3DS"/>
  </Tracks>
  <Tracks><Track name="late" x="0" y="0" collisionModel="c" renderModel="r"/></Tracks>
  <Objects><Peg name="late" x="0" y="0" radius="1"/></Objects>
</VelloranLevel>
)");
    EXPECT_EQ(file.name, "Spiral");
    EXPECT_EQ(file.description, "Round & down");
    std::vector<std::string> seen;
    for (const LevelTrack& t : file.tracks) seen.push_back(t.name + "@" + std::to_string(t.line) + ":" + t.renderModel);
    for (const LevelObject& o : file.objects) {
        seen.push_back(o.name + "@" + std::to_string(o.line));
        EXPECT_TRUE(o.known && o.problems.empty()) << o.name;
    }
    EXPECT_EQ(seen, (std::vector<std::string>{"t2@12:r2.3DS", "t1@14:r1.3DS", "p2@6", "b@7", "p1@9"}));
    EXPECT_EQ(file.tracks[0].y, -2);
    EXPECT_EQ(file.objects[1].force, 7.5f);
    EXPECT_EQ(ReadGood(R"(<VelloranLevel><LevelInfo description="d"/></VelloranLevel>)").name, "UnnamedLevel");
}

TEST(ReadLevelFile, ReadsEachKindsOwnAttributesAndRecordsWhatIsWrong) {
    const LevelFile file = ReadGood(R"(<VelloranLevel><Objects>
<Ball name="ball" x="1" y="2" radius="0.5" mass="2.5m" health="abc"/>
<SpawnerBumper name="s" x="0" y="0" radius="1" force="3" count="10abc"/>
<HingedDoor name="door" x=" 4" y="0" radius="0" mass="1"/>
<Goal x="0" y="0" quota="5" mass="9"/>
<Turbine name="t" x="0" y="0" radius="0" speed="" count="4"/>
</Objects></VelloranLevel>)");
    ASSERT_EQ(file.objects.size(), 5u);
    const LevelObject& ball = file.objects[0];
    EXPECT_EQ(ball.mass, 2.5f);
    EXPECT_EQ(Problems(ball.problems), (std::vector<std::string>{"mass:trailing", "health:nan"}));
    EXPECT_EQ(file.objects[1].count, 10);
    EXPECT_EQ(Problems(file.objects[1].problems), std::vector<std::string>{"count:trailing"});
    EXPECT_EQ(file.objects[2].x, 4);
    EXPECT_EQ(Problems(file.objects[2].problems), std::vector<std::string>{"initialAngle:missing"});
    // Values of other kinds are not read, even when present.
    const LevelObject& goal = file.objects[3];
    EXPECT_EQ(goal.quota, 5);
    EXPECT_EQ(goal.mass, 0);
    EXPECT_EQ(Problems(goal.problems), (std::vector<std::string>{"name:missing", "radius:missing"}));
    EXPECT_EQ(file.objects[4].count, 0);
    EXPECT_EQ(Problems(file.objects[4].problems), std::vector<std::string>{"speed:nan"});
}

TEST(ReadLevelFile, ExitsOnlyUnderEntrancesAndMessagesUnderEveryKind) {
    const LevelFile file = ReadGood(R"(<VelloranLevel><Objects>
<TeleportEntrance name="in" x="0" y="0" radius="1">
  <Exits><Exit name="out1"/><Exit name=""/><Exit/><Other name="no"/><Exit name="out2"/></Exits>
  <Exits><Exit name="late"/></Exits>
  <Messages>
    <Message event="Enter" target="g" content="Disable"/>
    <Message event="Enter" content="Enable"/>
  </Messages>
</TeleportEntrance>
<TeleportExit name="out1" x="0" y="0" radius="1"><Exits><Exit name="x"/></Exits></TeleportExit>
<Spinner name="odd" radius="2"><Messages><Message event="Spin" target="in" content="Go"/></Messages></Spinner>
</Objects></VelloranLevel>)");
    ASSERT_EQ(file.objects.size(), 3u);
    const LevelObject& entrance = file.objects[0];
    EXPECT_EQ(entrance.exits, (std::vector<std::string>{"out1", "out2"}));
    EXPECT_EQ(Problems(entrance.problems), std::vector<std::string>{"Exit.name:missing"});
    ASSERT_EQ(entrance.rules.size(), 2u);
    EXPECT_EQ(entrance.rules[0].target, "g");
    EXPECT_EQ(entrance.rules[0].line, 6);
    EXPECT_EQ(Problems(entrance.rules[1].problems), std::vector<std::string>{"target:missing"});
    EXPECT_TRUE(file.objects[1].exits.empty());

    const LevelObject& unknown = file.objects[2];
    EXPECT_FALSE(unknown.known);
    EXPECT_EQ(Problems(unknown.problems), (std::vector<std::string>{"x:missing", "y:missing"}));
    ASSERT_EQ(unknown.rules.size(), 1u);
    EXPECT_EQ(unknown.rules[0].content, "Go");
}

TEST(ReadLevelFile, FailsOnWrongRootsAndBrokenFilesNamingTheFile) {
    TempDir dir;
    LevelFile file;
    std::string error;

    for (const char* root : {"<velloranlevel/>", "<Level><VelloranLevel/></Level>"}) {
        SCOPED_TRACE(root);
        const std::string path = WriteLevel(dir, std::string("<?xml version=\"1.0\"?>\n") + root);
        EXPECT_FALSE(ReadLevelFile(path, file, error));
        EXPECT_NE(error.find(path), std::string::npos) << error;
        EXPECT_NE(error.find(file.rootName), std::string::npos) << error;
        EXPECT_EQ(file.errorLine, 2);
    }
    EXPECT_EQ(file.rootName, "Level");

    // tinyxml2 blames the element left open.
    const std::string broken = WriteLevel(dir, "<VelloranLevel>\n<Objects>\n</VelloranLevel>\n");
    EXPECT_FALSE(ReadLevelFile(broken, file, error));
    EXPECT_EQ(error.rfind(broken + ": Error=XML_ERROR_MISMATCHED_ELEMENT", 0), 0u) << error;
    EXPECT_EQ(file.errorLine, 2);

    EXPECT_FALSE(ReadLevelFile(dir.File("missing.xml"), file, error));
    EXPECT_EQ(error, dir.File("missing.xml") + ": cannot open file");
    EXPECT_FALSE(ReadLevelFile("/dev/zero", file, error));
    EXPECT_EQ(error, "/dev/zero: file is larger than 4 MiB, too large for a level");
}

TEST(ReadLevelFile, RefusesMoreTracksAndObjectsThanALevelMayHold) {
    TempDir dir;
    const auto level = [&](size_t balls) {
        std::string text = "<VelloranLevel><Tracks><Track/></Tracks><Objects>\n";
        for (size_t i = 1; i < balls; ++i) text += "<Ball/>";
        return WriteLevel(dir, text + "</Objects></VelloranLevel>");
    };
    LevelFile file;
    std::string error;
    EXPECT_TRUE(ReadLevelFile(level(level_limits::kMaxElements), file, error)) << error;
    const std::string tooMany = level(level_limits::kMaxElements + 1);
    EXPECT_FALSE(ReadLevelFile(tooMany, file, error));
    EXPECT_EQ(error, tooMany + ": holds 4001 tracks and objects; a level may hold at most 4000");
}

TEST(ObjectKinds, EveryOwnAttributeIsReadIntoItsField) {
    // A table entry the reader does not know would stay 0.
    for (const ObjectKind& kind : ObjectKinds()) {
        SCOPED_TRACE(kind.element);
        std::string element = std::string("<") + kind.element + " name=\"n\" x=\"0\" y=\"0\" radius=\"1\"";
        for (const char* attribute : kind.attributes) element += std::string(" ") + attribute + "=\"7\"";
        const LevelFile file = ReadGood("<VelloranLevel><Objects>" + element + "/></Objects></VelloranLevel>");
        ASSERT_EQ(file.objects.size(), 1u);
        const LevelObject& o = file.objects[0];
        EXPECT_TRUE(o.known && o.problems.empty());
        const float sum = o.mass + o.health + o.force + o.speed + o.initialAngle + o.quota + float(o.count);
        EXPECT_EQ(sum, 7.0f * float(kind.attributes.size()));
        EXPECT_EQ(FindObjectKind(kind.element), &kind);
    }
    EXPECT_EQ(ObjectKinds().size(), 12u);
    EXPECT_EQ(FindObjectKind("ball"), nullptr);
}

}  // namespace
