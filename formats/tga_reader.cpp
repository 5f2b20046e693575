#include "formats/tga_reader.h"

#include "core/file_read.h"

#include <cstdint>
#include <limits>
#include <utility>

namespace {

constexpr size_t kHeaderBytes = 18;
// An 8192 x 8192 32-bit image with room for a footer; anything larger was named by mistake.
constexpr size_t kMaxFileBytes = (size_t(257) << 20);

const char* ImageTypeName(int type) {
    switch (type) {
        case 0: return "empty TGA (image type 0)";
        case 1: return "colour-mapped TGA (image type 1)";
        case 3: return "greyscale TGA (image type 3)";
        case 9: return "run-length encoded colour-mapped TGA (image type 9)";
        case 10: return "run-length encoded TGA (image type 10)";
        case 11: return "run-length encoded greyscale TGA (image type 11)";
        default: return nullptr;
    }
}

bool IsPowerOfTwo(int value) { return value > 0 && (value & (value - 1)) == 0; }

bool Fail(std::string& error, const std::string& name, const std::string& reason) {
    error = name + ": " + reason;
    return false;
}

}  // namespace

bool ParseTga(std::vector<uint8_t> bytes, const std::string& name, TgaImage& image, std::string& error) {
    if (bytes.size() < kHeaderBytes) {
        return Fail(error, name,
                    "file is " + std::to_string(bytes.size()) + " bytes, shorter than the 18-byte TGA header");
    }
    const int colourMapType = bytes[1];
    const int imageType = bytes[2];
    const int width = bytes[12] | (bytes[13] << 8);
    const int height = bytes[14] | (bytes[15] << 8);
    const int depth = bytes[16];

    if (colourMapType != 0) {
        return Fail(error, name,
                    "TGA with a colour map (colour-map type " + std::to_string(colourMapType) +
                        ") is not supported; only uncompressed true-colour (type 2)");
    }
    if (imageType != 2) {
        const char* kind = ImageTypeName(imageType);
        const std::string what = kind ? kind : "TGA image type " + std::to_string(imageType);
        return Fail(error, name, what + " is not supported; only uncompressed true-colour (type 2)");
    }
    if (depth != 24 && depth != 32) {
        return Fail(error, name, "depth " + std::to_string(depth) + " bits is not supported; only 24 or 32");
    }
    if (!IsPowerOfTwo(width)) return Fail(error, name, "width " + std::to_string(width) + " is not a power of two");
    if (!IsPowerOfTwo(height)) {
        return Fail(error, name, "height " + std::to_string(height) + " is not a power of two");
    }

    // Sizes are reported as int32 byte counts, so anything larger cannot be accounted for.
    const uint64_t pixelBytes = uint64_t(width) * uint64_t(height) * uint64_t(depth / 8);
    const std::string shape = std::to_string(width) + "x" + std::to_string(height) + " " +
                              std::to_string(depth) + "-bit pixels";
    if (pixelBytes > uint64_t(std::numeric_limits<int32_t>::max())) {
        return Fail(error, name, "its " + shape + " are too large to load");
    }
    // Pixels always start right after the header: the image-ID field is not skipped.
    const uint64_t needed = kHeaderBytes + pixelBytes;
    if (bytes.size() < needed) {
        return Fail(error, name,
                    "file is " + std::to_string(bytes.size()) + " bytes but its " + shape + " need " +
                        std::to_string(needed));
    }

    image.width = width;
    image.height = height;
    image.depth = depth;
    image.pixelOffset = kHeaderBytes;
    image.file = std::move(bytes);
    return true;
}

bool ReadTga(const std::string& path, TgaImage& image, std::string& error) {
    std::vector<uint8_t> bytes;
    std::string reason;
    if (!ReadWholeFile(path, kMaxFileBytes, bytes, reason)) {
        if (bytes.size() > kMaxFileBytes) reason += ", too large for a texture";
        return Fail(error, path, reason);
    }
    return ParseTga(std::move(bytes), path, image, error);
}
