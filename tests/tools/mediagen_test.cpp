// The media generator's pictures, checked the way the game will load and sample them, and a
// whole run over the shipped sources.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "formats/tga_reader.h"
#include "formats/wav_reader.h"
#include "tests/support/files.h"
#include "tools/mediagen/dialogues.h"
#include "tools/mediagen/font_sheet.h"
#include "tools/mediagen/level_textures.h"
#include "tools/mediagen/media_error.h"
#include "tools/mediagen/media_gen.h"
#include "tools/mediagen/menu_art.h"
#include "tools/mediagen/splash_screens.h"
#include "tools/mediagen/tga_writer.h"

namespace fs = std::filesystem;
using namespace mediagen;

namespace {

const fs::path kAssets = fs::path(VELLORAN_SOURCE_DIR) / "assets";

// The depth the game's own reader finds in the file, or why it refuses it.
std::string LoadedDepth(const std::vector<uint8_t>& bytes) {
    TgaImage image;
    std::string error;
    return ParseTga(bytes, "t.tga", image, error) ? std::to_string(image.depth) : error;
}

template <class Call>
std::string MediaErrorOf(Call call) {
    try {
        call();
    } catch (const MediaError& e) {
        return e.what();
    }
    return "no error";
}

int Diff(const uint8_t* a, const uint8_t* b) {
    return std::abs(a[0] - b[0]) + std::abs(a[1] - b[1]) + std::abs(a[2] - b[2]);
}

// Pixels in the stored rows [from, to) that pass the test.
template <class Test>
int CountPixels(const Picture& picture, int from, int to, Test test) {
    int count = 0;
    for (int row = from; row < to; ++row)
        for (int x = 0; x < picture.width; ++x) count += test(picture.Pixel(x, row));
    return count;
}

// Stored rows within a glyph cell that carry any ink.
std::vector<int> InkRows(const Picture& sheet, int code) {
    std::vector<int> rows;
    const int x0 = (code % 16) * kFontCellSize, y0 = (code / 16) * kFontCellSize;
    for (int y = 0; y < kFontCellSize; ++y) {
        for (int x = 0; x < kFontCellSize; ++x) {
            if (sheet.Pixel(x0 + x, y0 + y)[3] != 0) {
                rows.push_back(y);
                break;
            }
        }
    }
    return rows;
}

double MeanInkRow(const Picture& sheet, int code) {
    const std::vector<int> rows = InkRows(sheet, code);
    double sum = 0;
    for (int row : rows) sum += row;
    return rows.empty() ? -1 : sum / rows.size();
}

TEST(MediagenTga, EncodesBlueFirstAndRefusesWhatTheGameCannotLoad) {
    Picture picture(2, 1, 4);
    picture.pixels = {10, 20, 30, 40, 50, 60, 70, 80};
    const std::vector<uint8_t> bytes = EncodeTga(picture);
    EXPECT_EQ(LoadedDepth(bytes), "32");
    EXPECT_EQ(std::vector<uint8_t>(bytes.begin() + 18, bytes.end()),
              (std::vector<uint8_t>{30, 20, 10, 40, 70, 60, 50, 80}));
    EXPECT_THROW(EncodeTga(Picture(3, 4, 3)), MediaError);
    EXPECT_THROW(EncodeTga(Picture(4, 4, 1)), MediaError);
}

TEST(MediagenFontSheet, GlyphsSitInTheirCellsTheWayUpTheGameDrawsThem) {
    const Picture sheet = MakeFontSheet(SystemFonts().mono);
    ASSERT_EQ(LoadedDepth(EncodeTga(sheet)), "32");
    EXPECT_EQ(sheet.width, 512);
    EXPECT_EQ(sheet.height, 512);
    for (int code = 0; code < 256; ++code) {
        const bool printable = code >= 33 && code <= 126;
        const std::vector<int> rows = InkRows(sheet, code);
        EXPECT_EQ(!rows.empty(), printable) << "code " << code;
        // Ink touching a cell's edge would bleed into its neighbour once mipmapped.
        if (!rows.empty()) {
            EXPECT_TRUE(rows.front() >= 2 && rows.back() <= kFontCellSize - 3) << "code " << code;
        }
    }
    EXPECT_EQ(CountPixels(sheet, 0, 512, [](const uint8_t* p) { return (p[0] & p[1] & p[2]) != 255; }), 0);

    // The first stored row of a cell is the top of the on-screen glyph.
    EXPECT_GT(MeanInkRow(sheet, '_'), kFontCellSize * 0.7);
    EXPECT_LT(MeanInkRow(sheet, '^'), kFontCellSize * 0.4);
    EXPECT_LT(InkRows(sheet, 'A').front(), InkRows(sheet, 'a').front());
    EXPECT_GT(InkRows(sheet, 'g').back(), InkRows(sheet, 'A').back());
}

TEST(MediagenSplash, ParsesItsSourceAndPutsTitleAndSkyAtTheLastStoredRows) {
    const SplashSource source = ParseSplash(
        "# comment\n\ntitle: Controls\nalign: centre\nfooter: Click\n\n\n*Key:* does: this\n\nLast\n\n", "s.txt");
    EXPECT_EQ(source.title, "Controls");
    EXPECT_EQ(source.footer, "Click");
    EXPECT_EQ(source.align, SplashSource::Align::Centre);
    EXPECT_EQ(source.body, (std::vector<std::string>{"*Key:* does: this", "", "Last"}));

    const Picture splash = RenderSplash(ParseSplash("title: Top\nfooter: Bottom\n\n", "test.txt"),
                                        {SystemFonts().sans, SystemFonts().sansBold}, "test.txt");
    // Stored bottom row first: the title lies in the last quarter, the footer in the first.
    auto bright = [](const uint8_t* p) { return p[0] > 200; };
    EXPECT_GT(CountPixels(splash, 768, 1024, bright), 1000);
    EXPECT_EQ(CountPixels(splash, 256, 768, bright), 0);
    EXPECT_GT(splash.Pixel(0, splash.height - 1)[2], splash.Pixel(0, 0)[2] + 50);

    auto errorOf = [](const std::string& text) { return MediaErrorOf([&] { ParseSplash(text, "bad.txt"); }); };
    EXPECT_EQ(errorOf("title: T\ncolour: red\n"), "bad.txt:2: unknown key 'colour' (title, footer, align)");
    EXPECT_EQ(errorOf("title: T\nfooter: F\n\n*bold\n").rfind("bad.txt:4:", 0), 0u);
    EXPECT_EQ(errorOf("footer: F\n").rfind("bad.txt:", 0), 0u);
    EXPECT_EQ(errorOf("title: T\nfooter: F\nalign: right\n").rfind("bad.txt:3:", 0), 0u);
    EXPECT_EQ(errorOf("title: T\n\nbody\n").rfind("bad.txt:", 0), 0u) << "a splash needs a footer";
}

TEST(MediagenDialogue, APanelWithTheTitleAtTheTopAsTheGameDrawsIt) {
    const SplashFonts text{SystemFonts().sans, SystemFonts().sansBold};
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
    // Opaque gold title ink only in the last stored quarter, the top of the panel on screen.
    auto titleInk = [](const uint8_t* p) { return p[3] == 255 && p[0] > 240 && p[1] > 180 && p[2] < 140; };
    EXPECT_GT(CountPixels(panel, 192, 256, titleInk), 300);
    EXPECT_EQ(CountPixels(panel, 0, 160, titleInk), 0);

    // The panel is small on screen, so a short text gets bigger letters than a long one.
    auto bodyRows = [&](const std::string& body) {
        const Picture p = RenderDialogue(ParseDialogue("title: T\n\n" + body, "d.txt"), text, "d.txt");
        int rows = 0;
        for (int row = 0; row < 160; ++row) {
            bool ink = false;
            for (int x = 0; x < p.width && !ink; ++x) ink = p.Pixel(x, row)[0] > 200;
            rows += ink;
        }
        return rows;
    };
    EXPECT_GT(bodyRows("Hi\n"), bodyRows("Hi\nthere\nyou\nfour\nfive\n") / 5 + 4);

    std::string tooLong = "title: T\n\n";
    for (int i = 0; i < 12; ++i) tooLong += "A line of text\n";
    EXPECT_EQ(MediaErrorOf([&] { RenderDialogue(ParseDialogue(tooLong, "long.txt"), text, "long.txt"); })
                  .rfind("long.txt: ", 0),
              0u);
}

TEST(MediagenSmoke, FramesGrowTowardsFrameFifteenInTheCellsTheGameLooksUp) {
    const Picture atlas = MakeSmokeAtlas();
    ASSERT_EQ(atlas.width, 256);
    ASSERT_EQ(atlas.height, 256);
    ASSERT_EQ(atlas.channels, 4);
    int previous = 0;
    std::array<int, 16> brightest{};
    for (int frame = 0; frame < 16; ++frame) {
        // U = 0.75 - column / 4 and V = row / 4, with V = 0 at the first stored row.
        const int x0 = int((0.75 - (frame % 4) * 0.25) * 256), y0 = (frame / 4) * 64;
        int area = 0;
        for (int y = 0; y < 64; ++y) {
            for (int x = 0; x < 64; ++x) {
                const uint8_t* p = atlas.Pixel(x0 + x, y0 + y);
                if (x == 0 || y == 0 || x == 63 || y == 63) {
                    EXPECT_EQ(p[3], 0) << "frame " << frame << " bleeds into its neighbour";
                }
                // Grey, its colour already multiplied by its alpha, so the edge adds up to
                // nothing whether it is blended or added; transparent is black.
                EXPECT_TRUE(p[0] == p[1] && p[1] == p[2] && p[0] <= p[3]) << "frame " << frame;
                if (p[3] != 0) ++area;
                brightest[frame] = std::max(brightest[frame], int(p[0]));
            }
        }
        EXPECT_GT(area, previous) << "frame " << frame;
        previous = area;
    }
    EXPECT_GT(brightest[15], 2 * brightest[0]);  // new smoke is bright, old smoke has faded
}

// The texel the cube map samples for a direction, by the lookup rule of cube maps (major axis,
// then s and t on that face), independent of how the generator maps texels to directions.
struct CubeTexel {
    int face, x, row;
};
CubeTexel Lookup(double x, double y, double z, int size) {
    const double ax = std::abs(x), ay = std::abs(y), az = std::abs(z);
    int face;
    double sc, tc, ma;
    if (ax >= ay && ax >= az) {
        face = x > 0 ? 0 : 1, sc = x > 0 ? -z : z, tc = -y, ma = ax;
    } else if (ay >= az) {
        face = y > 0 ? 2 : 3, sc = x, tc = y > 0 ? z : -z, ma = ay;
    } else {
        face = z > 0 ? 4 : 5, sc = z > 0 ? x : -x, tc = -y, ma = az;
    }
    auto texel = [&](double c) { return std::clamp(int((c / ma + 1) / 2 * size), 0, size - 1); };
    return {face, texel(sc), texel(tc)};
}

TEST(MediagenSky, FacesDifferAndMeetWithoutSeamsAndTheTrackTextureTiles) {
    std::vector<Picture> faces;
    for (int face = 0; face < 6; ++face) faces.push_back(MakeSkyFace(face));
    const int n = kSkySize;
    for (int a = 0; a < 6; ++a) {
        EXPECT_EQ(faces[a].width, n);
        EXPECT_EQ(faces[a].channels, 3);
        for (int b = a + 1; b < 6; ++b) EXPECT_NE(faces[a].pixels, faces[b].pixels) << kSkyFaces[a] << kSkyFaces[b];
    }

    // Step off every edge texel of every face along the cube and compare it with the texel the
    // cube map finds there: across a seam the sky changes no more than between neighbours.
    long across = 0, within = 0;
    int edgeTexels = 0;
    for (int face = 0; face < 6; ++face) {
        for (int i = 0; i < n; ++i) {
            for (const auto& [x, row, dx, dy] : std::vector<std::array<int, 4>>{
                     {0, i, -1, 0}, {n - 1, i, 1, 0}, {i, 0, 0, -1}, {i, n - 1, 0, 1}}) {
                // Where texel (x, row) of this face lies on the cube, with s and t beyond it.
                const double s = 2 * (x + 0.5 + dx) / n - 1, t = 2 * (row + 0.5 + dy) / n - 1;
                const std::array<std::array<double, 3>, 6> at{{{1, -t, -s}, {-1, -t, s}, {s, 1, t},
                                                              {s, -1, -t}, {s, -t, 1}, {-s, -t, -1}}};
                const CubeTexel next = Lookup(at[face][0], at[face][1], at[face][2], n);
                EXPECT_NE(next.face, face);
                across += Diff(faces[face].Pixel(x, row), faces[next.face].Pixel(next.x, next.row));
                within += Diff(faces[face].Pixel(x, row), faces[face].Pixel(x - dx, row - dy));
                ++edgeTexels;
            }
        }
    }
    EXPECT_EQ(edgeTexels, 6 * 4 * n);
    EXPECT_LT(across, within * 1.5 + edgeTexels);

    // Overhead is a dark night blue; the face the camera looks at (-z) holds stars, small and
    // bright against what is round them.
    const Picture& up = faces[2];
    long red = 0, blue = 0;
    for (int i = 0; i < n * n; ++i) red += up.pixels[3 * i], blue += up.pixels[3 * i + 2];
    EXPECT_GT(blue, red * 2);
    EXPECT_LT(blue / (n * n), 90);
    int stars = 0;
    const Picture& ahead = faces[5];
    for (int row = 2; row < n - 2; ++row) {
        for (int x = 2; x < n - 2; ++x) {
            const uint8_t* p = ahead.Pixel(x, row);
            stars += p[0] + p[1] + p[2] > 400 && Diff(p, ahead.Pixel(x + 2, row)) > 200 && Diff(p, ahead.Pixel(x, row + 2)) > 200;
        }
    }
    EXPECT_GT(stars, 40);

    // The joint between the track texture's last and first stone looks like the one in the middle.
    const Picture stone = MakeTrackTexture();
    ASSERT_EQ(stone.channels, 3);
    long wrap = 0, inside = 0;
    for (int i = 0; i < 256; ++i) {
        wrap += Diff(stone.Pixel(255, i), stone.Pixel(0, i)) + Diff(stone.Pixel(i, 255), stone.Pixel(i, 0));
        inside += Diff(stone.Pixel(127, i), stone.Pixel(128, i)) + Diff(stone.Pixel(i, 127), stone.Pixel(i, 128));
    }
    EXPECT_LT(std::abs(wrap - inside), inside / 2 + 256);
}

TEST(MediagenRun, WritesEveryFileByteForByteTheSameEachTimeAndRewritesOnlyWhatIsDamaged) {
    TempDir dir;
    const fs::path first = dir.File("first/Media"), second = dir.File("second/Media");
    std::ostringstream progress, ignored;
    GenerateMedia(kAssets, first, SystemFonts(), progress);
    GenerateMedia(kAssets, second, SystemFonts(), ignored);

    std::set<std::string> written;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(first)) {
        if (entry.is_directory()) continue;
        const std::string name = fs::relative(entry.path(), first).string();
        written.insert(name);
        EXPECT_EQ(ReadBytes(entry.path()), ReadBytes(second / name)) << name;
        EXPECT_NE(progress.str().find("mediagen: wrote Media/" + name + " ("), std::string::npos) << name;
    }
    const std::string lines = progress.str();
    EXPECT_EQ(size_t(std::count(lines.begin(), lines.end(), '\n')), written.size()) << "one line per file";
    // What the game loads by name.
    for (const char* name :
         {"font.tga", "UI_options_splash.tga", "UI_credits_splash.tga", "UI_quit_splash.tga", "UI_dialogue.tga",
          "UI_dialogue_controls.tga", "UI_dialogue_win.tga", "UI_dialogue_lose.tga", "ball.3DS", "DeadBall.3DS",
          "Bumper.3DS", "ReverseGravityBumper.3DS", "SpawnerBumper.3DS", "Peg.3DS", "turbine1.3DS", "turbine2.3DS",
          "HingedDoor.3DS", "TeleporterEntrance.3DS", "TeleporterExit.3DS", "goal.3DS", "intro_track.3DS",
          "bench_track.3DS", "sky_posx.tga", "sky_negx.tga", "sky_posy.tga", "sky_negy.tga", "sky_posz.tga",
          "sky_negz.tga", "intro_t.tga", "smoke.tga", "intro.lvl", "benchmarks/bench.lvl", "soak_track.3DS", "benchmarks/soak.lvl", "claves.wav", "cowbell.wav",
          "oriental_gong.wav", "comet_1.wav", "audiotrack1.wav", "UI_back.tga", "UI_bg_rings.tga", "UI_newgame.tga",
          "UI_newgame_hover.tga", "UI_levelselect.tga", "UI_levelselect_hover.tga", "UI_options.tga",
          "UI_options_hover.tga", "UI_credits.tga", "UI_credits_hover.tga", "UI_quit.tga", "UI_quit_hover.tga"}) {
        EXPECT_EQ(written.count(name), 1u) << name;
    }
    // One file for each source, and the made ones: the font, twelve class models, six sky faces,
    // the track texture and the smoke; the menu's background, its rings and two per button.
    size_t sources = 0;
    for (const char* folder : {"splashes", "dialogues", "tracks", "levels", "benchmarks", "sounds"})
        sources += size_t(std::distance(fs::directory_iterator(kAssets / folder), fs::directory_iterator()));
    const size_t menuPictures = 2 + 2 * ReadMenu(kAssets / "menu" / "menu.txt").buttons.size();
    EXPECT_EQ(written.size(), sources + 1 + 12 + 6 + 2 + menuPictures);
    for (const auto& [name, depth] : std::vector<std::pair<std::string, std::string>>{
             {"font.tga", "32"}, {"UI_options_splash.tga", "24"}, {"UI_dialogue.tga", "32"},
             {"sky_negz.tga", "24"}, {"intro_t.tga", "24"}, {"smoke.tga", "32"}})
        EXPECT_EQ(LoadedDepth(ReadBytes(first / name)), depth) << name;
    EXPECT_EQ(ReadBytes(first / "intro.lvl"), ReadBytes(kAssets / "levels" / "intro.lvl"));
    for (const auto& [name, channels] : std::vector<std::pair<std::string, int>>{
             {"claves.wav", 1}, {"cowbell.wav", 1}, {"oriental_gong.wav", 1}, {"audiotrack1.wav", 2}}) {
        WavData wav;
        std::string error;
        EXPECT_TRUE(ReadWav((first / name).string(), wav, error)) << error;
        EXPECT_EQ(wav.channels, channels) << name;
        EXPECT_EQ(wav.bitsPerSample, 16) << name;
    }

