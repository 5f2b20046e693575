#pragma once
#include <stdexcept>
#include <string>
#include <string_view>

namespace mediagen {

// Anything that stops a file from being generated. The message starts with the file at fault.
struct MediaError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// Stops the run at a line of a hand-written source: "FILE:LINE: reason".
[[noreturn]] inline void FailAt(const std::string& file, int line, const std::string& reason) {
    throw MediaError(file + ":" + std::to_string(line) + ": " + reason);
}

// The text without the spaces, tabs and carriage returns around it.
inline std::string_view TrimSpace(std::string_view text) {
    const size_t first = text.find_first_not_of(" \t\r");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

}  // namespace mediagen
