// The shipped level sources, read with the game's own reader: every object known, and nothing
// placed inside the track or another object.
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

// Every object of a known kind, named once, and clear of the track and of the others. (That
// the files are complete and their names and sizes agree is lint's to say.)
void CheckLayout(const LevelFile& level) {
    ASSERT_EQ(level.tracks.size(), 1u);
    const LevelTrack& track = level.tracks[0];
    const TrackSource source = ReadTrack(kAssets / "tracks" / (fs::path(track.collisionModel).stem().string() + ".track"));
    std::set<std::string> names;
    for (const LevelObject& object : level.objects) {
        SCOPED_TRACE(object.kind + " " + object.name + " on line " + std::to_string(object.line));
        ASSERT_TRUE(object.known);
        EXPECT_TRUE(names.insert(object.name).second) << "name used twice";
        const double reach = kReach.at(object.kind);
        const Point2 at{object.x - track.x, object.y - track.y};
        for (const auto& piece : source.pieces) EXPECT_GT(DistanceToOutline(at, piece), reach);
        for (const LevelObject& other : level.objects) {
            if (&other == &object) break;
            EXPECT_GT(std::hypot(object.x - other.x, object.y - other.y), reach + kReach.at(other.kind))
                << "overlaps " << other.name;
        }
    }
}

TEST(ShippedLevels, AreLaidOutCleanlyAndTheBenchHoldsEveryKind) {
    const LevelFile intro = Read("intro.lvl");
    EXPECT_EQ(intro.tracks.at(0).collisionModel, "intro_track.3DS");
    CheckLayout(intro);

    const LevelFile bench = Read("../benchmarks/bench.lvl");
    EXPECT_EQ(bench.tracks.at(0).collisionModel, "bench_track.3DS");
    CheckLayout(bench);
    std::map<std::string, int> census;
    for (const LevelObject& object : bench.objects) {
        ++census[object.kind];
        if (object.kind == "Goal") {
            EXPECT_FLOAT_EQ(object.quota, 1.0f) << "never won early";
        }
    }
    EXPECT_EQ(census.size(), ObjectKinds().size());
    EXPECT_EQ(census.at("Ball"), 10);
    EXPECT_EQ(bench.objects.size(), 40u);
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
