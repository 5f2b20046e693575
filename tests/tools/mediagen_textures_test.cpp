// The level textures and dialogue panels, checked the way the game will sample them.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "tools/mediagen/dialogues.h"
#include "tools/mediagen/level_textures.h"
#include "tools/mediagen/media_error.h"
#include "tools/mediagen/media_gen.h"

using namespace mediagen;

namespace {

int Diff(const uint8_t* a, const uint8_t* b) {
    return std::abs(a[0] - b[0]) + std::abs(a[1] - b[1]) + std::abs(a[2] - b[2]);
}

TEST(MediagenSmoke, FramesGrowTowardsFrameFifteenInTheCellsTheGameLooksUp) {
    const Picture atlas = MakeSmokeAtlas();
    ASSERT_EQ(atlas.width, 256);
    ASSERT_EQ(atlas.height, 256);
    ASSERT_EQ(atlas.channels, 4);
    int previous = 0;
    for (int frame = 0; frame < 16; ++frame) {
        // U = 0.75 - column / 4 and V = row / 4, with V = 0 at the first stored row.
        const int x0 = int((0.75 - (frame % 4) * 0.25) * 256), y0 = (frame / 4) * 64;
        int area = 0;
        for (int y = 0; y < 64; ++y) {
            for (int x = 0; x < 64; ++x) {
                const uint8_t* p = atlas.Pixel(x0 + x, y0 + y);
                const bool edge = x == 0 || y == 0 || x == 63 || y == 63;
                if (edge) {
                    EXPECT_EQ(p[3], 0) << "frame " << frame << " bleeds into its neighbour";
                }
                if (p[3] == 0) {
                    EXPECT_EQ(p[0] | p[1] | p[2], 0);  // transparent black
                } else {
                    EXPECT_EQ(p[0] & p[1] & p[2], 255);  // white smoke
                    ++area;
                }
            }
        }
        EXPECT_GT(area, previous) << "frame " << frame;
        previous = area;
    }
}

TEST(MediagenSky, FacesDifferAndMeetWithoutSeams) {
    std::vector<Picture> faces;
    for (int face = 0; face < 6; ++face) faces.push_back(MakeSkyFace(face));
    for (int a = 0; a < 6; ++a) {
        EXPECT_EQ(faces[a].width, 256);
        EXPECT_EQ(faces[a].channels, 3);
        for (int b = a + 1; b < 6; ++b) EXPECT_NE(faces[a].pixels, faces[b].pixels) << kSkyFaces[a] << kSkyFaces[b];
    }
    // Up is blue, down is dull; the side faces store the sky's top first.
    EXPECT_GT(faces[2].Pixel(128, 128)[2] - faces[2].Pixel(128, 128)[0], 80);
    EXPECT_LT(faces[3].Pixel(128, 128)[2], 120);
    for (int side : {0, 1, 4, 5}) EXPECT_GT(faces[side].Pixel(128, 0)[2] - faces[side].Pixel(128, 0)[0], 60);
    // +x's left edge and +z's right edge both look towards (1, y, 1).
    for (int row = 0; row < 256; row += 15) EXPECT_LE(Diff(faces[0].Pixel(0, row), faces[4].Pixel(255, row)), 6) << row;
    // +x's top edge meets +y's right edge.
    for (int x = 0; x < 256; x += 15) EXPECT_LE(Diff(faces[0].Pixel(x, 0), faces[2].Pixel(255, 255 - x)), 6) << x;
}

TEST(MediagenTrackTexture, TilesAcrossItsEdges) {
    const Picture stone = MakeTrackTexture();
    ASSERT_EQ(stone.channels, 3);
    long wrap = 0, inside = 0;
    for (int i = 0; i < 256; ++i) {
        wrap += Diff(stone.Pixel(255, i), stone.Pixel(0, i)) + Diff(stone.Pixel(i, 255), stone.Pixel(i, 0));
        inside += Diff(stone.Pixel(127, i), stone.Pixel(128, i)) + Diff(stone.Pixel(i, 127), stone.Pixel(i, 128));
    }
    // The joint between the last and first stone looks like the one in the middle.
    EXPECT_LT(std::abs(wrap - inside), inside / 2 + 256);
}

TEST(MediagenDialogue, APanelWithTheTitleAtTheTopAsTheGameDrawsIt) {
    const FontSet fonts = SystemFonts();
    const SplashFonts text{fonts.sans, fonts.sansBold};
    const SplashSource source = ParseDialogue("title: Time is up\nalign: centre\n\nToo few balls.\n", "d.txt");
    EXPECT_EQ(source.footer, "");
    const Picture panel = RenderDialogue(source, text, "d.txt");
    ASSERT_EQ(panel.width, kDialogueWidth);
    ASSERT_EQ(panel.height, kDialogueHeight);
    ASSERT_EQ(panel.channels, 4);

    EXPECT_EQ(panel.Pixel(0, 0)[3], 0);  // rounded corners
    EXPECT_EQ(panel.Pixel(511, 255)[3], 0);
    const int see = panel.Pixel(20, 128)[3];
    EXPECT_GT(see, 120);  // see-through, but dark enough to read on
    EXPECT_LT(see, 240);
    // Opaque white title ink only in the last stored quarter, the top of the panel on screen.
    auto titleInk = [&](int from, int to) {
        int count = 0;
        for (int row = from; row < to; ++row) {
            for (int x = 0; x < panel.width; ++x) {
                const uint8_t* p = panel.Pixel(x, row);
                count += p[3] == 255 && p[0] > 240 && p[1] > 240 && p[2] > 240;
            }
        }
        return count;
    };
    EXPECT_GT(titleInk(192, 256), 300);
    EXPECT_EQ(titleInk(0, 160), 0);

    std::string tooLong = "title: T\n\n";
    for (int i = 0; i < 12; ++i) tooLong += "A line of text\n";
    EXPECT_THROW(RenderDialogue(ParseDialogue(tooLong, "long.txt"), text, "long.txt"), MediaError);
    try {
        RenderDialogue(ParseDialogue(tooLong, "long.txt"), text, "long.txt");
    } catch (const MediaError& e) {
        EXPECT_EQ(std::string(e.what()).rfind("long.txt: ", 0), 0u);
    }
    EXPECT_THROW(ParseSplash("title: T\n\nbody\n", "s.txt"), MediaError);  // splashes still need a footer
}

}  // namespace
