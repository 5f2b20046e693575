// A machine with no sound card and no sound server: the game still starts, its sounds still
// play, take their time and finish; nothing is heard. No sound driver is allowed here.
#include <gtest/gtest.h>
#include <stdlib.h>

#include "resources/resource_manager.h"
#include "sound/sound.h"
#include "sound/sound_system.h"
#include "tests/support/files.h"
#include "tests/support/wav_file.h"

namespace {

// Before OpenAL's first call, as it reads its settings once.
const bool kNoDriver = setenv("ALSOFT_DRIVERS", "no-such-driver", 1) == 0;

class Silent : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(kNoDriver);
        WriteToneWav(game.File("Media/tick.wav"), 1, 0.15);
        WriteToneWav(game.File("Media/wide.wav"), 2, 0.1);
        resources = std::make_unique<ResourceManager>(game.File(""));
        sound = std::make_unique<SoundSystem>();
    }
    void TearDown() override { sound.reset(); }

    TempDir game;
    std::unique_ptr<ResourceManager> resources;
    std::unique_ptr<SoundSystem> sound;
};

TEST_F(Silent, StartsWithOneLineAndSoundsStillPlayForTheirLength) {
    ::testing::internal::CaptureStderr();
    ASSERT_TRUE(sound->Startup(*resources));
    const std::string said = ::testing::internal::GetCapturedStderr();
    EXPECT_TRUE(sound->IsSilent());
    EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 1) << said;
    EXPECT_NE(said.find("plays silently"), std::string::npos) << said;

    auto& tick = dynamic_cast<Sound3D&>(*resources->Get(ResourceSound3D, "tick"));
    EXPECT_EQ(tick.Play({3, 4, 0}, {0, 0, 0}, 0), 1u);
    EXPECT_EQ(tick.Play({3, 4, 0}, {0, 0, 0}, 0), 2u);
    sound->Advance(0.1);
    EXPECT_EQ(tick.CountPlaying(), 2);
    sound->Advance(0.1);
    EXPECT_EQ(tick.CountPlaying(), 0) << "0.15 s of sound is over after 0.2 s";
    EXPECT_EQ(tick.Play({3, 4, 0}, {0, 0, 0}, 0), 3u);
    EXPECT_EQ(tick.Slot(1), nullptr) << "the idle copy was dropped";
}

TEST_F(Silent, APositionalSoundMustBeMonoAndAMissingOneIsNotThere) {
    ASSERT_TRUE(sound->Startup(*resources));
    ::testing::internal::CaptureStderr();
    auto& placed = dynamic_cast<Sound3D&>(*resources->Get(ResourceSound3D, "wide"));
    EXPECT_FALSE(placed.IsLoaded());
    EXPECT_EQ(placed.Play({0, 0, 0}, {0, 0, 0}, 0), 0u);
    EXPECT_EQ(placed.Play({0, 0, 0}, {0, 0, 0}, 0), 0u);
    const std::string said = ::testing::internal::GetCapturedStderr();
    EXPECT_EQ(said, "sound: " + game.File("Media/wide.wav") + ": a positional sound must be mono, this one has 2 "
                                                              "channels\n")
        << "said once, however often it is tried";

    auto& plain = dynamic_cast<SoundSimple&>(*resources->Get(ResourceSound, "wide"));
    EXPECT_TRUE(plain.IsLoaded());
    EXPECT_NE(plain.Play(-1500), 0u);
    EXPECT_EQ(resources->Get(ResourceSound3D, "nothing"), nullptr);
}

TEST_F(Silent, EveryPlayIsAUseThatBringsAnUnloadedSoundBack) {
    ASSERT_TRUE(sound->Startup(*resources));
    auto& tick = dynamic_cast<SoundSimple&>(*resources->Get(ResourceSound, "tick"));
    const int32_t stamp = tick.LastUse();
    tick.Discard();
    EXPECT_FALSE(tick.IsLoaded());
    EXPECT_EQ(resources->Used(), 0);
    EXPECT_NE(tick.Play(0), 0u);
    EXPECT_TRUE(tick.IsLoaded());
    EXPECT_GE(tick.LastUse(), stamp);
    EXPECT_EQ(resources->Used(), tick.Size());
}

}  // namespace
