#include "tools/render/capturing_view.h"

#include <GL/glew.h>
#include <GL/glu.h>

void CapturingView::BeginScene(Level& level, float tiltDegrees) {
    drawing.BeginScene(level, tiltDegrees);
    glGetDoublev(GL_MODELVIEW_MATRIX, modelView);
    glGetDoublev(GL_PROJECTION_MATRIX, projection);
    glGetIntegerv(GL_VIEWPORT, viewport);
    tilt = tiltDegrees;
    captured = true;
}

std::optional<PicturePoint> CapturingView::Project(const Vector3& point) const {
    if (!captured) return std::nullopt;
    double x = 0, y = 0, z = 0;
    if (gluProject(point.x, point.y, point.z, modelView, projection, viewport, &x, &y, &z) != GL_TRUE)
        return std::nullopt;
    // A point behind the eye comes out of the perspective division beyond the far plane, one
    // between the eye and the near plane in front of the near plane: both outside 0 to 1.
    if (!(z >= 0.0 && z <= 1.0)) return std::nullopt;
    // GL counts rows from the bottom of the viewport; the picture counts them from its top.
    const PicturePoint screen{x - viewport[0], double(viewport[3]) - (y - viewport[1])};
    if (!(screen.x >= 0 && screen.x < viewport[2] && screen.y >= 0 && screen.y < viewport[3])) return std::nullopt;
    return screen;
}
