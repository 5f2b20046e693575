#include "view/particle_drawing.h"

#include <GL/glew.h>

#include "graphics/texture.h"
#include "objects/particle_system.h"

void ParticleDrawing::Draw(const ParticleSystem& particles, Texture* atlas) {
    positions.clear();
    coords.clear();
    colours.clear();
    for (const Particle& p : particles.Particles()) {
        if (p.life == 0) continue;
        const int frame = ParticleSystem::Frame(p);
        const float u = 0.75f - float(frame % 4) * 0.25f, v = float(frame / 4) * 0.25f;
        const float x = p.position[0], y = p.position[1], z = p.position[2], h = p.size;
        const float corners[4][4] = {
            {x - h, y - h, u, v}, {x + h, y - h, u + 0.25f, v}, {x + h, y + h, u + 0.25f, v + 0.25f},
            {x - h, y + h, u, v + 0.25f}};
        for (const auto& c : corners) {
            positions.insert(positions.end(), {c[0], c[1], z});
            coords.insert(coords.end(), {c[2], c[3]});
            colours.insert(colours.end(), {p.colour[0], p.colour[1], p.colour[2]});
        }
    }
    if (positions.empty()) return;

    glDisable(GL_LIGHTING);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_COLOR, GL_ONE);
    glDepthMask(GL_FALSE);
    if (atlas) atlas->Bind();
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    glEnableClientState(GL_COLOR_ARRAY);
    glVertexPointer(3, GL_FLOAT, 0, positions.data());
    glTexCoordPointer(2, GL_FLOAT, 0, coords.data());
    glColorPointer(3, GL_FLOAT, 0, colours.data());
    glDrawArrays(GL_QUADS, 0, GLsizei(positions.size() / 3));
    glDisableClientState(GL_COLOR_ARRAY);
    glDisableClientState(GL_TEXTURE_COORD_ARRAY);
    glDisableClientState(GL_VERTEX_ARRAY);
    if (atlas) atlas->Unbind();
    glDepthMask(GL_TRUE);
    glDisable(GL_BLEND);
    glEnable(GL_LIGHTING);
}
