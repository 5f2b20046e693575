#include "formats/tga_reader.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "resources/image_resource.h"
#include "tests/support/tga_bytes.h"

namespace {

class TgaReaderTest : public ::testing::Test {
protected:
    std::string Write(const std::string& name, const std::vector<uint8_t>& bytes) {
        const std::string path = dir.File(name);
        WriteBytes(path, bytes);
        return path;
    }
    TempDir dir;
};

TEST_F(TgaReaderTest, LoadsTrueColourAndReportsPixelBytesWhichStartAfterTheHeaderEvenWithAnImageId) {
    for (int depth : {32, 24}) {
        const std::string path = Write("t.tga", TgaBytes({.width = 256, .height = 128, .depth = depth}));
        ImageResource texture(path, "t", nullptr, false);
        EXPECT_EQ(texture.Load(path), 256 * 128 * depth / 8);
        EXPECT_EQ(texture.width, 256);
        EXPECT_EQ(texture.height, 128);
        EXPECT_TRUE(texture.lastError.empty());
    }
    // The ID length is not skipped: the bytes after the header are the pixels, and a file
    // with no room for the ID is still complete.
    const std::string path = Write("id.tga", TgaBytes({.width = 2, .height = 2, .depth = 32, .idLength = 5}));
    TgaImage image;
    std::string error;
    ASSERT_TRUE(ReadTga(path, image, error)) << error;
    EXPECT_EQ(image.depth, 32);
    EXPECT_EQ(image.file.size(), 18u + 16u);
    EXPECT_EQ(image.Pixels(), image.file.data() + 18);
    EXPECT_EQ(image.Pixels()[0], 0);
}

struct BadFile {
    const char* label;
    std::vector<uint8_t> bytes;
    const char* reason;
};

TEST_F(TgaReaderTest, RejectsWhatItCannotLoadAndNamesTheFile) {
    std::vector<uint8_t> truncatedPixels = TgaBytes({.width = 64, .height = 64, .depth = 32});
    truncatedPixels.pop_back();
    std::vector<uint8_t> truncatedHeader = TgaBytes({});
    truncatedHeader.resize(10);
    // 32768x32768 32-bit would overflow the int32 byte counts; only the header is written.
    std::vector<uint8_t> huge = TgaBytes({.width = 0, .height = 0});
    huge[13] = 0x80;
    huge[15] = 0x80;

    const std::vector<BadFile> cases = {
        {"colourmapped", TgaBytes({.imageType = 1, .colourMapType = 1}), "colour map"},
        {"grey", TgaBytes({.depth = 24, .imageType = 3}), "greyscale TGA (image type 3) is not supported"},
        {"rle", TgaBytes({.imageType = 10}),
         "run-length encoded TGA (image type 10) is not supported; only uncompressed true-colour (type 2)"},
        {"depth16", TgaBytes({.depth = 16}), "depth 16"},
        {"npot_height", TgaBytes({.width = 64, .height = 48}), "height 48 is not a power of two"},
        {"zero_width", TgaBytes({.width = 0, .height = 4}), "width 0 is not a power of two"},
        {"short_header", truncatedHeader, "file is 10 bytes"},
        {"short_pixels", truncatedPixels, "file is 16401 bytes but its 64x64 32-bit pixels need 16402"},
        {"huge", huge, "too large"},
    };
    for (const BadFile& bad : cases) {
        SCOPED_TRACE(bad.label);
        const std::string path = Write(std::string(bad.label) + ".tga", bad.bytes);

        TgaImage image;
        std::string error;
        EXPECT_FALSE(ReadTga(path, image, error));
        EXPECT_NE(error.find(path), std::string::npos) << error;
        EXPECT_NE(error.find(bad.reason), std::string::npos) << error;

        ImageResource texture(path, bad.label, nullptr, false);
        EXPECT_LT(texture.Load(path), 0);
        EXPECT_EQ(texture.lastError, error);
    }

    const std::string missing = dir.File("missing.tga");
    TgaImage image;
    std::string error;
    EXPECT_FALSE(ReadTga(missing, image, error));
    EXPECT_EQ(error, missing + ": cannot open file");
}

class TgaCubeMapTest : public TgaReaderTest {
protected:
    // Faces of different sizes, so the sum and the size kept show which faces were read.
    void WriteFaces() {
        const std::vector<std::pair<std::string, TgaFields>> faces = {
            {"posx", {.width = 4, .height = 4, .depth = 32}},   // 64
            {"negx", {.width = 4, .height = 4, .depth = 24}},   // 48
            {"posy", {.width = 8, .height = 8, .depth = 32}},   // 256
            {"negy", {.width = 2, .height = 2, .depth = 32}},   // 16
            {"posz", {.width = 4, .height = 4, .depth = 32}},   // 64
            {"negz", {.width = 16, .height = 8, .depth = 24}},  // 384
        };
        for (const auto& [face, fields] : faces) Write("sky_" + face + ".tga", TgaBytes(fields));
    }
};

TEST_F(TgaCubeMapTest, ReadsAllSixFacesFromAnyFacesNameAndStopsAtTheFirstMissingOne) {
    WriteFaces();
    for (const char* face : {"sky_posx.tga", "sky_negz.tga"}) {
        ImageResource cube(dir.File(face), "sky", nullptr, true);
        EXPECT_EQ(cube.Load(dir.File(face)), 64 + 48 + 256 + 16 + 64 + 384) << cube.lastError;
        EXPECT_EQ(cube.width, 16) << "the size is the last face's, -z";
        EXPECT_EQ(cube.height, 8);
    }
    std::filesystem::remove(dir.File("sky_negy.tga"));
    std::filesystem::remove(dir.File("sky_posz.tga"));
    ImageResource cube(dir.File("sky_posx.tga"), "sky", nullptr, true);
    EXPECT_LT(cube.Load(dir.File("sky_posx.tga")), 0);
    EXPECT_EQ(cube.lastError, dir.File("sky_negy.tga") + ": cannot open file");
    ImageResource unnamed("x.tga", "x", nullptr, true);
    EXPECT_LT(unnamed.Load("x.tga"), 0);
    EXPECT_NE(unnamed.lastError.find("x.tga"), std::string::npos);
}

}  // namespace
