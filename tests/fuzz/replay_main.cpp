// Runs a fuzz target without libFuzzer: every file of the folders (or the files) named on the
// command line, or else of the target's committed regressions and seeds, goes to
// LLVMFuzzerTestOneInput once, in name order, as libFuzzer would hand it over. A folder that
// does not exist holds nothing (an empty regression folder is not in git); finding no input at
// all is an error, since then a path is wrong.
//
// --gtest_repeat=N replays everything N times in one process, and other --gtest_ options are
// ignored, so the scripts that run every test program alike can run these too.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace fs = std::filesystem;

namespace {

std::vector<fs::path> InputsOf(const fs::path& path) {
    if (fs::is_regular_file(path)) return {path};
    std::vector<fs::path> inputs;
    if (!fs::is_directory(path)) return inputs;
    for (const auto& entry : fs::directory_iterator(path)) {
        // README files and the like explain a folder; they are not inputs.
        const std::string name = entry.path().filename().string();
        if (entry.is_regular_file() && name.front() != '.' && name.rfind("README", 0) != 0)
            inputs.push_back(entry.path());
    }
    std::sort(inputs.begin(), inputs.end());
    return inputs;
}

bool Replay(const fs::path& input) {
    std::ifstream in(input, std::ios::binary);
    std::vector<uint8_t> bytes{std::istreambuf_iterator<char>(in), {}};
    if (!in.good() && !in.eof()) {
        std::fprintf(stderr, "replay: cannot read %s\n", input.c_str());
        return false;
    }
    std::fprintf(stderr, "replay: %s (%zu bytes)\n", input.c_str(), bytes.size());
    // libFuzzer never passes null, even for an empty input.
    const uint8_t none = 0;
    LLVMFuzzerTestOneInput(bytes.empty() ? &none : bytes.data(), bytes.size());
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    std::vector<std::string> paths;
    int repeat = 1;
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        if (arg == "--help" || arg == "-h") {
            std::printf("usage: %s [FILE_OR_FOLDER...] [--gtest_repeat=N]\n"
                        "Feeds each input to the fuzz target once; with no path, the target's seeds and\n"
                        "regressions. Exits 0 when every input passed; an input that fails aborts.\n",
                        argv[0]);
            return 0;
        }
        if (arg.rfind("--gtest_repeat=", 0) == 0) {
            repeat = std::max(1, std::atoi(arg.c_str() + arg.find('=') + 1));
        } else if (arg.rfind("--gtest_", 0) != 0) {
            paths.push_back(arg);
        }
    }
    if (paths.empty()) paths = {VELLORAN_FUZZ_REGRESSIONS, VELLORAN_FUZZ_SEEDS};

    // Absolute now: a target may change the working directory on its first input.
    std::vector<fs::path> inputs;
    for (const std::string& path : paths) {
        for (const fs::path& input : InputsOf(fs::absolute(path))) inputs.push_back(input);
    }
    if (inputs.empty()) {
        std::fprintf(stderr, "replay: no input found in the %zu paths given\n", paths.size());
        return 1;
    }
    for (int round = 0; round < repeat; ++round) {
        for (const fs::path& input : inputs) {
            if (!Replay(input)) return 1;
        }
    }
    std::printf("replay: %zu inputs passed%s\n", inputs.size(), repeat > 1 ? ", every round" : "");
    return 0;
}
