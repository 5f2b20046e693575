#pragma once
#include <cstdint>
#include <string>

#include "resources/resource.h"

struct TgaImage;

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

// A texture the resource manager owns: binding marks the use (which loads evicted data back),
// and unloading deletes the texture object. Subclasses only read and upload their files.
class ManagedTexture : public Texture, public Resource {
public:
    ~ManagedTexture() override;
    void Unload() override;
    void Bind() override;
    void Unbind() override;

    int32_t width = 0;
    int32_t height = 0;
    std::string lastError;  // why the last Load failed, naming the file

protected:
    // target is the GL texture target (GL_TEXTURE_2D or GL_TEXTURE_CUBE_MAP).
    ManagedTexture(std::string path, std::string name, ILoadListener* listener, unsigned target);
    // Deletes any object a failed load left behind and makes a fresh one bound to target.
    void MakeTextureObject();
    // Uploads one image to target (the texture's own, or one cube face), stored as RGBA8.
    static void Upload(unsigned target, const TgaImage& image);

private:
    unsigned target;
};

// One 2D image from a TGA file.
class Texture2D : public ManagedTexture {
public:
    Texture2D(std::string path, std::string name, ILoadListener* listener);
    int32_t Load(const std::string& path) override;
};

// A cube map from six TGA files named by the path of any face (formats/cube_faces.h).
class TextureCUBE : public ManagedTexture {
public:
    TextureCUBE(std::string path, std::string name, ILoadListener* listener);
    int32_t Load(const std::string& path) override;
};

class ResourceManager;
// Makes Texture2D and TextureCUBE the manager's two picture kinds, in place of the headless ones.
void RegisterTextureTypes(ResourceManager& manager);
// The named texture, or null when it is not found, does not load, or was made by another kind.
Texture2D* GetTexture(ResourceManager& manager, const std::string& name);
TextureCUBE* GetCubeTexture(ResourceManager& manager, const std::string& name);
