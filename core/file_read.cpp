#include "core/file_read.h"

#include <cstdio>

bool ReadWholeFile(const std::string& path, size_t maxBytes, std::vector<uint8_t>& bytes, std::string& reason) {
    bytes.clear();
    std::FILE* file = std::fopen(path.c_str(), "rb");
    if (!file) {
        reason = "cannot open file";
        return false;
    }
    uint8_t block[65536];
    size_t got = 0;
    while ((got = std::fread(block, 1, sizeof block, file)) > 0) {
        bytes.insert(bytes.end(), block, block + got);
        if (bytes.size() > maxBytes) break;
    }
    const bool readError = std::ferror(file) != 0;
    std::fclose(file);
    if (readError) {
        reason = "cannot read file";
        return false;
    }
    if (bytes.size() > maxBytes) {
        reason = "file is larger than " + DescribeByteCount(maxBytes);
        return false;
    }
    return true;
}

std::string DescribeByteCount(size_t bytes) {
    if (bytes >= (size_t(1) << 20) && bytes % (size_t(1) << 20) == 0) return std::to_string(bytes >> 20) + " MiB";
    if (bytes >= 1024 && bytes % 1024 == 0) return std::to_string(bytes >> 10) + " KiB";
    return std::to_string(bytes) + " bytes";
}
