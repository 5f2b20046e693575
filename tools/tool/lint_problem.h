#pragma once
// What every lint check reports, and how its messages name things.
#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "level/level_file.h"

namespace lint {

struct Problem {
    bool error;  // the level breaks; otherwise a warning
    int line;
    std::string element, message;
};

inline std::string Quote(const std::string& text) { return '"' + text + '"'; }

inline std::string Number(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%g", value);
    return text;
}

// How problems name an object: its element and, when it has one, its name.
inline std::string Describe(const LevelObject& object) {
    return object.name.empty() ? object.kind : object.kind + " " + Quote(object.name);
}

inline std::string Describe(const LevelTrack& track) {
    return track.name.empty() ? std::string("Track") : "Track " + Quote(track.name);
}

// Whether an attribute was read into a usable value (trailing text still leaves one).
inline bool ReadWell(const std::vector<AttributeProblem>& problems, const std::string& attribute) {
    return std::none_of(problems.begin(), problems.end(), [&](const AttributeProblem& problem) {
        return problem.attribute == attribute && problem.kind != AttributeProblem::TrailingText;
    });
}

}  // namespace lint
