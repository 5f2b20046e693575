#pragma once
#include <cstdint>
#include <vector>

class Random;
class Texture;

// One particle: twelve floats, a free record has life 0.
struct Particle {
    float velocity[3];
    float position[3];
    float size;  // half the side of the drawn square
    float life;  // seconds left
    float initialLife;
    float colour[3];
};

// The level's fixed pool of particles: emitting takes the first free record from a moving
// cursor, updating moves every live one by an Euler step. Nothing is allocated after
// construction.
class ParticleSystem {
public:
    explicit ParticleSystem(int count);

    // Starts one particle, or does nothing when every record is live.
    void Emit(float x, float y, float z, float size, float life, float red, float green, float blue, float vx,
              float vy, float vz);
    void Update(float dt, float ax, float ay, float az);

    // The atlas frame (0 to 15) a live particle shows: 15 at birth, counting down with age.
    static int Frame(const Particle& particle);

    const std::vector<Particle>& Particles() const { return pool; }
    uint32_t Cursor() const { return cursor; }
    int LiveCount() const;

    float emitTimer = 0.0f;  // the level's trail emitter's countdown
    const Texture* texture = nullptr;  // "smoke", looked up by whoever draws the particles

private:
    bool FindFreeSlot();

    uint32_t cursor = 0;
    std::vector<Particle> pool;
};
