#include "resources/resource.h"

#include <cmath>
#include <utility>

namespace {

std::function<double()>& ClockSource() {
    static std::function<double()> clock = [] { return 0.0; };
    return clock;
}

// Stamps are milliseconds of running time plus a sequence of up to ten uses within one
// millisecond, so uses in one frame are still ordered.
int32_t NextStamp() {
    static int32_t lastStamp = 0;
    static int32_t seq = 0;
    seq = (seq + 1) % 10;
    auto now = static_cast<int32_t>(std::trunc(ClockSource()() * 1000.0));
    if (now != lastStamp) {
        lastStamp = now;
        seq = 0;
    }
    return now + seq;
}

}  // namespace

void SetResourceClock(std::function<double()> secondsNow) {
    ClockSource() = secondsNow ? std::move(secondsNow) : [] { return 0.0; };
}

Resource::Resource(std::string path, std::string name, ILoadListener* listener)
    : name(std::move(name)), path(std::move(path)), listener(listener) {}

bool Resource::EnsureLoaded() {
    if (loaded) return true;
    int32_t bytes = Load(path);
    if (bytes < 0) return false;
    size = bytes;
    loaded = true;
    MarkUsed();
    if (listener) listener->OnLoaded(*this);
    return true;
}

void Resource::MarkUsed() {
    lastUse = NextStamp();
    if (!loaded) EnsureLoaded();
}

void Resource::Discard() {
    if (!loaded) return;
    loaded = false;
    Unload();
    if (listener) listener->OnUnloaded(*this);
}
