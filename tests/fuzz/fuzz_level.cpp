// Any bytes as a level file, loaded into the headless game and played for ten frames, physics
// and all, with actions that differ from input to input. A level that loads must leave every
// object with a finite position and velocity; crashes, hangs and runaway memory are caught by
// libFuzzer itself. Inputs are capped by -max_len, so a level cannot hold unbounded objects.
// The target changes the working directory, so libFuzzer must be given absolute paths.
#include <unistd.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>

#include "level/headless_game.h"
#include "objects/game_object.h"
#include "tests/fuzz/fuzz_check.h"
#include "tests/support/level_media.h"

namespace fs = std::filesystem;

namespace {

constexpr int kFrames = 10;
constexpr int kActionBits = 5;

// The game folder every input plays in, made once per process: Media/ with what levels need,
// in a fresh temporary folder that is also the working directory, since the physics keeps its
// .pmap cache files there. Removed when the process ends normally.
class GameFolder {
public:
    GameFolder() : path(fs::temp_directory_path() / ("velloran-fuzz-level-" + std::to_string(getpid()))) {
        fs::remove_all(path);
        WriteLevelMedia(path);
        Require(fs::is_regular_file(path / "Media" / "floor.3DS"), "the game folder's media is written");
        fs::current_path(path);
    }
    ~GameFolder() {
        std::error_code ignored;
        fs::current_path(fs::temp_directory_path(), ignored);
        fs::remove_all(path, ignored);
    }
    GameFolder(const GameFolder&) = delete;
    GameFolder& operator=(const GameFolder&) = delete;

    const fs::path path;
};

// Ten frames of five action bits each, the same for the same input.
uint64_t ActionsOf(const uint8_t* data, size_t size) {
    uint64_t hash = 14695981039346656037ull;
    for (size_t i = 0; i < size; ++i) hash = (hash ^ data[i]) * 1099511628211ull;
    return hash;
}

bool Finite(const Vector3& v) { return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z); }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static GameFolder folder;
    const std::string level = "fuzz.lvl";
    {
        std::ofstream out(level, std::ios::binary | std::ios::trunc);
        out.write(reinterpret_cast<const char*>(data), std::streamsize(size));
        Require(out.good(), "the input is written into the game folder");
    }

    HeadlessGame game(7, folder.path.string());
    if (!game.Load(level)) return 0;
    const uint64_t actions = ActionsOf(data, size);
    for (int frame = 0; frame < kFrames; ++frame) {
        game.PlayFrame(uint32_t(actions >> (kActionBits * frame)) & ((1u << kActionBits) - 1));
    }
    for (const auto& object : game.GetLevel().GetObjects()) {
        Require(Finite(object->GetPosition()), "every object of a level that loads keeps a finite position");
        Require(Finite(object->GetVelocity()), "every object of a level that loads keeps a finite velocity");
    }
    return 0;
}
