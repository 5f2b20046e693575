#include "view/sky_drawing.h"

#include <GL/glew.h>

#include "graphics/texture.h"

namespace {

constexpr float kHalf = 600.0f;

// Corner i of the cube is +1 in x when bit 0 is set, in y for bit 1, in z for bit 2. Each
// face is wound counter-clockwise seen from inside, where the camera is.
constexpr int kFaces[6][4] = {
    {1, 5, 7, 3},  // +x
    {4, 0, 2, 6},  // -x
    {2, 3, 7, 6},  // +y
    {4, 5, 1, 0},  // -y
    {5, 4, 6, 7},  // +z
    {0, 1, 3, 2},  // -z
};

}  // namespace

void DrawSkyCube(TextureCUBE& sky) {
    glDepthMask(GL_FALSE);
    glEnable(GL_CULL_FACE);
    glCullFace(GL_BACK);
    glColor3f(1, 1, 1);
    sky.Bind();
    glBegin(GL_QUADS);
    for (const auto& face : kFaces) {
        for (int corner : face) {
            const float x = corner & 1 ? 1.0f : -1.0f, y = corner & 2 ? 1.0f : -1.0f, z = corner & 4 ? 1.0f : -1.0f;
            glTexCoord3f(x, y, z);
            glVertex3f(x * kHalf, y * kHalf, z * kHalf);
        }
    }
    glEnd();
    sky.Unbind();
    glDisable(GL_CULL_FACE);
    glDepthMask(GL_TRUE);
}
