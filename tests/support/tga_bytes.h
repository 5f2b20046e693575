#pragma once
// TGA files built byte by byte, so tests can make exactly the good and broken files they need.
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <functional>
#include <vector>

#include "tests/support/files.h"

struct TgaFields {
    int width = 4;
    int height = 4;
    int depth = 32;
    uint8_t imageType = 2;
    uint8_t colourMapType = 0;
    uint8_t idLength = 0;  // the header field only; no ID bytes are added
};

// An 18-byte header followed by width*height*depth/8 pixel bytes counting 0, 1, 2, ...
inline std::vector<uint8_t> TgaBytes(const TgaFields& f) {
    std::vector<uint8_t> bytes(18, 0);
    bytes[0] = f.idLength;
    bytes[1] = f.colourMapType;
    bytes[2] = f.imageType;
    bytes[12] = uint8_t(f.width & 0xff);
    bytes[13] = uint8_t((f.width >> 8) & 0xff);
    bytes[14] = uint8_t(f.height & 0xff);
    bytes[15] = uint8_t((f.height >> 8) & 0xff);
    bytes[16] = uint8_t(f.depth);
    const size_t pixelBytes = size_t(f.width) * size_t(f.height) * size_t(f.depth / 8);
    for (size_t i = 0; i < pixelBytes; ++i) bytes.push_back(uint8_t(i));
    return bytes;
}

struct Bgra {
    uint8_t b, g, r, a;
};

// A 32-bit bottom-up TGA; colour(storedRow, column) gives each pixel, stored row 0 first.
inline void WriteTga32(const std::filesystem::path& path, int width, int height,
                       const std::function<Bgra(int, int)>& colour) {
    std::vector<uint8_t> bytes = TgaBytes({.width = width, .height = height, .depth = 32});
    for (int row = 0; row < height; ++row)
        for (int column = 0; column < width; ++column) {
            const Bgra c = colour(row, column);
            std::memcpy(&bytes[18 + 4 * size_t(row * width + column)], &c, 4);
        }
    WriteBytes(path, bytes);
}

// A 64 x 64 font sheet: every glyph cell opaque white except the space, which is clear.
inline void WriteBlockFont(const std::filesystem::path& path) {
    WriteTga32(path, 64, 64, [](int row, int column) {
        const int code = (row / 4) * 16 + column / 4;
        return code == ' ' ? Bgra{255, 255, 255, 0} : Bgra{255, 255, 255, 255};
    });
}
