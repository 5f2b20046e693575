#include "tools/tool/tool_args.h"

#include <cctype>
#include <cstdio>
#include <cstdlib>

#include "tools/tool/commands.h"

bool ParseToolArgs(const std::vector<std::string>& args, const std::set<std::string>& withValue,
                   const std::set<std::string>& flags, ToolArgs& parsed, std::string& problem) {
    for (size_t i = 0; i < args.size(); ++i) {
        const std::string& arg = args[i];
        if (arg == "--help" || arg == "-h") {
            // Asked for help, nothing else counts.
            parsed.help = true;
            return true;
        } else if (withValue.count(arg)) {
            if (i + 1 >= args.size()) {
                problem = arg + " needs a value";
                return false;
            }
            if (!parsed.values.emplace(arg, args[i + 1]).second) {
                problem = arg + " given twice";
                return false;
            }
            ++i;
        } else if (flags.count(arg)) {
            parsed.flags.insert(arg);
        } else if (arg.size() > 1 && arg[0] == '-') {
            problem = "unknown option " + arg;
            return false;
        } else {
            parsed.positional.push_back(arg);
        }
    }
    return true;
}

bool ReadCount(const std::string& text, int& value) {
    if (text.empty() || text.size() > 9) return false;
    for (char c : text)
        if (!std::isdigit(static_cast<unsigned char>(c))) return false;
    value = std::atoi(text.c_str());
    return true;
}

int ToolUsageError(const std::string& command, const std::string& problem, const char* usage) {
    std::fprintf(stderr, "velloran-tool %s: %s\n\n%s", command.c_str(), problem.c_str(), usage);
    return ToolUsage;
}
