// The sound system heard through OpenAL's file-writing output: what the player would hear,
// with no sound card. Each test opens the output afresh, which starts the file again.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <chrono>
#include <cmath>
#include <thread>

#include "engine/level_sound_bridge.h"
#include "objects/actor_group.h"
#include "objects/contact_sounds.h"
#include "resources/resource_manager.h"
#include "sound/sound.h"
#include "sound/sound_system.h"
#include "sound/sound_volume.h"
#include "tests/sound/mix_file.h"
#include "tests/support/files.h"
#include "tests/support/wav_file.h"

namespace {

// OpenAL reads its settings once, before the first device: every device this program opens
// writes to one file of its own.
struct WaveOutput {
    std::filesystem::path folder;
    std::string file;
    WaveOutput() {
        folder = std::filesystem::temp_directory_path() / ("velloran-mix-" + std::to_string(getpid()));
        std::filesystem::create_directories(folder);
        file = (folder / "heard.wav").string();
        const std::string conf = (folder / "openal.conf").string();
        WriteText(conf, "[wave]\nfile=" + file + "\n");
        setenv("ALSOFT_CONF", conf.c_str(), 1);
        setenv("ALSOFT_DRIVERS", "wave", 1);
    }
    ~WaveOutput() {
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }
};
const WaveOutput output;

// The game's own Media, and a folder of test tones beside it.
class Heard : public ::testing::Test {
protected:
    void SetUp() override { Open(VELLORAN_GAME_DIR); }

