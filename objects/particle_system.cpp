#include "objects/particle_system.h"

#include <cstddef>

ParticleSystem::ParticleSystem(int count) : pool(count > 0 ? std::size_t(count) : 0, Particle{}) {}

// First free record at or after the cursor, then from the start up to it. The cursor is left
// on the record found, or where it was when the pool is full.
bool ParticleSystem::FindFreeSlot() {
    const uint32_t start = cursor;
    const uint32_t size = uint32_t(pool.size());
    for (uint32_t i = start; i < size; ++i) {
        if (pool[i].life == 0.0f) {
            cursor = i;
            return true;
        }
    }
    for (uint32_t i = 0; i < start && i < size; ++i) {
        if (pool[i].life == 0.0f) {
            cursor = i;
            return true;
        }
    }
    cursor = start;
    return false;
}

void ParticleSystem::Emit(float x, float y, float z, float size, float life, float red, float green, float blue,
                          float vx, float vy, float vz) {
    if (!FindFreeSlot()) return;
    Particle& p = pool[cursor];
    p.position[0] = x;
    p.position[1] = y;
    p.position[2] = z;
    p.size = size;
    p.life = life;
    p.initialLife = life;
    p.colour[0] = red;
    p.colour[1] = green;
    p.colour[2] = blue;
    p.velocity[0] = vx;
    p.velocity[1] = vy;
    p.velocity[2] = vz;
}

void ParticleSystem::Update(float dt, float ax, float ay, float az) {
    const float acceleration[3] = {ax, ay, az};
    for (Particle& p : pool) {
        if (!(p.life > 0.0f)) continue;
        p.life -= dt;
        if (p.life < 0.0f) p.life = 0.0f;
        // A particle that just died still takes this step, so its last drawn place is right.
        for (int k = 0; k < 3; ++k) {
            p.position[k] += p.velocity[k] * dt;
            p.velocity[k] += acceleration[k] * dt;
        }
    }
}

int ParticleSystem::Frame(const Particle& particle) {
    if (particle.initialLife == 0.0f) return 0;
    const float scaled = particle.life * 16.0f / particle.initialLife;
    if (!(scaled > 0.0f)) return 0;
    if (scaled >= 15.0f) return 15;
    return int(scaled);
}

int ParticleSystem::LiveCount() const {
    int live = 0;
    for (const Particle& p : pool)
        if (p.life != 0.0f) ++live;
    return live;
}
