#pragma once
// Builds TGA files byte by byte, so tests can make exactly the good and broken files they need.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

struct TgaFields {
    int width = 4;
    int height = 4;
    int depth = 32;
    uint8_t imageType = 2;
    uint8_t colourMapType = 0;
    uint8_t idLength = 0;  // the header field only; no ID bytes are added
};

// An 18-byte header followed by width*height*depth/8 pixel bytes counting 0, 1, 2, ...
inline std::vector<uint8_t> TgaBytes(const TgaFields& f) {
    std::vector<uint8_t> bytes(18, 0);
    bytes[0] = f.idLength;
    bytes[1] = f.colourMapType;
    bytes[2] = f.imageType;
    bytes[12] = uint8_t(f.width & 0xff);
    bytes[13] = uint8_t((f.width >> 8) & 0xff);
    bytes[14] = uint8_t(f.height & 0xff);
    bytes[15] = uint8_t((f.height >> 8) & 0xff);
    bytes[16] = uint8_t(f.depth);
    const size_t pixelBytes = size_t(f.width) * size_t(f.height) * size_t(f.depth / 8);
    for (size_t i = 0; i < pixelBytes; ++i) bytes.push_back(uint8_t(i));
    return bytes;
}

inline void WriteBytes(const std::filesystem::path& path, const std::vector<uint8_t>& bytes) {
    std::ofstream out(path, std::ios::binary);
    out.write(reinterpret_cast<const char*>(bytes.data()), std::streamsize(bytes.size()));
    ASSERT_TRUE(out.good()) << "could not write " << path;
}

// A fresh directory per test, removed afterwards; the pid keeps parallel test runs apart.
class TempDir {
public:
    TempDir() {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        std::string name = "velloran-";
        if (info) name += std::string(info->test_suite_name()) + "-" + info->name() + "-";
        name += std::to_string(getpid());
        for (char& c : name) {
            if (c == '/') c = '_';  // parameterised test names contain slashes
        }
        path_ = std::filesystem::temp_directory_path() / name;
        std::filesystem::remove_all(path_);
        std::filesystem::create_directories(path_);
    }
    ~TempDir() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    std::string File(const std::string& name) const { return (path_ / name).string(); }

private:
    std::filesystem::path path_;
};
