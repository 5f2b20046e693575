#pragma once
#include <cstdint>
#include <string>
#include <vector>

// Writes an 8-bit RGB picture as a PNG file. `rgb` holds width x height pixels, three bytes
// each, rows from the top down. False with `error` set (naming the file) when it cannot be
// written; no half-written file is left behind.
bool WritePngFile(const std::string& path, int width, int height, const std::vector<uint8_t>& rgb,
                  std::string& error);
