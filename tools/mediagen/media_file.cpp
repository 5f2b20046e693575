#include "tools/mediagen/media_file.h"

#include <cstring>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>
#include <vector>

#include "core/file_read.h"
#include "tools/mediagen/media_error.h"

namespace mediagen {

namespace {

bool Holds(const std::filesystem::path& path, const void* data, size_t size) {
    std::error_code error;
    if (std::filesystem::file_size(path, error) != size || error) return false;
    std::ifstream file(path, std::ios::binary);
    const std::vector<char> bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    return bytes.size() == size && (size == 0 || std::memcmp(bytes.data(), data, size) == 0);
}

}  // namespace

bool WriteMediaFile(const std::filesystem::path& path, const void* data, size_t size) {
    if (Holds(path, data, size)) return false;
    std::filesystem::path partial = path;
    partial += ".partial";
    {
        std::ofstream file(partial, std::ios::binary | std::ios::trunc);
        file.write(static_cast<const char*>(data), std::streamsize(size));
        if (!file) throw MediaError(path.string() + ": cannot write file");
    }
    std::error_code error;
    std::filesystem::rename(partial, path, error);
    if (error) throw MediaError(path.string() + ": cannot write file (" + error.message() + ")");
    return true;
}

std::string ReadSourceText(const std::filesystem::path& path, const std::string& kind) {
    std::vector<uint8_t> bytes;
    std::string reason;
    if (!ReadWholeFile(path.string(), kMaxSourceBytes, bytes, reason))
        throw MediaError(path.string() + ": cannot read " + kind + ": " + reason);
    return std::string(bytes.begin(), bytes.end());
}

}  // namespace mediagen
