#pragma once
// PNG files read back with libpng, for tests that check what was drawn.
#include <png.h>

#include <cstdint>
#include <string>
#include <vector>

struct Pixel {
    int r, g, b;
};

// An 8-bit RGB picture, rows from the top down.
struct PngPicture {
    int width = 0;
    int height = 0;
    std::vector<uint8_t> rgb;

    Pixel At(int x, int y) const {
        const uint8_t* p = &rgb[(size_t(y) * size_t(width) + size_t(x)) * 3];
        return {p[0], p[1], p[2]};
    }
};

// False with `error` set when the file is not a PNG libpng reads; any PNG is turned into RGB.
inline bool ReadPng(const std::string& path, PngPicture& picture, std::string& error) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_file(&image, path.c_str())) {
        error = path + ": " + image.message;
        return false;
    }
    image.format = PNG_FORMAT_RGB;
    picture.width = int(image.width);
    picture.height = int(image.height);
    picture.rgb.assign(PNG_IMAGE_SIZE(image), 0);
    if (!png_image_finish_read(&image, nullptr, picture.rgb.data(), 0, nullptr)) {
        error = path + ": " + image.message;
        return false;
    }
    return true;
}
