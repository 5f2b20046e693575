#include "tools/tool/input_script.h"

#include <sstream>

#include "level/frame_input.h"
#include "tools/tool/tool_args.h"

namespace {

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

}  // namespace

bool InputScript::Parse(const std::string& text, std::string& error) {
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
        if (last - first > 1000000) return fail("the range " + range + " is longer than a million frames");
        uint32_t bits = 0;
        std::string bad;
        if (!ReadActions(list, bits, bad))
            return fail("unknown action '" + bad + "' (use left, right, zoom, next, nudge)");
        for (int frame = first; frame <= last; ++frame) actions[frame] |= bits;
    }
    return true;
}

uint32_t InputScript::ActionsAt(int frame) const {
    auto it = actions.find(frame);
    return it == actions.end() ? 0 : it->second;
}
