// velloran-tool render: velloran-tool links no window or GL library, so the drawing is done by
// velloran-render, built beside it, which this replaces the running program with.
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>

#include "tools/tool/commands.h"
#include "tools/tool/json_output.h"

int RunRender(const std::vector<std::string>& args) {
    std::error_code ec;
    const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", ec);
    const std::string program = ((ec ? std::filesystem::path(".") : self.parent_path()) / "velloran-render").string();
    std::vector<std::string> words = {program};
    words.insert(words.end(), args.begin(), args.end());
    std::vector<char*> argv;
    for (std::string& word : words) argv.push_back(word.data());
    argv.push_back(nullptr);
    std::fflush(stdout);
    execv(program.c_str(), argv.data());
    const int error = errno;
    PrintJson({{"ok", false},
               {"error", "cannot run " + program + ": " + std::strerror(error) +
                             " (velloran-render draws the pictures and is built beside velloran-tool)"}});
    return ToolBadInput;
}
