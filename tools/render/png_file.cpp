#include "tools/render/png_file.h"

#include <png.h>

bool WritePngFile(const std::string& path, int width, int height, const std::vector<uint8_t>& rgb,
                  std::string& error) {
    if (width <= 0 || height <= 0 || rgb.size() != size_t(width) * size_t(height) * 3) {
        error = path + ": no picture to write";
        return false;
    }
    // libpng's simplified interface reports failure in `message` instead of jumping out
    // through longjmp, and removes the file it could not finish.
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = png_uint_32(width);
    image.height = png_uint_32(height);
    image.format = PNG_FORMAT_RGB;
    if (!png_image_write_to_file(&image, path.c_str(), 0, rgb.data(), png_int_32(width * 3), nullptr)) {
        error = path + ": " + image.message;
        png_image_free(&image);
        return false;
    }
    return true;
}
