#pragma once
#include <string>

namespace platform {

// The folder the running program lives in, ending in '/'; "./" when it cannot be told. The
// game finds its Media/ there, whatever the working directory.
std::string ProgramFolder();

}  // namespace platform
