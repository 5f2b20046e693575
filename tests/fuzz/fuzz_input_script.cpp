// Any bytes as the simulator's input script, then asked for the actions of frames spread from
// the first to the last a script can name. A script that does not parse says which line and
// holds nothing; one that parses names only the five actions.
#include <climits>
#include <cstddef>
#include <cstdint>
#include <string>

#include "tests/fuzz/fuzz_check.h"
#include "tools/tool/input_script.h"

namespace {

constexpr uint32_t kAllActions = (1u << 5) - 1;

// The first frames one by one, where short scripts act, then every power of two and its
// neighbours up to the largest frame.
template <class Visit>
void ForSpreadOfFrames(Visit visit) {
    for (int frame = 0; frame < 128; ++frame) visit(frame);
    for (int shift = 7; shift < 31; ++shift) {
        const int power = 1 << shift;
        visit(power - 1);
        visit(power);
        visit(power + 1);
    }
    visit(INT_MAX - 1);
    visit(INT_MAX);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    InputScript script;
    std::string error;
    if (!script.Parse(text, error)) {
        Require(error.rfind("line ", 0) == 0, "a script that does not parse names the line");
        ForSpreadOfFrames([&](int frame) {
            Require(script.ActionsAt(frame) == 0, "a script that does not parse holds no action");
        });
        return 0;
    }
    ForSpreadOfFrames([&](int frame) {
        Require((script.ActionsAt(frame) & ~kAllActions) == 0, "a script holds only the five actions");
    });
    return 0;
}
