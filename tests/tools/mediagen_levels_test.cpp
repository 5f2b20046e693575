// The shipped level sources, read with the game's own reader: well-formed, every object known
// and sized like its class, and nothing placed inside the track or another object.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "level/level_file.h"
#include "level/object_kinds.h"
#include "tools/mediagen/class_sizes.h"
#include "tools/mediagen/level_files.h"
#include "tools/mediagen/media_error.h"
#include "tools/mediagen/track_source.h"

namespace fs = std::filesystem;
using namespace mediagen;

namespace {

const fs::path kAssets = fs::path(VELLORAN_SOURCE_DIR) / "assets";

// How far from its position each kind reaches in the plane, as levels are laid out. A door
// swings about its hinge, so it needs its whole length all round.
const std::map<std::string, double> kReach = {
    {"Ball", sizes::kBallRadius},
    {"DeadBall", sizes::kDeadBallRadius},
    {"Bumper", sizes::kBumperRadius},
    {"RevGravBumper", sizes::kBumperRadius},
    {"SpawnerBumper", sizes::kBumperRadius},
    {"FreeTurbine", sizes::kTurbineRadius},
    {"Turbine", sizes::kTurbineRadius},
    {"Peg", sizes::kPegRadius},
    {"HingedDoor", sizes::kDoorLength},
    {"TeleportEntrance", sizes::kTeleporterEntranceRadius},
    {"TeleportExit", sizes::kTeleporterExitRadius},
    {"Goal", sizes::kGoalRadius},
};

LevelFile Read(const std::string& name) {
    LevelFile file;
    std::string error;
    EXPECT_TRUE(ReadLevelFile((kAssets / "levels" / name).string(), file, error)) << error;
    return file;
}

bool Inside(const Point2& p, const std::vector<Point2>& outline) {
    bool inside = false;
    for (size_t i = 0, j = outline.size() - 1; i < outline.size(); j = i++) {
        const Point2 &a = outline[i], &b = outline[j];
        if ((a.y > p.y) != (b.y > p.y) && p.x < a.x + (p.y - a.y) * (b.x - a.x) / (b.y - a.y)) inside = !inside;
    }
    return inside;
}

double DistanceToOutline(const Point2& p, const std::vector<Point2>& outline) {
    if (Inside(p, outline)) return -1;
    double nearest = 1e30;
    for (size_t i = 0; i < outline.size(); ++i) {
        const Point2 &a = outline[i], &b = outline[(i + 1) % outline.size()];
        const double dx = b.x - a.x, dy = b.y - a.y;
        const double t = std::clamp(((p.x - a.x) * dx + (p.y - a.y) * dy) / (dx * dx + dy * dy), 0.0, 1.0);
        nearest = std::min(nearest, std::hypot(p.x - a.x - t * dx, p.y - a.y - t * dy));
    }
    return nearest;
}

// Every object known, complete, sized like its model, and clear of the track and the others.
void CheckLayout(const LevelFile& level) {
    ASSERT_EQ(level.tracks.size(), 1u);
    const LevelTrack& track = level.tracks[0];
    EXPECT_TRUE(track.problems.empty());
    EXPECT_EQ(track.collisionModel, track.renderModel);
    const std::string stem = fs::path(track.collisionModel).stem().string();
    const TrackSource source = ReadTrack(kAssets / "tracks" / (stem + ".track"));

    std::set<std::string> names;
    for (const LevelObject& object : level.objects) {
        SCOPED_TRACE(object.kind + " " + object.name + " on line " + std::to_string(object.line));
        ASSERT_TRUE(object.known);
        EXPECT_TRUE(object.problems.empty());
        EXPECT_TRUE(names.insert(object.name).second) << "name used twice";
        const double reach = kReach.at(object.kind);
        if (FindObjectKind(object.kind)->usesRadius) {
            EXPECT_FLOAT_EQ(object.radius, float(reach));
        }

        const Point2 at{object.x - track.x, object.y - track.y};
        for (const auto& piece : source.pieces) EXPECT_GT(DistanceToOutline(at, piece), reach);
        for (const LevelObject& other : level.objects) {
            if (&other == &object) break;
            EXPECT_GT(std::hypot(object.x - other.x, object.y - other.y), reach + kReach.at(other.kind))
                << "overlaps " << other.name;
        }
    }
    // Rules and teleporters only name objects that exist.
    for (const LevelObject& object : level.objects) {
        for (const LevelRule& rule : object.rules) EXPECT_EQ(names.count(rule.target), 1u) << rule.target;
        for (const std::string& exit : object.exits) EXPECT_EQ(names.count(exit), 1u) << exit;
    }
}

std::map<std::string, int> Census(const LevelFile& level) {
    std::map<std::string, int> count;
    for (const LevelObject& object : level.objects) ++count[object.kind];
    return count;
}

TEST(ShippedLevels, IntroIsLaidOutCleanly) {
    const LevelFile intro = Read("intro.lvl");
    EXPECT_EQ(intro.tracks.at(0).collisionModel, "intro_track.3DS");
    CheckLayout(intro);
}

TEST(ShippedLevels, BenchHoldsEveryKindWithoutOverlaps) {
    const LevelFile bench = Read("bench.lvl");
    EXPECT_EQ(bench.tracks.at(0).collisionModel, "bench_track.3DS");
    const std::map<std::string, int> census = Census(bench);
    EXPECT_EQ(census.at("Ball"), 10);
    int others = 0;
    for (const ObjectKind& kind : ObjectKinds()) {
        EXPECT_GT(census.count(kind.element), 0u) << kind.element;
        if (std::string(kind.element) != "Ball" && census.count(kind.element)) others += census.at(kind.element);
    }
    EXPECT_EQ(others, 30);

    std::vector<std::string> rules;
    for (const LevelObject& object : bench.objects) {
        if (object.kind == "Goal") {  // never won early
            EXPECT_FLOAT_EQ(object.quota, 1.0f);
        }
        if (object.kind == "SpawnerBumper") {
            EXPECT_EQ(object.count, 1);
        }
        if (object.kind == "TeleportEntrance") {
            EXPECT_FALSE(object.exits.empty());
        }
        for (const LevelRule& rule : object.rules) {
            rules.push_back(object.kind + " " + rule.event + " -> " + rule.target + " " + rule.content);
        }
    }
    EXPECT_NE(std::find(rules.begin(), rules.end(), "Goal Score -> gate Disable"), rules.end());
    EXPECT_NE(std::find(rules.begin(), rules.end(), "Bumper Bump -> wheel SetSpeed 2"), rules.end());
    CheckLayout(bench);
}

TEST(LevelSources, OnlyWellFormedLevelFilesAreCopied) {
    EXPECT_NO_THROW(CheckLevelText("<VelloranLevel><Objects/></VelloranLevel>", "ok.lvl"));
    auto errorOf = [](const std::string& text) {
        try {
            CheckLevelText(text, "bad.lvl");
        } catch (const MediaError& e) {
            return std::string(e.what());
        }
        return std::string("no error");
    };
    EXPECT_EQ(errorOf("<VelloranLevel>\n<Objects>\n</VelloranLevel>\n").rfind("bad.lvl:2: not well-formed XML", 0), 0u);  // the element left open
    EXPECT_EQ(errorOf("<?xml version=\"1.0\"?>\n<Level/>\n"), "bad.lvl:2: the first element is <Level>, not <VelloranLevel>");
    EXPECT_EQ(errorOf("").rfind("bad.lvl:1: ", 0), 0u);
}

}  // namespace
