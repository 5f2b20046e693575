#pragma once
// Levels written in a test, loaded into the same headless game the simulator plays, and
// stepped frame by frame at 1/60 s.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <memory>
#include <string>
#include <vector>

#include "level/level.h"
#include "objects/game_object.h"
#include "tests/support/level_media.h"
#include "level/headless_game.h"

constexpr uint32_t kLeft = 1u << ActionTurnLeft;
constexpr uint32_t kRight = 1u << ActionTurnRight;
constexpr uint32_t kZoom = 1u << ActionZoomOut;
constexpr uint32_t kNext = 1u << ActionNextBall;
constexpr uint32_t kNudge = 1u << ActionNudge;

// The floor track most test levels stand on: its top is y = 0.
inline const char* kFloorTrack =
    R"(<Tracks><Track name="floor" x="0" y="0" collisionModel="floor.3DS" renderModel="floor.3DS"/></Tracks>)";

class LevelTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        folder = std::filesystem::temp_directory_path() / ("velloran-level-" + std::to_string(getpid()));
        std::filesystem::remove_all(folder);
        WriteLevelMedia(folder);
        std::filesystem::current_path(folder);
    }
    static void TearDownTestSuite() {
        std::filesystem::current_path(std::filesystem::temp_directory_path());
        std::filesystem::remove_all(folder);
    }

    // Writes a level of these objects (and tracks) and loads it.
    bool Load(const std::string& objects, const std::string& tracks = kFloorTrack, const std::string& info = "") {
        std::ofstream(folder / "test.lvl") << "<VelloranLevel>" << info << tracks << "<Objects>" << objects
                                           << "</Objects></VelloranLevel>";
        return game->Load("test.lvl");
    }

    void Run(int frames, uint32_t actions = 0) {
        for (int i = 0; i < frames; ++i) game->PlayFrame(actions);
    }

    // Frames until the predicate holds, at most `limit`; the frames run, or -1.
    template <class Predicate>
    int RunUntil(Predicate done, int limit = 1200) {
        for (int i = 0; i < limit; ++i) {
            if (done()) return i;
            game->PlayFrame(0);
        }
        return done() ? limit : -1;
    }

    Level& level() { return game->GetLevel(); }

    GameObject* Named(const std::string& name) {
        auto found = level().FindObjectsByName(name);
        return found.empty() ? nullptr : found.front();
    }

    // The names of the objects that raised the event, in order.
    std::vector<std::string> Raised(const std::string& event) const {
        std::vector<std::string> names;
        for (const auto& e : game->events)
            if (e.text == event) names.push_back(e.object);
        return names;
    }
    int Count(const std::string& event) const { return int(Raised(event).size()); }

    static inline std::filesystem::path folder;
    std::unique_ptr<HeadlessGame> game = std::make_unique<HeadlessGame>(7);
};

inline std::string BallXml(const std::string& name, float x, float y) {
    std::ostringstream xml;
    xml << "<Ball name=\"" << name << "\" x=\"" << x << "\" y=\"" << y << "\" radius=\"1\" mass=\"1\" health=\"100\"/>";
    return xml.str();
}

inline std::string GoalXml(float x, float y, const std::string& quota = "1") {
    std::ostringstream xml;
    xml << "<Goal name=\"goal\" x=\"" << x << "\" y=\"" << y << "\" radius=\"3\" quota=\"" << quota << "\"/>";
    return xml.str();
}
