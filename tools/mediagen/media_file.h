#pragma once
#include <cstddef>
#include <filesystem>

namespace mediagen {

// Writes one file of Media/ through a temporary file, so a failed run never leaves half a file.
// A file that already holds exactly these bytes is left alone (its time too) and false is
// returned; true when written. Throws MediaError naming the file when it cannot be written.
bool WriteMediaFile(const std::filesystem::path& path, const void* data, size_t size);

}  // namespace mediagen
