// Any bytes as a TGA file. The reader refuses them with a reason, or describes pixels that all
// lie inside the bytes it kept: every pixel byte is read, so a size that promises more than
// the file holds reads out of bounds.
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "formats/tga_reader.h"
#include "tests/fuzz/fuzz_check.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string name = "fuzz.tga";
    TgaImage image;
    std::string error;
    if (!ParseTga(std::vector<uint8_t>(data, data + size), name, image, error)) {
        Require(error.rfind(name + ": ", 0) == 0, "a refused TGA gets an error naming the file");
        return 0;
    }
    Require(error.empty(), "a TGA that loads leaves no error");
    Require(image.depth == 24 || image.depth == 32, "a loaded TGA has 24 or 32 bits per pixel");
    Require(image.width > 0 && image.height > 0, "a loaded TGA has pixels");
    Require(image.pixelOffset + size_t(image.PixelBytes()) <= image.file.size(),
            "a loaded TGA's pixels lie inside its file");

    const uint8_t* pixels = image.Pixels();
    uint32_t sum = 0;
    for (int32_t i = 0; i < image.PixelBytes(); ++i) sum += pixels[i];
    // Kept, so the loop that reads every byte is not optimised away.
    volatile uint32_t sink = sum;
    (void)sink;
    return 0;
}
