#pragma once
#include <cstdint>
#include <string>
#include <vector>

// An uncompressed true-colour TGA (image type 2, no colour map) of 24 or 32 bits whose sides
// are powers of two. Pixels are in file order: blue, green, red(, alpha), rows as stored.
struct TgaImage {
    int width = 0;
    int height = 0;
    int depth = 0;                  // bits per pixel, 24 or 32
    std::vector<uint8_t> file;      // the whole file
    size_t pixelOffset = 18;        // where the pixels start in file
    const uint8_t* Pixels() const { return file.data() + pixelOffset; }
    int32_t PixelBytes() const { return width * height * (depth / 8); }
};

// Reads and checks a TGA file. On failure returns false and sets error to a sentence naming
// the file and the reason. Never reads past the end of the file.
bool ReadTga(const std::string& path, TgaImage& image, std::string& error);
// The same checks on bytes already in memory; name is used in the error text.
bool ParseTga(std::vector<uint8_t> bytes, const std::string& name, TgaImage& image, std::string& error);
