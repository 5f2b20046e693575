#pragma once
#include <cstdint>
#include <filesystem>
#include <vector>

namespace mediagen {

// A texture on its way to disk: red, green, blue(, alpha) per pixel, rows in the order they
// are stored in the file. Whether the first stored row is the top or the bottom of what the
// player sees is the caller's business; the writer never reorders rows.
struct Picture {
    Picture(int width, int height, int channels);

    uint8_t* Pixel(int x, int row) { return pixels.data() + (size_t(row) * width + x) * channels; }
    const uint8_t* Pixel(int x, int row) const {
        return pixels.data() + (size_t(row) * width + x) * channels;
    }
    int Depth() const { return channels * 8; }
    // Reverses the row order, for pictures drawn top-down that are stored bottom row first.
    void FlipRows();

    int width;
    int height;
    int channels;  // 3 or 4
    std::vector<uint8_t> pixels;
};

// The bytes of an uncompressed true-colour TGA (type 2, descriptor 0). Throws MediaError if the
// picture is not 24 or 32 bits with power-of-two sides, which is all the game loads.
std::vector<uint8_t> EncodeTga(const Picture& picture);

}  // namespace mediagen
