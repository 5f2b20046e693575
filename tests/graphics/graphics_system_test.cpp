// Draws through the real window and context (under Xvfb) and reads the pixels back.
#include <GL/glew.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "formats/model.h"
#include "graphics/graphics_system.h"
#include "graphics/material.h"
#include "graphics/model_drawing.h"
#include "graphics/texture.h"
#include "graphics/window.h"
#include "resources/resource_manager.h"
#include "tests/support/tga_bytes.h"

namespace fs = std::filesystem;

namespace {

struct Rgb {
    int r, g, b;
};

class GraphicsSystemTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        folder = fs::temp_directory_path() / ("velloran-graphics-" + std::to_string(getpid()));
        fs::create_directories(folder / "Media");
        WriteBlockFont(folder / "Media" / "font.tga");
        // Top half red, bottom half blue as seen on screen: stored rows run bottom-up.
        WriteTga32(folder / "Media" / "bands.tga", 8, 8, [](int row, int) {
            return row < 4 ? Bgra{255, 0, 0, 255} : Bgra{0, 0, 255, 255};
        });
        for (const char* face : {"posx", "negx", "posy", "negy", "posz", "negz"})
            WriteTga32(folder / "Media" / (std::string("sky_") + face + ".tga"), 4, 4,
                       [](int, int) { return Bgra{0, 0, 255, 255}; });
        resources = new ResourceManager(folder.string());
        window = new Window();
        ASSERT_TRUE(window->Create("Velloran", 800, 600));
        graphics = new GraphicsSystem();
        ASSERT_TRUE(graphics->Init(window, *resources));
    }
    static void TearDownTestSuite() {
        delete graphics;
        delete window;
        delete resources;
        fs::remove_all(folder);
    }

    // Pixel at screen units (x, y), (0, 0) being the top left of the viewport.
    static Rgb At(float x, float y) {
        GLint viewport[4];
        glGetIntegerv(GL_VIEWPORT, viewport);
        int px = int(x * float(viewport[2]));
        int py = viewport[3] - 1 - int(y * float(viewport[3]));
        unsigned char rgba[4] = {};
        glReadBuffer(GL_BACK);
        glReadPixels(px, py, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, rgba);
        return {rgba[0], rgba[1], rgba[2]};
    }

    static inline fs::path folder;
    static inline ResourceManager* resources = nullptr;
    static inline Window* window = nullptr;
    static inline GraphicsSystem* graphics = nullptr;
};

void ExpectColour(Rgb got, Rgb want, const char* where) {
    EXPECT_NEAR(got.r, want.r, 8) << where;
    EXPECT_NEAR(got.g, want.g, 8) << where;
    EXPECT_NEAR(got.b, want.b, 8) << where;
}

TEST_F(GraphicsSystemTest, AFrameClearsToGreenAndAQuadShowsItsTextureUprightOverItsRectangleOnly) {
    Texture2D* bands = GetTexture(*resources, "bands");
    ASSERT_NE(bands, nullptr);
    ASSERT_NE(bands->textureName, 0u);
    graphics->BeginFrame();
    GLint viewport[4];
    glGetIntegerv(GL_VIEWPORT, viewport);
    EXPECT_EQ(viewport[2], 800);
    EXPECT_EQ(viewport[3], 600);
    graphics->Begin2D();
    graphics->DrawQuad(ScreenQuad::Make(0.5f, 0.5f, 0.25f, 0.25f), InsetTexCoords(8, 8), bands, 0);
    ExpectColour(At(0.6f, 0.55f), {255, 0, 0}, "inside, upper part");
    ExpectColour(At(0.6f, 0.7f), {0, 0, 255}, "inside, lower part");
    ExpectColour(At(0.4f, 0.6f), {0, 255, 0}, "left of it");
    ExpectColour(At(0.6f, 0.8f), {0, 255, 0}, "below it");
    ExpectColour(At(0.01f, 0.99f), {0, 255, 0}, "corner");
    graphics->DrawQuad(ScreenQuad::Make(0, 0, 1, 1), InsetTexCoords(bands->width, bands->height), bands, 0);
    ExpectColour(At(0.5f, 0.2f), {255, 0, 0}, "top half");
    ExpectColour(At(0.5f, 0.8f), {0, 0, 255}, "bottom half");
    graphics->EndFrame();
}

TEST_F(GraphicsSystemTest, CubeMapUploadsAllSixFacesAndUnloadsCleanly) {
    TextureCUBE* sky = GetCubeTexture(*resources, "sky");
    ASSERT_NE(sky, nullptr);
    ASSERT_NE(sky->textureName, 0u);
    EXPECT_EQ(sky->Size(), 6 * 4 * 4 * 4);
    sky->Bind();
    for (GLenum face = GL_TEXTURE_CUBE_MAP_POSITIVE_X; face <= GL_TEXTURE_CUBE_MAP_NEGATIVE_Z; ++face) {
        GLint width = 0;
        glGetTexLevelParameteriv(face, 0, GL_TEXTURE_WIDTH, &width);
        EXPECT_EQ(width, 4) << "face " << face - GL_TEXTURE_CUBE_MAP_POSITIVE_X;
    }
    sky->Unbind();
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_CUBE_MAP));
    sky->Discard();
    EXPECT_EQ(sky->textureName, 0u);
    sky->Bind();  // a use loads it back
    EXPECT_NE(sky->textureName, 0u);
    sky->Unbind();
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
}

