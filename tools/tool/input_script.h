#pragma once
#include <cstdint>
#include <map>
#include <string>

// The actions a scripted player holds, frame by frame. One directive per line:
//   FRAME ACTIONS       e.g.  120 left
//   FIRST-LAST ACTIONS  e.g.  0-59 left,zoom   (inclusive, frames counted from 0)
// ACTIONS: a comma-separated list of left, right, zoom, next, nudge. '#' starts a comment.
class InputScript {
public:
    // False with `error` naming the line when a line cannot be read.
    bool Parse(const std::string& text, std::string& error);
    // Bit n set: action n is held in that frame.
    uint32_t ActionsAt(int frame) const;

private:
    std::map<int, uint32_t> actions;
};
