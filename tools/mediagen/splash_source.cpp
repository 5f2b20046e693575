#include <algorithm>
#include <sstream>

#include "tools/mediagen/media_error.h"
#include "tools/mediagen/media_file.h"
#include "tools/mediagen/dialogues.h"
#include "tools/mediagen/splash_screens.h"

namespace mediagen {

namespace {

std::string Trim(std::string_view text) { return std::string(TrimSpace(text)); }

void ReadHeaderLine(SplashSource& source, const std::string& line, const std::string& name, int number) {
    const size_t colon = line.find(':');
    if (colon == std::string::npos) FailAt(name, number, "expected 'key: value' before the first blank line");
    const std::string key = Trim(std::string_view(line).substr(0, colon));
    const std::string value = Trim(std::string_view(line).substr(colon + 1));
    if (key == "title") {
        source.title = value;
    } else if (key == "footer") {
        source.footer = value;
    } else if (key == "align") {
        if (value != "left" && value != "centre") FailAt(name, number, "align must be 'left' or 'centre'");
        source.align = value == "left" ? SplashSource::Align::Left : SplashSource::Align::Centre;
    } else {
        FailAt(name, number, "unknown key '" + key + "' (title, footer, align)");
    }
}

SplashSource ParsePage(std::string_view text, const std::string& name, bool needsFooter) {
    SplashSource source;
    std::istringstream lines{std::string(text)};
    std::string raw;
    bool inBody = false;
    bool anyHeader = false;
    int number = 0;
    while (std::getline(lines, raw)) {
        ++number;
        const std::string line = Trim(raw);
        if (!line.empty() && line[0] == '#') continue;
        if (!inBody) {
            if (line.empty()) {
                inBody = anyHeader;
            } else {
                ReadHeaderLine(source, line, name, number);
                anyHeader = true;
            }
            continue;
        }
        if (std::count(line.begin(), line.end(), '*') % 2 != 0) FailAt(name, number, "unpaired '*'");
        source.body.push_back(line);
    }
    if (source.title.empty()) FailAt(name, number, "no 'title:' line");
    if (needsFooter && source.footer.empty()) FailAt(name, number, "no 'footer:' line");
    // Gaps at either end of the body would only shift it.
    while (!source.body.empty() && source.body.back().empty()) source.body.pop_back();
    while (!source.body.empty() && source.body.front().empty()) source.body.erase(source.body.begin());
    return source;
}

std::string ReadText(const std::filesystem::path& path) { return ReadSourceText(path, "text source"); }

}  // namespace

SplashSource ParseSplash(std::string_view text, const std::string& name) { return ParsePage(text, name, true); }

SplashSource ReadSplash(const std::filesystem::path& path) { return ParseSplash(ReadText(path), path.string()); }

SplashSource ParseDialogue(std::string_view text, const std::string& name) { return ParsePage(text, name, false); }

SplashSource ReadDialogue(const std::filesystem::path& path) { return ParseDialogue(ReadText(path), path.string()); }

}  // namespace mediagen
