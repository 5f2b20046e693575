#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

// The actions a scripted player holds, frame by frame. One directive per line:
//   FRAME ACTIONS       e.g.  120 left
//   FIRST-LAST ACTIONS  e.g.  0-59 left,zoom   (inclusive, frames counted from 0)
// ACTIONS: a comma-separated list of left, right, zoom, next, nudge. '#' starts a comment.
//
// The script keeps its ranges, never single frames, so a line's cost does not depend on how
// many frames it spans: a million-frame range is as cheap as one frame.
class InputScript {
public:
    // Scripts larger than this are not scripts a person wrote.
    static constexpr size_t kMaxBytes = size_t(1) << 20;

    // False with `error` naming the line when a line cannot be read; the script is then empty.
    bool Parse(const std::string& text, std::string& error);
    // Bit n set: action n is held in that frame.
    uint32_t ActionsAt(int frame) const;

private:
    // From `first` on (until the next change), exactly these actions are held.
    struct Change {
        int64_t first;
        uint32_t actions;
    };
    std::vector<Change> changes;  // sorted by first, first entry at frame 0
};
