#pragma once
#include <cstdint>
#include <string>

#include "resources/resource.h"

// A texture in graphics memory. Bind before submitting geometry, Unbind after.
class Texture {
public:
    virtual void Bind() = 0;
    virtual void Unbind() = 0;

    uint32_t textureName = 0;  // 0 while no texture object exists
    int32_t unit = 0;          // texture unit, counted from 0

protected:
    ~Texture() = default;
};

// One 2D image from a TGA file.
class Texture2D : public Texture, public Resource {
public:
    Texture2D(std::string path, std::string name, ILoadListener* listener);
    ~Texture2D() override;
    int32_t Load(const std::string& path) override;
    void Unload() override;
    void Bind() override;
    void Unbind() override;

    int32_t width = 0;
    int32_t height = 0;
    std::string lastError;  // why the last Load failed, naming the file
};

// A cube map from six TGA files named by the path of any face: the last nine characters
// ("_posx.tga") are replaced by each face suffix in turn.
class TextureCUBE : public Texture, public Resource {
public:
    TextureCUBE(std::string path, std::string name, ILoadListener* listener);
    ~TextureCUBE() override;
    int32_t Load(const std::string& path) override;
    void Unload() override;
    void Bind() override;
    void Unbind() override;

    int32_t width = 0;
    int32_t height = 0;
    std::string lastError;
};

// Registers Texture2D and TextureCUBE as the manager's two texture kinds.
class ResourceManager;
void RegisterTextureTypes(ResourceManager& manager);
