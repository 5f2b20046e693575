#pragma once
#include <filesystem>
#include <string>
#include <string_view>

namespace mediagen {

// Level files are written by hand in assets/levels/ and copied to Media/ as they are, once
// they are known to be well-formed XML whose first element is <VelloranLevel>. What the
// objects in them mean is for the game and `velloran-tool lint` to judge.
// Throws MediaError "name:line: reason" for a file the game could not read at all.
void CheckLevelText(std::string_view text, const std::string& name);

// Media's subfolder for the benchmark levels (assets/benchmarks/).
inline const std::string kBenchmarkFolder = "benchmarks";

// The file's bytes, checked.
std::string ReadLevelSource(const std::filesystem::path& path);

}  // namespace mediagen
