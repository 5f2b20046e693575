#pragma once
#include <cstddef>
#include <filesystem>
#include <string>

namespace mediagen {

// Writes one file of Media/ through a temporary file, so a failed run never leaves half a file.
// A file that already holds exactly these bytes is left alone (its time too) and false is
// returned; true when written. Throws MediaError naming the file when it cannot be written.
bool WriteMediaFile(const std::filesystem::path& path, const void* data, size_t size);

// Sources are written by hand; anything larger is not one of ours.
constexpr size_t kMaxSourceBytes = size_t(1) << 20;

// The whole text of a source file; throws MediaError naming the file, and what it should
// have been (`kind`, e.g. "track source"), when it cannot be read or is over kMaxSourceBytes.
std::string ReadSourceText(const std::filesystem::path& path, const std::string& kind);

}  // namespace mediagen
