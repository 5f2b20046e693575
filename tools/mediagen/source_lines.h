#pragma once
#include <sstream>
#include <string>
#include <string_view>

#include "tools/mediagen/media_error.h"

namespace mediagen {

// Calls use(key, value, line) for every "key: value" line of a hand-written source, in order,
// with '#' comments and blank lines left out; any other line stops the run naming it. Gives
// the number of lines read, so what is missing can be blamed on the last.
template <class Use>
int ForEachKeyValue(std::string_view text, const std::string& name, Use use) {
    int number = 0;
    std::istringstream lines{std::string(text)};
    std::string raw;
    while (std::getline(lines, raw)) {
        ++number;
        const std::string_view line = TrimSpace(std::string_view(raw).substr(0, raw.find('#')));
        if (line.empty()) continue;
        const size_t colon = line.find(':');
        if (colon == std::string_view::npos) FailAt(name, number, "expected 'key: value'");
        use(TrimSpace(line.substr(0, colon)), TrimSpace(line.substr(colon + 1)), number);
    }
    return number;
}

}  // namespace mediagen