    const fs::path ball = second / "ball.3DS";
    WriteText(ball, "damaged");
    std::ostringstream again;
    GenerateMedia(kAssets, second, SystemFonts(), again);
    EXPECT_EQ(ReadBytes(ball), ReadBytes(first / "ball.3DS"));
    EXPECT_EQ(again.str().find("mediagen: wrote Media/ball.3DS ("), 0u) << again.str();
    const std::string upToDate = "mediagen: " + std::to_string(written.size() - 1) + " files already up to date\n";
    EXPECT_NE(again.str().find(upToDate), std::string::npos) << again.str();
}

TEST(MediagenRun, ABadOrMissingInputIsNamedBeforeAnythingIsWritten) {
    TempDir dir;
    const fs::path assets = dir.File("assets"), out = dir.File("Media");
    fs::copy(kAssets, assets, fs::copy_options::recursive);
    WriteText(assets / "tracks" / "broken.track", "depth: 4\n# fine so far\npiece: 0,0 1,1 1,0 0,1\n");
    std::ostringstream progress;
    EXPECT_EQ(MediaErrorOf([&] { GenerateMedia(assets, out, SystemFonts(), progress); })
                  .rfind((assets / "tracks" / "broken.track").string() + ":3: piece: ", 0),
              0u);
    EXPECT_FALSE(fs::exists(out));
    EXPECT_EQ(progress.str(), "");

    FontSet fonts = SystemFonts();
    fonts.mono = "/nonexistent/NoSuchMono.ttf";
    EXPECT_NE(MediaErrorOf([&] { GenerateMedia(kAssets, out, fonts, progress); }).find("/nonexistent/NoSuchMono.ttf"),
              std::string::npos);
    EXPECT_FALSE(fs::exists(out / "font.tga"));
    EXPECT_NE(MediaErrorOf([&] { GenerateMedia(dir.File("none"), out, SystemFonts(), progress); })
                  .find(dir.File("none/splashes")),
              std::string::npos);
}

}  // namespace
