#include "tools/tool/input_script.h"

#include <algorithm>
#include <array>
#include <sstream>

#include "level/frame_input.h"
#include "tools/tool/tool_args.h"

namespace {

constexpr int kActionCount = ActionNudge + 1;

bool ReadActions(const std::string& list, uint32_t& bits, std::string& bad) {
    static const std::pair<const char*, PlayerAction> kNames[] = {
        {"left", ActionTurnLeft}, {"right", ActionTurnRight}, {"zoom", ActionZoomOut},
        {"next", ActionNextBall}, {"nudge", ActionNudge}};
    bits = 0;
    std::stringstream items(list);
    std::string item;
    while (std::getline(items, item, ',')) {
        bool known = false;
        for (const auto& [name, action] : kNames) {
            if (item == name) {
                bits |= 1u << action;
                known = true;
            }
        }
        if (!known) {
            bad = item;
            return false;
        }
    }
    return bits != 0;
}

struct Range {
    int64_t first, last;
    uint32_t actions;
};

}  // namespace

bool InputScript::Parse(const std::string& text, std::string& error) {
    changes.clear();
    std::vector<Range> ranges;
    std::istringstream lines(text);
    std::string line;
    for (int number = 1; std::getline(lines, line); ++number) {
        if (const size_t hash = line.find('#'); hash != std::string::npos) line.erase(hash);
        std::istringstream words(line);
        std::string range, list, extra;
        if (!(words >> range)) continue;
        const auto fail = [&](const std::string& why) {
            error = "line " + std::to_string(number) + ": " + why;
            return false;
        };
        if (!(words >> list)) return fail("expected FRAME ACTIONS or FIRST-LAST ACTIONS");
        if (words >> extra) return fail("unexpected '" + extra + "' after the actions");
        int first = 0, last = 0;
        const size_t dash = range.find('-');
        if (dash == std::string::npos) {
            if (!ReadCount(range, first)) return fail("'" + range + "' is not a frame number");
            last = first;
        } else if (!ReadCount(range.substr(0, dash), first) || !ReadCount(range.substr(dash + 1), last)) {
            return fail("'" + range + "' is not a range of frames FIRST-LAST");
        }
        if (last < first) return fail("the range " + range + " ends before it begins");
        uint32_t bits = 0;
        std::string bad;
        if (!ReadActions(list, bits, bad))
            return fail("unknown action '" + bad + "' (use left, right, zoom, next, nudge)");
        ranges.push_back({first, last, bits});
    }

    // Sweep the range ends in frame order, counting for each action how many ranges hold it.
    struct Edge {
        int64_t frame;
        int step;  // +1 where a range starts, -1 just after it ends
        uint32_t actions;
    };
    std::vector<Edge> edges;
    edges.reserve(ranges.size() * 2);
    for (const Range& r : ranges) {
        edges.push_back({r.first, +1, r.actions});
        edges.push_back({r.last + 1, -1, r.actions});
    }
    std::sort(edges.begin(), edges.end(), [](const Edge& a, const Edge& b) { return a.frame < b.frame; });
    std::array<int, kActionCount> holding{};
    changes.push_back({0, 0});
    for (size_t i = 0; i < edges.size();) {
        const int64_t frame = edges[i].frame;
        for (; i < edges.size() && edges[i].frame == frame; ++i)
            for (int action = 0; action < kActionCount; ++action)
                if (edges[i].actions & (1u << action)) holding[size_t(action)] += edges[i].step;
        uint32_t held = 0;
        for (int action = 0; action < kActionCount; ++action)
            if (holding[size_t(action)] > 0) held |= 1u << action;
        if (changes.back().first == frame)
            changes.back().actions = held;
        else if (changes.back().actions != held)
            changes.push_back({frame, held});
    }
    return true;
}

uint32_t InputScript::ActionsAt(int frame) const {
    auto after = std::upper_bound(changes.begin(), changes.end(), int64_t(frame),
                                  [](int64_t f, const Change& c) { return f < c.first; });
    return after == changes.begin() ? 0 : std::prev(after)->actions;
}
