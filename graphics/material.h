#pragma once
class Texture;

// The surface state a model sets before it is drawn and undoes after.
class Material {
public:
    virtual void Bind() = 0;
    virtual void Unbind() = 0;

protected:
    ~Material() = default;
};

// Fixed-function lighting colours, red, green, blue, alpha, for front faces.
class OGLMaterial : public Material {
public:
    void SetAmbient(float red, float green, float blue) { Set(ambient, red, green, blue); }
    void SetDiffuse(float red, float green, float blue) { Set(diffuse, red, green, blue); }
    void SetSpecular(float red, float green, float blue) { Set(specular, red, green, blue); }
    void SetEmission(float red, float green, float blue) { Set(emission, red, green, blue); }
    // Sets all five values, so a material bound after another shows only its own.
    void Bind() override;
    // The state stays until the next material is bound.
    void Unbind() override {}

    float ambient[4] = {0.3f, 0.3f, 0.3f, 0.3f};
    float diffuse[4] = {1, 1, 1, 1};
    float specular[4] = {1, 1, 1, 1};
    float emission[4] = {0, 0, 0, 1};
    // Beyond the 0 to 128 that lighting accepts, so the shininess in effect stays as it is.
    float shininess = 256.0f;

private:
    static void Set(float* colour, float red, float green, float blue) {
        colour[0] = red;
        colour[1] = green;
        colour[2] = blue;
    }
};

// Binds one texture; the texture is set by the material's owner before use.
class TextureMaterial : public Material {
public:
    virtual ~TextureMaterial() = default;
    // Nothing to bind without a texture.
    void Bind() override;
    void Unbind() override;

    Texture* texture = nullptr;
};
