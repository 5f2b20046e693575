#pragma once
// `velloran-tool render` run on small levels in a fresh folder, and checks on its pictures
// that hold whatever else the game comes to draw: the dialogues are two-coloured pictures
// no scene contains, the text is drawn with a font of solid white blocks.
#include <gtest/gtest.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <string>

#include "tests/support/files.h"
#include "tests/support/level_media.h"
#include "tests/support/png_picture.h"
#include "tests/support/tga_bytes.h"
#include "tests/support/tool_run.h"

using nlohmann::json;

// A ball resting on the floor under the camera, another ten units to its right, one far off
// to the left and the goal nine units above it. All three balls are needed: play goes on.
inline const char* kLookLevel = R"(<VelloranLevel>
  <LevelInfo name="Look" description="a ball under the camera"/>
  <Tracks><Track name="floor" x="0" y="0" collisionModel="floor.3DS" renderModel="floor.3DS"/></Tracks>
  <Objects>
    <Ball name="hero" x="20" y="1" radius="1" mass="1" health="100"/>
    <Ball name="spare" x="30" y="1" radius="1" mass="1" health="100"/>
    <Ball name="far" x="-90" y="1" radius="1" mass="1" health="100"/>
    <Goal name="goal" x="20" y="10" radius="3" quota="1"/>
  </Objects>
</VelloranLevel>
)";

// One ball dropped into the goal: won at once, over five seconds later.
inline const char* kDropLevel = R"(<VelloranLevel>
  <LevelInfo name="Drop" description="one ball into the goal"/>
  <Tracks><Track name="floor" x="0" y="0" collisionModel="floor.3DS" renderModel="floor.3DS"/></Tracks>
  <Objects>
    <Ball name="hero" x="20" y="6" radius="1" mass="1" health="100"/>
    <Ball name="spare" x="-40" y="1" radius="1" mass="1" health="100"/>
    <Goal name="goal" x="20" y="3" radius="3" quota="0.5"/>
  </Objects>
</VelloranLevel>
)";

// The dialogues' pictures: left half one colour, right half another.
inline const Pixel kGoalLeft{255, 0, 0}, kGoalRight{0, 0, 255};
inline const Pixel kControlsLeft{255, 255, 0}, kControlsRight{255, 0, 255};
inline const Pixel kWinLeft{0, 255, 255}, kWinRight{255, 128, 0};

// A rectangle of the screen in fractions of its width and height, from the top left.
struct ScreenBox {
    float x, y, width, height;
};
inline constexpr ScreenBox kGoalDialogue{0.1f, 0.1f, 0.4f, 0.2f};
inline constexpr ScreenBox kControlsDialogue{0.5f, 0.7f, 0.4f, 0.2f};
inline constexpr ScreenBox kWinDialogue{0.1f, 0.25f, 0.8f, 0.4f};
// The time line stands at the top left, the quota line at the bottom left; the time line
// ("Time: 180.0") ends before half the width.
inline constexpr ScreenBox kTimeLine{0.0f, 0.0f, 0.5f, 0.05f};
inline constexpr ScreenBox kRightOfTimeLine{0.65f, 0.0f, 0.35f, 0.05f};
inline constexpr ScreenBox kQuotaLine{0.0f, 0.9f, 0.6f, 0.05f};

inline void WriteHalves(const std::filesystem::path& path, Pixel left, Pixel right) {
    WriteTga32(path, 16, 16, [&](int, int column) {
        const Pixel p = column < 8 ? left : right;
        return Bgra{uint8_t(p.b), uint8_t(p.g), uint8_t(p.r), 255};
    });
}

// The mean colour of the 9 x 9 pixels around a point given in fractions of the picture.
inline Pixel MeanAround(const PngPicture& picture, float fx, float fy) {
    const int cx = int(fx * float(picture.width)), cy = int(fy * float(picture.height));
    int r = 0, g = 0, b = 0, n = 0;
    for (int y = std::max(cy - 4, 0); y <= std::min(cy + 4, picture.height - 1); ++y)
        for (int x = std::max(cx - 4, 0); x <= std::min(cx + 4, picture.width - 1); ++x, ++n) {
            const Pixel p = picture.At(x, y);
            r += p.r, g += p.g, b += p.b;
        }
    return n ? Pixel{r / n, g / n, b / n} : Pixel{-1, -1, -1};
}