    void Open(const std::string& gameFolder) {
        sound.reset();
        resources = std::make_unique<ResourceManager>(gameFolder);
        sound = std::make_unique<SoundSystem>();
        ASSERT_TRUE(sound->Startup(*resources));
        ASSERT_FALSE(sound->IsSilent()) << "the file-writing output is a real output";
    }
    // Closing the output finishes the file.
    Mix Close() {
        sound.reset();
        return ReadMix(output.file);
    }
    // Waits, in real time since that is how the output mixes, until the sound has played this
    // far or has finished.
    static void WaitFor(const Sound& played, float seconds) {
        const auto giveUp = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        while (played.CountPlaying() > 0 && played.Slot(0)->SecondsPlayed() < seconds) {
            ASSERT_LT(std::chrono::steady_clock::now(), giveUp) << "the output stopped mixing";
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
    }
    Sound3D& Positional(const std::string& name) {
        auto* found = dynamic_cast<Sound3D*>(resources->Get(ResourceSound3D, name));
        EXPECT_NE(found, nullptr) << name;
        return *found;
    }
    float HeardAt(const std::string& name, const Vector3& position, int32_t volume) {
        Sound3D& played = Positional(name);
        EXPECT_NE(played.Play(position, {0, 0, 0}, volume), 0u);
        WaitFor(played, 0.2f);
        return Close().Peak();
    }

    std::unique_ptr<ResourceManager> resources;
    std::unique_ptr<SoundSystem> sound;
};

TEST_F(Heard, ABumperAtFullVolumeIsLouderThanASoftTouchOfTheTrack) {
    const Vector3 ball(4, -3, 0);
    LevelSoundBridge bridge(*resources);
    const ContactSound bumper = ChooseContactSound(GroupBumper, {0, 1, 0});
    bridge.PlayContactSound(bumper.name, ball, bumper.volume);
    WaitFor(Positional(bumper.name), 0.2f);
    const float gong = Close().Peak();

    Open(VELLORAN_GAME_DIR);
    LevelSoundBridge again(*resources);
    const ContactSound touch = ChooseContactSound(GroupTrack, {0, 4, 0});
    EXPECT_EQ(touch.volume, -5000);
    again.PlayContactSound(touch.name, ball, touch.volume);
    WaitFor(Positional(touch.name), 1.0f);
    const float claves = Close().Peak();

    EXPECT_GT(gong, 0.1f);
    EXPECT_GT(claves, 0.0f) << "quiet, not silent";
    EXPECT_LT(claves, gong / 50) << "-50 dB against full loudness";
}

TEST_F(Heard, VolumesAreHundredthsOfADecibelAndDistanceFallsOffBeyondTen) {
    const float near = HeardAt("claves", {6, 0, 0}, 0);
    Open(VELLORAN_GAME_DIR);
    const float quieter = HeardAt("claves", {6, 0, 0}, -2000);
    Open(VELLORAN_GAME_DIR);
    const float far = HeardAt("claves", {50, 0, 0}, 0);
    Open(VELLORAN_GAME_DIR);
    const float beyond = HeardAt("claves", {0, 501, 0}, 0);

    ASSERT_GT(near, 0.1f);
    EXPECT_NEAR(quieter / near, GainOfVolume(-2000), 0.01) << "-20 dB is a tenth";
    EXPECT_NEAR(GainOfVolume(-2000), 0.1, 1e-6);
    EXPECT_NEAR(far / near, 10.0 / 50.0, 0.02) << "full within 10, then 10 / distance";
    EXPECT_EQ(beyond, 0.0f) << "silent beyond 500";
}

TEST_F(Heard, EightCopiesOfASoundPlayAtOnceAndIdsCountFromOneAcrossSounds) {
    Sound3D& gong = Positional("oriental_gong");
    std::vector<uint32_t> ids;
    for (int i = 0; i < 9; ++i) ids.push_back(gong.Play({0, 0, 0}, {0, 0, 0}, -3000));
    EXPECT_EQ(ids, (std::vector<uint32_t>{1, 2, 3, 4, 5, 6, 7, 8, 0}));
    EXPECT_EQ(gong.CountPlaying(), 8);
    EXPECT_EQ(Positional("claves").Play({0, 0, 0}, {0, 0, 0}, -3000), 9u) << "one count for every sound";

    gong.StopAll();
    EXPECT_EQ(gong.CountPlaying(), 0);
    EXPECT_NE(gong.Slot(0), nullptr) << "the primary stays";
    EXPECT_EQ(gong.Slot(1), nullptr) << "the copies go";
    EXPECT_EQ(gong.Play({0, 0, 0}, {0, 0, 0}, -3000), 10u) << "the primary plays again, with a new id";
    gong.ReleaseAll();
    EXPECT_EQ(gong.Play({0, 0, 0}, {0, 0, 0}, -3000), 0u) << "released: nothing to play until it loads again";
}

TEST_F(Heard, TheMusicStartsAgainOnceItHasRunOutAndStopsWithTheLevel) {
    TempDir game;
    WriteToneWav(game.File("Media/audiotrack1.wav"), 2, 0.1);
    Open(game.File(""));
    LevelSoundBridge bridge(*resources);
    EXPECT_FALSE(bridge.PlayMusic("no_such_track", -2500));
    ASSERT_TRUE(bridge.PlayMusic("audiotrack1", -2500));
    auto& music = dynamic_cast<SoundSimple&>(*resources->Get(ResourceSound, "audiotrack1"));
    EXPECT_EQ(music.CountPlaying(), 1);
    bridge.RepeatMusic(-1500);
    EXPECT_NEAR(music.Slot(0)->Gain(), GainOfVolume(-2500), 1e-6) << "still playing: not started again";

    WaitFor(music, 1.0f);
    EXPECT_EQ(music.CountPlaying(), 0);
    bridge.RepeatMusic(-1500);
    EXPECT_EQ(music.CountPlaying(), 1);
    EXPECT_NEAR(music.Slot(0)->Gain(), GainOfVolume(-1500), 1e-6);
    WaitFor(music, 0.05f);
    bridge.StopMusic();
    EXPECT_EQ(music.CountPlaying(), 0);
    EXPECT_NEAR(Close().Peak(), 0.5 * GainOfVolume(-1500), 0.005) << "a tone of half scale, 15 dB down";
}

}  // namespace
