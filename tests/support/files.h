#pragma once
// Files for tests: a fresh folder per test, and whole files written or read in one call.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

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

// Writes the whole file, making its folders first.
inline void WriteBytes(const std::filesystem::path& path, const std::vector<uint8_t>& bytes) {
    if (path.has_parent_path()) std::filesystem::create_directories(path.parent_path());
    std::ofstream out(path, std::ios::binary);
    out.write(reinterpret_cast<const char*>(bytes.data()), std::streamsize(bytes.size()));
    ASSERT_TRUE(out.good()) << "could not write " << path;
}

inline void WriteText(const std::filesystem::path& path, const std::string& text) {
    WriteBytes(path, {text.begin(), text.end()});
}

inline std::vector<uint8_t> ReadBytes(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}
