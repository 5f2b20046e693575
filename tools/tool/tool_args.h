#pragma once
#include <map>
#include <set>
#include <string>
#include <vector>

// The arguments of a tool command: positional words, options with a value, flags.
struct ToolArgs {
    std::vector<std::string> positional;
    std::map<std::string, std::string> values;
    std::set<std::string> flags;
    bool help = false;

    bool Has(const std::string& option) const { return values.count(option) || flags.count(option); }
    const std::string& Value(const std::string& option) const { return values.at(option); }
};

// False with `problem` set for an unknown option, an option without its value or one given
// twice. --help or -h stops reading: help is all that was asked for.
bool ParseToolArgs(const std::vector<std::string>& args, const std::set<std::string>& withValue,
                   const std::set<std::string>& flags, ToolArgs& parsed, std::string& problem);

// A whole number of at least 0, nothing else.
bool ReadCount(const std::string& text, int& value);

// Prints "velloran-tool COMMAND: problem" and the usage on standard error; returns ToolUsage.
int ToolUsageError(const std::string& command, const std::string& problem, const char* usage);
