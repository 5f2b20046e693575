#include "tools/mediagen/tga_writer.h"

#include <algorithm>
#include <fstream>
#include <string>
#include <system_error>

#include "tools/mediagen/media_error.h"

namespace mediagen {

namespace {

bool IsPowerOfTwo(int value) { return value > 0 && (value & (value - 1)) == 0; }

void PutLittle16(std::vector<uint8_t>& out, size_t at, int value) {
    out[at] = uint8_t(value & 0xff);
    out[at + 1] = uint8_t((value >> 8) & 0xff);
}

}  // namespace

Picture::Picture(int width, int height, int channels)
    : width(width), height(height), channels(channels),
      pixels(size_t(std::max(width, 0)) * size_t(std::max(height, 0)) * size_t(std::max(channels, 0)), 0) {}

void Picture::FlipRows() {
    const size_t rowBytes = size_t(width) * channels;
    for (int top = 0, bottom = height - 1; top < bottom; ++top, --bottom) {
        std::swap_ranges(pixels.begin() + top * rowBytes, pixels.begin() + (top + 1) * rowBytes,
                         pixels.begin() + bottom * rowBytes);
    }
}

std::vector<uint8_t> EncodeTga(const Picture& picture) {
    if (picture.channels != 3 && picture.channels != 4) {
        throw MediaError("TGA pictures need 3 or 4 channels, not " + std::to_string(picture.channels));
    }
    if (!IsPowerOfTwo(picture.width) || !IsPowerOfTwo(picture.height) || picture.width > 0xffff ||
        picture.height > 0xffff) {
        throw MediaError("TGA sides must be powers of two, not " + std::to_string(picture.width) + "x" +
                         std::to_string(picture.height));
    }
    constexpr size_t kHeader = 18;
    std::vector<uint8_t> out(kHeader + picture.pixels.size(), 0);
    out[2] = 2;  // uncompressed true colour; no image ID, no colour map
    PutLittle16(out, 12, picture.width);
    PutLittle16(out, 14, picture.height);
    out[16] = uint8_t(picture.Depth());
    out[17] = 0;  // bottom-left origin: rows go out exactly as the caller stored them

    // TGA keeps blue first.
    const size_t count = size_t(picture.width) * picture.height;
    for (size_t i = 0; i < count; ++i) {
        const uint8_t* in = picture.pixels.data() + i * picture.channels;
        uint8_t* to = out.data() + kHeader + i * picture.channels;
        to[0] = in[2];
        to[1] = in[1];
        to[2] = in[0];
        if (picture.channels == 4) to[3] = in[3];
    }
    return out;
}

}  // namespace mediagen
