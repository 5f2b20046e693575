#pragma once
#include <stdexcept>

namespace mediagen {

// Anything that stops a file from being generated. The message starts with the file at fault.
struct MediaError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

}  // namespace mediagen
