// What headless play says the game would hear: only sounds that exist and load, at most eight
// copies of one at a time, the music again once it has run out.
#include <gtest/gtest.h>

#include "level/headless_game.h"
#include "level/sound_voices.h"
#include "tests/support/files.h"
#include "tests/support/level_media.h"
#include "tests/support/wav_file.h"

namespace {

TEST(SoundVoices, OnlyLoadableSoundsStartAndAtMostEightCopiesSoundAtOnce) {
    TempDir game;
    WriteToneWav(game.File("Media/knock.wav"), 1, 0.5);
    WriteToneWav(game.File("Media/wide.wav"), 2, 0.5);
    WriteText(game.File("Media/broken.wav"), "not a sound");
    ResourceManager resources(game.File(""));
    SoundVoices voices(resources);

    EXPECT_FALSE(voices.Start(ResourceSound3D, "missing", 0));
    EXPECT_FALSE(voices.Start(ResourceSound3D, "broken", 0));
    EXPECT_FALSE(voices.Start(ResourceSound3D, "wide", 0)) << "a placed sound must be mono";
    EXPECT_TRUE(voices.Start(ResourceSound, "wide", 0)) << "a plain one need not";

    for (int i = 0; i < 8; ++i) EXPECT_TRUE(voices.Start(ResourceSound3D, "knock", 0.1 * i / 8));
    EXPECT_FALSE(voices.Start(ResourceSound3D, "knock", 0.2)) << "a ninth while eight sound";
    EXPECT_EQ(voices.CountPlaying(ResourceSound3D, "knock", 0.2), 8);
    EXPECT_EQ(voices.CountPlaying(ResourceSound, "knock", 0.2), 0) << "the plain sound is another";
    EXPECT_TRUE(voices.Start(ResourceSound3D, "knock", 0.5)) << "the first has just ended";
    EXPECT_EQ(voices.CountPlaying(ResourceSound3D, "knock", 0.5), 8);
    voices.StopAll(ResourceSound3D, "knock");
    EXPECT_EQ(voices.CountPlaying(ResourceSound3D, "knock", 0.55), 0);
}

TEST(SoundVoices, HeadlessPlayListsTheMusicAgainOnceItHasRunOut) {
    TempDir folder;
    WriteLevelMedia(folder.File(""));
    WriteToneWav(folder.File("Media/audiotrack1.wav"), 2, 0.5);
    WriteText(folder.File("Media/quiet.lvl"), "<VelloranLevel/>");
    HeadlessGame game(1, folder.File(""));
    ASSERT_TRUE(game.Load(folder.File("Media/quiet.lvl")));
    for (int frame = 0; frame < 70; ++frame) game.PlayFrame(0);

    std::vector<std::pair<int, int32_t>> music;
    for (const RecordedSound& s : game.sounds) {
        EXPECT_NE(s.name, "comet_1") << "there is no whoosh in this Media";
        if (s.name == "audiotrack1") music.emplace_back(s.frame, s.volume);
    }
    EXPECT_EQ(music, (std::vector<std::pair<int, int32_t>>{{0, -2500}, {30, -1500}, {60, -1500}}));
}

}  // namespace
