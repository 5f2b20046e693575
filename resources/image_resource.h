#pragma once
#include <cstdint>
#include <string>

#include "resources/resource.h"

// The picture kinds as headless play uses them: a load reads and checks the TGA file (or the
// six faces of a cube map) exactly as a texture would, and keeps only its size. The graphics
// system replaces these kinds with textures that also upload their pixels.
class ImageResource : public Resource {
public:
    ImageResource(std::string path, std::string name, ILoadListener* listener, bool cube);
    int32_t Load(const std::string& path) override;
    void Unload() override {}

    int32_t width = 0;
    int32_t height = 0;
    std::string lastError;  // why the last Load failed, naming the file

private:
    bool cube;
};

class ResourceManager;
// Registers ImageResource as the manager's 2D and cube picture kinds.
void RegisterImageTypes(ResourceManager& manager);