TEST_F(GraphicsSystemTest, TextStandsOnItsLineWithAShadowAndAdvancesByItsSize) {
    graphics->BeginFrame();
    graphics->Begin2D();
    // One glyph: x 0.2 to 0.3, reaching up from y = 0.5 to 0.4; the shadow is 5 % of size
    // right and down.
    graphics->PrintText(0.2f, 0.5f, 1, 0, 0, 0.1f, "%c", 'A');
    ExpectColour(At(0.25f, 0.45f), {255, 0, 0}, "glyph");
    ExpectColour(At(0.302f, 0.45f), {0, 0, 0}, "shadow right of the glyph");
    ExpectColour(At(0.25f, 0.503f), {0, 0, 0}, "shadow below the glyph");
    ExpectColour(At(0.25f, 0.38f), {0, 255, 0}, "above the glyph");
    ExpectColour(At(0.15f, 0.45f), {0, 255, 0}, "left of the glyph");

    graphics->PrintText(0.1f, 0.3f, 1, 1, 1, 0.1f, "A A\nB");
    ExpectColour(At(0.15f, 0.25f), {255, 255, 255}, "first glyph");
    // The space is clear: only the shadow and the overlap of neighbours could show there.
    ExpectColour(At(0.21f, 0.22f), {0, 255, 0}, "the space");
    // Glyphs advance by 0.9 of their size: the third starts at 0.28.
    ExpectColour(At(0.33f, 0.25f), {255, 255, 255}, "third glyph");
    ExpectColour(At(0.15f, 0.35f), {255, 255, 255}, "second line, back at the first x");

    // Overlong and missing text are harmless.
    graphics->PrintText(0, 0.1f, 1, 1, 1, 0.01f, "%s", std::string(5000, 'x').c_str());
    graphics->PrintText(0, 0.1f, 1, 1, 1, 0.01f, nullptr);
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
    graphics->EndFrame();
}

// A square of side 2 facing +z at the origin, counter-clockwise seen from the front.
Model Square(int renderMode) {
    Model model;
    model.renderMode = renderMode;
    SubModel& sub = model.AddSubModel();
    for (auto [x, y] : {std::pair{-1, -1}, {1, -1}, {1, 1}, {-1, 1}}) {
        sub.AddVertex(float(x), float(y), 0);
        sub.AddTexCoord(float(x + 1) / 2, float(y + 1) / 2);
    }
    sub.AddTriangle(0, 1, 2);
    sub.AddTriangle(0, 2, 3);
    model.ComputeNormals();
    return model;
}

// The names of the buffer objects that exist among the first few.
std::vector<GLuint> LiveBuffers() {
    std::vector<GLuint> live;
    for (GLuint name = 1; name < 64; ++name)
        if (glIsBufferARB(name)) live.push_back(name);
    return live;
}

TEST_F(GraphicsSystemTest, ModelsDrawAlikeInEveryModeWithTheirMaterialAndFreeTheirBuffers) {
    // Without specular: the default shininess is refused, and the highlight would cover all.
    OGLMaterial red, green;
    red.SetDiffuse(1, 0, 0);
    green.SetDiffuse(0, 1, 0);
    red.SetSpecular(0, 0, 0);
    green.SetSpecular(0, 0, 0);
    const std::vector<GLuint> before = LiveBuffers();
    for (int mode : {0, 1, 2}) {
        SCOPED_TRACE(mode);
        Model square = Square(mode);
        for (Material* material : {static_cast<Material*>(&red), static_cast<Material*>(&green)}) {
            graphics->BeginFrame();
            graphics->Begin3D();
            glTranslatef(0, 0, -5);
            DrawModel(square, material);
            const Rgb centre = At(0.5f, 0.5f);
            if (material == &red) {
                EXPECT_GT(centre.r, 150);
                EXPECT_LT(centre.g, 100);
            } else {
                EXPECT_GT(centre.g, 150);
                EXPECT_LT(centre.r, 100) << "each material sets all its colours";
            }
            ExpectColour(At(0.05f, 0.05f), {0, 255, 0}, "outside the square: the clear colour");
            graphics->EndFrame();
        }
        EXPECT_EQ(square.GetSubModel(0).renderMode, mode) << "buffer objects exist here";
        if (mode == 2) {
            EXPECT_EQ(LiveBuffers().size(), before.size() + 4) << "vertices, normals, coordinates, indices";
        }
    }
    EXPECT_EQ(LiveBuffers(), before) << "a destroyed model leaves no buffer behind";
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR)) << "not even the default shininess, which is out of range";

    // Indices past the vertices are never drawn.
    Model broken = Square(1);
    broken.GetSubModel(0).AddTriangle(0, 1, 99);
    graphics->BeginFrame();
    graphics->Begin3D();
    glTranslatef(0, 0, -5);
    DrawModel(broken, &red);
    ExpectColour(At(0.5f, 0.5f), {0, 255, 0}, "nothing drawn");
    graphics->EndFrame();
}

}  // namespace
