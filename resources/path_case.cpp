#include "resources/path_case.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <vector>

namespace fs = std::filesystem;

namespace {

bool SameIgnoringCase(const std::string& a, const std::string& b) {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i) {
        auto lower = [](char c) { return (c >= 'A' && c <= 'Z') ? char(c - 'A' + 'a') : c; };
        if (lower(a[i]) != lower(b[i])) return false;
    }
    return true;
}

// The entry of folder whose name matches part ignoring case, or "" when none does.
std::string FindEntry(const fs::path& folder, const std::string& part) {
    std::error_code ec;
    std::vector<std::string> matches;
    for (fs::directory_iterator it(folder.empty() ? fs::path(".") : folder, ec), end; !ec && it != end;
         it.increment(ec)) {
        std::string name = it->path().filename().string();
        if (SameIgnoringCase(name, part)) matches.push_back(name);
    }
    if (matches.empty()) return "";
    return *std::min_element(matches.begin(), matches.end());
}

}  // namespace

std::string ResolvePathCase(const std::string& path) {
    std::error_code ec;
    if (path.empty()) return "";
    if (fs::exists(path, ec)) return path;

    fs::path resolved;
    for (const fs::path& part : fs::path(path)) {
        std::string text = part.string();
        if (text.empty() || text == "/" || text == "." || text == "..") {
            resolved /= part;
            continue;
        }
        fs::path exact = resolved / part;
        if (fs::exists(exact, ec)) {
            resolved = exact;
            continue;
        }
        std::string entry = FindEntry(resolved, text);
        if (entry.empty()) return "";
        resolved /= entry;
    }
    return resolved.string();
}
