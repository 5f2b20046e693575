#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "tools/mediagen/font_sheet.h"
#include "tools/mediagen/media_error.h"
#include "tools/mediagen/media_gen.h"
#include "tools/mediagen/splash_screens.h"
#include "tools/mediagen/tga_writer.h"

namespace fs = std::filesystem;
using namespace mediagen;

namespace {

const fs::path kAssets = fs::path(VELLORAN_SOURCE_DIR) / "assets";

class ScratchDir {
public:
    ScratchDir() {
        const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
        path = fs::temp_directory_path() /
               ("mediagen_test_" + std::to_string(getpid()) + "_" + test->name());
        fs::remove_all(path);
    }
    ~ScratchDir() { fs::remove_all(path); }
    fs::path path;
};

std::vector<uint8_t> ReadBytes(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

int Little16(const std::vector<uint8_t>& bytes, size_t at) { return bytes[at] | (bytes[at + 1] << 8); }

// Checks what the game's loader insists on; returns "" or what is wrong.
std::string TgaProblem(const std::vector<uint8_t>& bytes, int wantDepth) {
    if (bytes.size() < 18) return "shorter than a header";
    const int width = Little16(bytes, 12), height = Little16(bytes, 14), depth = bytes[16];
    auto pow2 = [](int v) { return v > 0 && (v & (v - 1)) == 0; };
    if (bytes[0] != 0 || bytes[1] != 0 || bytes[2] != 2) return "not a plain type-2 TGA";
    if (depth != wantDepth) return "depth " + std::to_string(depth);
    if (!pow2(width) || !pow2(height)) return "sides not powers of two";
    if (bytes[17] != 0) return "descriptor " + std::to_string(bytes[17]);
    if (bytes.size() != 18 + size_t(width) * height * depth / 8) return "size does not match the header";
    return "";
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

}  // namespace

TEST(MediagenTga, EncodesBlueFirstAndRejectsWhatTheGameCannotLoad) {
    Picture picture(2, 1, 4);
    const uint8_t pixels[] = {10, 20, 30, 40, 50, 60, 70, 80};
    picture.pixels.assign(std::begin(pixels), std::end(pixels));
    const std::vector<uint8_t> bytes = EncodeTga(picture);
    EXPECT_EQ(TgaProblem(bytes, 32), "");
    EXPECT_EQ(std::vector<uint8_t>(bytes.begin() + 18, bytes.end()),
              (std::vector<uint8_t>{30, 20, 10, 40, 70, 60, 50, 80}));

    EXPECT_THROW(EncodeTga(Picture(3, 4, 3)), MediaError);
    EXPECT_THROW(EncodeTga(Picture(4, 4, 1)), MediaError);

    Picture rows(1, 2, 3);
    rows.Pixel(0, 0)[0] = 1;
    rows.FlipRows();
    EXPECT_EQ(rows.Pixel(0, 1)[0], 1);
    EXPECT_EQ(rows.Pixel(0, 0)[0], 0);
}

TEST(MediagenFontSheet, GlyphsSitInTheirCellsTheWayUpTheGameDrawsThem) {
    const Picture sheet = MakeFontSheet(SystemFonts().mono);
    ASSERT_EQ(TgaProblem(EncodeTga(sheet), 32), "");
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
    for (size_t i = 0; i < sheet.pixels.size(); i += 4) {
        ASSERT_EQ(sheet.pixels[i] & sheet.pixels[i + 1] & sheet.pixels[i + 2], 255) << "pixel " << i / 4;
    }

    // The first stored row of a cell is the top of the on-screen glyph.
    EXPECT_GT(MeanInkRow(sheet, '_'), kFontCellSize * 0.7);
    EXPECT_LT(MeanInkRow(sheet, '^'), kFontCellSize * 0.4);
    EXPECT_LT(InkRows(sheet, 'A').front(), InkRows(sheet, 'a').front());
    EXPECT_GT(InkRows(sheet, 'g').back(), InkRows(sheet, 'A').back());
}

TEST(MediagenRun, WritesEveryFileByteForByteTheSameEachTime) {
    ScratchDir first, second;
    second.path += "_again";
    std::ostringstream progress;
    GenerateMedia(kAssets, first.path / "Media", SystemFonts(), progress);
    std::ostringstream ignored;
    GenerateMedia(kAssets, second.path / "Media", SystemFonts(), ignored);

    std::set<std::string> written;
    for (const fs::directory_entry& entry : fs::directory_iterator(first.path / "Media")) {
        const std::string name = entry.path().filename().string();
        written.insert(name);
        EXPECT_EQ(ReadBytes(entry.path()), ReadBytes(second.path / "Media" / name)) << name;
        // One progress line per file.
        const std::string line = "mediagen: wrote Media/" + name + " (";
        const std::string text = progress.str();
        const size_t at = text.find(line);
        EXPECT_NE(at, std::string::npos) << name;
        EXPECT_EQ(text.find(line, at + 1), std::string::npos) << name;
    }
    const std::string lines = progress.str();
    EXPECT_EQ(size_t(std::count(lines.begin(), lines.end(), '\n')), written.size());
    // What the game loads by name.
    for (const char* name :
         {"font.tga", "UI_options_splash.tga", "UI_credits_splash.tga", "UI_quit_splash.tga", "UI_dialogue.tga",
          "UI_dialogue_controls.tga", "UI_dialogue_win.tga", "UI_dialogue_lose.tga", "ball.3DS", "DeadBall.3DS",
          "Bumper.3DS", "ReverseGravityBumper.3DS", "SpawnerBumper.3DS", "Peg.3DS", "turbine1.3DS", "turbine2.3DS",
          "HingedDoor.3DS", "TeleporterEntrance.3DS", "TeleporterExit.3DS", "goal.3DS", "intro_track.3DS",
          "bench_track.3DS", "sky_posx.tga", "sky_negx.tga", "sky_posy.tga", "sky_negy.tga", "sky_posz.tga",
          "sky_negz.tga", "intro_t.tga", "smoke.tga", "intro.lvl", "bench.lvl"}) {
        EXPECT_EQ(written.count(name), 1u) << name;
    }
    EXPECT_EQ(written.size(), 32u);

    const std::vector<std::pair<std::string, int>> depths = {
        {"font.tga", 32},      {"UI_options_splash.tga", 24}, {"UI_dialogue.tga", 32},
        {"sky_negz.tga", 24},  {"intro_t.tga", 24},           {"smoke.tga", 32}};
    for (const auto& [name, depth] : depths) EXPECT_EQ(TgaProblem(ReadBytes(first.path / "Media" / name), depth), "") << name;
    EXPECT_EQ(ReadBytes(first.path / "Media" / "intro.lvl"), ReadBytes(kAssets / "levels" / "intro.lvl"));

    // Run again over the same folder: only a file that was damaged is written again.
    const fs::path ball = second.path / "Media" / "ball.3DS";
    const std::vector<uint8_t> good = ReadBytes(ball);
    std::ofstream(ball, std::ios::binary | std::ios::trunc) << "damaged";
    std::ostringstream again;
    GenerateMedia(kAssets, second.path / "Media", SystemFonts(), again);
    EXPECT_EQ(ReadBytes(ball), good);
    EXPECT_EQ(again.str().find("mediagen: wrote Media/ball.3DS ("), 0u) << again.str();
    EXPECT_NE(again.str().find("mediagen: 31 files already up to date\n"), std::string::npos) << again.str();
    fs::remove_all(second.path);
}

TEST(MediagenRun, ABadSourceStopsTheRunBeforeAnythingIsWritten) {
    ScratchDir dir;
    const fs::path assets = dir.path / "assets";
    fs::create_directories(assets);
    fs::copy(kAssets, assets, fs::copy_options::recursive);
    {
        std::ofstream bad(assets / "tracks" / "broken.track");
        bad << "depth: 4\n# fine so far\npiece: 0,0 1,1 1,0 0,1\n";
    }
    std::ostringstream progress;
    try {
        GenerateMedia(assets, dir.path / "Media", SystemFonts(), progress);
        FAIL() << "no error";
    } catch (const MediaError& e) {
        EXPECT_EQ(std::string(e.what()).rfind((assets / "tracks" / "broken.track").string() + ":3: piece: ", 0), 0u)
            << e.what();
    }
    EXPECT_FALSE(fs::exists(dir.path / "Media"));
    EXPECT_EQ(progress.str(), "");
}

TEST(MediagenSplash, TitleAndSkyAreAtTheLastStoredRows) {
    const SplashSource source = ParseSplash("title: Top\nfooter: Bottom\n\n", "test.txt");
    const Picture splash = RenderSplash(source, {SystemFonts().sans, SystemFonts().sansBold}, "test.txt");
    auto brightRows = [&](int from, int to) {
        int count = 0;
        for (int row = from; row < to; ++row) {
            for (int x = 0; x < splash.width; ++x) count += splash.Pixel(x, row)[0] > 200;
        }
        return count;
    };
    // Stored bottom row first: the title lies in the last quarter, the footer in the first.
    EXPECT_GT(brightRows(768, 1024), 1000);
    EXPECT_EQ(brightRows(256, 768), 0);
    EXPECT_GT(splash.Pixel(0, splash.height - 1)[2], splash.Pixel(0, 0)[2] + 50);
}

TEST(MediagenSplash, ParsesHeaderAndBodyAndNamesTheLineAtFault) {
    const SplashSource source = ParseSplash(
        "# comment\n\ntitle: Controls\nalign: centre\nfooter: Click\n\n\n*Key:* does: this\n\nLast\n\n", "s.txt");
    EXPECT_EQ(source.title, "Controls");
    EXPECT_EQ(source.footer, "Click");
    EXPECT_EQ(source.align, SplashSource::Align::Centre);
    EXPECT_EQ(source.body, (std::vector<std::string>{"*Key:* does: this", "", "Last"}));

    auto errorOf = [](const std::string& text) {
        try {
            ParseSplash(text, "bad.txt");
        } catch (const MediaError& e) {
            return std::string(e.what());
        }
        return std::string("no error");
    };
    EXPECT_EQ(errorOf("title: T\ncolour: red\n"), "bad.txt:2: unknown key 'colour' (title, footer, align)");
    EXPECT_EQ(errorOf("title: T\nfooter: F\n\n*bold\n").rfind("bad.txt:4:", 0), 0u);
    EXPECT_EQ(errorOf("footer: F\n").rfind("bad.txt:", 0), 0u);
    EXPECT_EQ(errorOf("title: T\nfooter: F\nalign: right\n").rfind("bad.txt:3:", 0), 0u);
}

TEST(MediagenRun, MissingInputsAreNamed) {
    ScratchDir out;
    FontSet fonts = SystemFonts();
    fonts.mono = "/nonexistent/NoSuchMono.ttf";
    std::ostringstream progress;
    try {
        GenerateMedia(kAssets, out.path, fonts, progress);
        FAIL() << "no error";
    } catch (const MediaError& e) {
        EXPECT_NE(std::string(e.what()).find("/nonexistent/NoSuchMono.ttf"), std::string::npos) << e.what();
    }
    EXPECT_FALSE(fs::exists(out.path / "font.tga"));

    const fs::path noAssets = out.path / "no_assets";
    try {
        GenerateMedia(noAssets, out.path, SystemFonts(), progress);
        FAIL() << "no error";
    } catch (const MediaError& e) {
        EXPECT_NE(std::string(e.what()).find((noAssets / "splashes").string()), std::string::npos) << e.what();
    }
}
