#include "engine/command_line.h"

std::string& CommandLine() {
    static std::string text;
    return text;
}

std::string JoinArguments(int argc, const char* const* argv) {
    std::string joined;
    for (int i = 1; i < argc; ++i) {
        if (i > 1) joined += ' ';
        joined += argv[i];
    }
    return joined;
}
