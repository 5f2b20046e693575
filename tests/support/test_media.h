#pragma once
// Small textures for tests that draw: solid bands and a font whose glyphs are solid blocks.
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>

struct Bgra {
    uint8_t b, g, r, a;
};

// A 32-bit bottom-up TGA; colour(storedRow, column) gives each pixel, stored row 0 first.
inline void WriteTga32(const std::filesystem::path& path, int width, int height,
                       const std::function<Bgra(int, int)>& colour) {
    std::filesystem::create_directories(path.parent_path());
    uint8_t header[18] = {0, 0, 2};
    header[12] = uint8_t(width), header[13] = uint8_t(width >> 8);
    header[14] = uint8_t(height), header[15] = uint8_t(height >> 8);
    header[16] = 32;
    std::ofstream out(path, std::ios::binary);
    out.write(reinterpret_cast<const char*>(header), 18);
    for (int row = 0; row < height; ++row)
        for (int column = 0; column < width; ++column) {
            Bgra c = colour(row, column);
            out.put(char(c.b)).put(char(c.g)).put(char(c.r)).put(char(c.a));
        }
}

// A 64 x 64 font sheet: every glyph cell opaque white except the space, which is clear.
inline void WriteBlockFont(const std::filesystem::path& path) {
    WriteTga32(path, 64, 64, [](int row, int column) {
        int code = (row / 4) * 16 + column / 4;
        return code == ' ' ? Bgra{255, 255, 255, 0} : Bgra{255, 255, 255, 255};
    });
}
