#pragma once
#include <string>

// The raw command line after the program name: the arguments joined by single spaces,
// empty when none were given. Set once at entry.
std::string& CommandLine();
std::string JoinArguments(int argc, const char* const* argv);
