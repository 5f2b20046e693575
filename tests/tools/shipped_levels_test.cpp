// The levels the game ships: each one won by its solution in solutions/, lint-clean, and
// between them every object kind, event and message content of the game in use.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <set>

#include "level/level_file.h"
#include "level/object_kinds.h"
#include "tests/support/tool_run.h"

using nlohmann::json;
namespace fs = std::filesystem;

namespace {

const std::string kTool = VELLORAN_GAME_DIR "/velloran-tool ";
const fs::path kMedia = fs::path(VELLORAN_GAME_DIR) / "Media";
const fs::path kSolutions = fs::path(VELLORAN_SOURCE_DIR) / "solutions";

std::vector<fs::path> ShippedLevels() {
    std::vector<fs::path> levels;
    for (const fs::directory_entry& entry : fs::directory_iterator(kMedia))
        if (entry.is_regular_file() && entry.path().extension() == ".lvl") levels.push_back(entry.path());
    std::sort(levels.begin(), levels.end());
    return levels;
}

TEST(ShippedLevels, EachIsWonByItsSolutionAndLintsClean) {
    const std::vector<fs::path> levels = ShippedLevels();
    EXPECT_GE(levels.size(), 12u);
    for (const fs::path& level : levels) {
        const std::string name = level.stem().string();
        const std::string relative = "Media/" + level.filename().string();
        const fs::path solution = kSolutions / (name + ".input");
        ASSERT_TRUE(fs::exists(solution)) << name << ": no " << solution;

        const ToolRun played = Shell(kTool + "simulate " + relative + " --root " + VELLORAN_GAME_DIR + " --input " +
                                     Quoted(solution.string()) + " 2>&1");
        ASSERT_EQ(played.exitCode, 0) << name << ": " << played.out.substr(0, 400);
        const json report = json::parse(played.out);
        EXPECT_EQ(report["won"], true) << name << " is not won by its solution: collected " << report["collected"]
                                       << " of " << report["ballCount"] << ", lost at " << report["lostAtFrame"];
        EXPECT_EQ(report["errors"], json::array()) << name;
        EXPECT_EQ(report["switchedOff"], json::array()) << name;

        const ToolRun linted = Shell(kTool + "lint " + relative + " --root " + VELLORAN_GAME_DIR + " 2>&1");
        EXPECT_EQ(linted.exitCode, 0) << name;
        EXPECT_EQ(json::parse(linted.out, nullptr, false), json::parse(R"({"ok": true, "problems": []})"))
            << name << ": " << linted.out;
    }
}

TEST(ShippedLevels, UseEveryObjectKindEventAndContentBetweenThem) {
    std::set<std::string> kinds, events, contents;
    for (const fs::path& level : ShippedLevels()) {
        LevelFile file;
        std::string error;
        ASSERT_TRUE(ReadLevelFile(level.string(), file, error)) << error;
        EXPECT_NE(file.name, "UnnamedLevel") << level;
        EXPECT_FALSE(file.description.empty()) << level;
        for (const LevelObject& object : file.objects) {
            kinds.insert(object.kind);
            for (const LevelRule& rule : object.rules) {
                events.insert(rule.event);
                contents.insert(rule.content.substr(0, rule.content.find(' ')));
            }
        }
    }
    for (const ObjectKind& kind : ObjectKinds()) {
        EXPECT_TRUE(kinds.count(kind.element)) << "no level has a " << kind.element;
        for (const char* event : kind.events) EXPECT_TRUE(events.count(event)) << "no rule fires on " << event;
        for (const char* content : kind.contents) EXPECT_TRUE(contents.count(content)) << "no rule sends " << content;
    }
    EXPECT_TRUE(events.count("Exit")) << "no rule fires on a teleporter's Exit";
}

}  // namespace
