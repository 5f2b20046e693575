#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

// Reads a whole file into bytes, reading until its end rather than trusting a size up front
// (a device or a growing file has none). False with `reason` set ("cannot open file", "cannot
// read file", or that the file is larger than maxBytes) and bytes unspecified; reading stops
// as soon as maxBytes is passed, so /dev/zero or a huge sparse file costs at most that much.
bool ReadWholeFile(const std::string& path, size_t maxBytes, std::vector<uint8_t>& bytes, std::string& reason);

// "64 MiB", "512 KiB" or "100 bytes": a size limit as a person reads it.
std::string DescribeByteCount(size_t bytes);