inline bool Near(Pixel a, Pixel b) {
    constexpr int kTolerance = 40;
    return std::abs(a.r - b.r) <= kTolerance && std::abs(a.g - b.g) <= kTolerance && std::abs(a.b - b.b) <= kTolerance;
}

// Whether the box shows a two-coloured dialogue: its left quarter one colour, its right the other.
inline bool ShowsDialogue(const PngPicture& picture, ScreenBox box, Pixel left, Pixel right) {
    const float middle = box.y + box.height / 2;
    return Near(MeanAround(picture, box.x + box.width / 4, middle), left) &&
           Near(MeanAround(picture, box.x + box.width * 3 / 4, middle), right);
}

// Pixels in the box that are nearly white: the block font's text and nothing else here.
inline int WhitePixels(const PngPicture& picture, ScreenBox box) {
    int count = 0;
    const int x0 = int(box.x * float(picture.width)), x1 = int((box.x + box.width) * float(picture.width));
    const int y0 = int(box.y * float(picture.height)), y1 = int((box.y + box.height) * float(picture.height));
    for (int y = y0; y < y1 && y < picture.height; ++y)
        for (int x = x0; x < x1 && x < picture.width; ++x) {
            const Pixel p = picture.At(x, y);
            if (std::min({p.r, p.g, p.b}) >= 220) ++count;
        }
    return count;
}

class RenderFixture : public ::testing::Test {
protected:
    RenderFixture() {
        WriteLevelMedia(dir.File(""));
        WriteBlockFont(dir.File("Media/font.tga"));
        WriteHalves(dir.File("Media/UI_dialogue.tga"), kGoalLeft, kGoalRight);
        WriteHalves(dir.File("Media/UI_dialogue_controls.tga"), kControlsLeft, kControlsRight);
        WriteHalves(dir.File("Media/UI_dialogue_win.tga"), kWinLeft, kWinRight);
        WriteText(dir.File("look.lvl"), kLookLevel);
        WriteText(dir.File("drop.lvl"), kDropLevel);
    }

    // Renders a level of the folder into picture.png there; `prefix` goes before the command
    // (an environment to run it in).
    ToolRun Render(const std::string& arguments, const std::string& level = "look.lvl",
                   const std::string& prefix = "") {
        return Shell(prefix + VELLORAN_GAME_DIR "/velloran-tool render " + level + " --root " +
                     Quoted(dir.File("")) + " --out " + Quoted(Out()) + " " + arguments);
    }
    std::string Out() const { return dir.File("picture.png"); }

    // The picture written, checked to be the game's window size.
    PngPicture Picture() {
        PngPicture picture;
        std::string error;
        EXPECT_TRUE(ReadPng(Out(), picture, error)) << error;
        EXPECT_EQ(picture.width, 800);
        EXPECT_EQ(picture.height, 600);
        return picture;
    }

    // The first frame: both text lines and the goal dialogue, not yet the controls.
    void ExpectFirstFrame(const PngPicture& picture) {
        EXPECT_GT(WhitePixels(picture, kTimeLine), 2000) << "the time line";
        EXPECT_LT(WhitePixels(picture, kRightOfTimeLine), 50) << "only text is white";
        EXPECT_GT(WhitePixels(picture, kQuotaLine), 2000) << "the quota line";
        EXPECT_TRUE(ShowsDialogue(picture, kGoalDialogue, kGoalLeft, kGoalRight));
        EXPECT_FALSE(ShowsDialogue(picture, kControlsDialogue, kControlsLeft, kControlsRight));
    }

    static json Report(const ToolRun& run) {
        EXPECT_EQ(run.exitCode, 0) << run.out;
        return json::parse(run.out, nullptr, false);
    }

    TempDir dir;
};
