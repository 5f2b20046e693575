#include "tools/render/frame_picture.h"

#include <GL/glew.h>

#include <algorithm>
#include <cstring>

FramePicture ReadBackBuffer() {
    GLint viewport[4] = {};
    glGetIntegerv(GL_VIEWPORT, viewport);
    FramePicture picture;
    picture.width = std::max(viewport[2], 0);
    picture.height = std::max(viewport[3], 0);
    const size_t rowBytes = size_t(picture.width) * 3;
    std::vector<uint8_t> bottomUp(rowBytes * size_t(picture.height));
    glReadBuffer(GL_BACK);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(viewport[0], viewport[1], picture.width, picture.height, GL_RGB, GL_UNSIGNED_BYTE,
                 bottomUp.data());
    // GL's first row is the bottom one.
    picture.rgb.resize(bottomUp.size());
    for (int row = 0; row < picture.height; ++row)
        std::memcpy(&picture.rgb[size_t(row) * rowBytes], &bottomUp[size_t(picture.height - 1 - row) * rowBytes],
                    rowBytes);
    return picture;
}
