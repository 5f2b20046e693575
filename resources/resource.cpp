#include "resources/resource.h"

#include <utility>

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
    lastUse = listener ? listener->UseStamp() : 0;
    if (!loaded) EnsureLoaded();
}

void Resource::Discard() {
    if (!loaded) return;
    loaded = false;
    Unload();
    if (listener) listener->OnUnloaded(*this);
}
