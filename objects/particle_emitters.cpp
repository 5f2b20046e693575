#include "objects/particle_emitters.h"

#include <cmath>

#include "core/random.h"
#include "objects/particle_system.h"

// Random draws are taken into locals one statement at a time: the order of a call's
// arguments is unspecified, and replays depend on the order of draws.

namespace {
constexpr float kPi = 3.14159f;
}

void EmitBumperSparks(ParticleSystem& particles, Random& random, const Vector3& b, const Vector3& d, int count) {
    const float heading = std::atan2(d.y, d.x);
    for (int i = 0; i < count; ++i) {
        const float t = float(random.Next()) * 2.0f / 32767.0f - 1.0f;
        // Cubing keeps most sparks close to the kick and lets a few fan out to 45 degrees.
        const float angle = heading + t * t * t * kPi * 0.25f;
        particles.Emit(b.x, b.y, b.z, 3.0f, 1.0f, 0.4f, 0.8f, 0.5f, 20.0f * std::cos(angle),
                       20.0f * std::sin(angle), 0.0f);
    }
}

void EmitGoalFountain(ParticleSystem& particles, Random& random, const Vector3& b) {
    for (int i = 0; i < 20; ++i) {
        const float f = float(i) / 20.0f;
        const float a = random.Unit() * kPi * 2.0f;
        particles.Emit(b.x, b.y, b.z, 3.0f, 3.0f, 1.0f - f, f, 0.5f, 15.0f * std::cos(a), 15.0f * std::sin(a),
                       (f + 0.2f) * 10.0f);
    }
}

void EmitTeleporterSwirl(ParticleSystem& particles, Random& random, const Vector3& b) {
    for (int i = 0; i < 5; ++i) {
        const float a = random.Unit() * kPi * 2.0f;
        const float distance = random.Unit() * 2.0f + 5.0f;
        const float c = random.Unit() * 0.3f + 0.7f;
        const float cosA = std::cos(a);
        const float sinA = std::sin(a);
        particles.Emit(b.x + distance * cosA, b.y + distance * sinA, b.z + 5.0f, 0.5f, 1.0f, c, c, c, -7.0f * cosA,
                       -7.0f * sinA, -5.0f);
    }
}

void EmitTeleporterBurst(ParticleSystem& particles, const Vector3& p) {
    for (int m = 0; m < 10; ++m) {
        const float a = float(m) / 10.0f * kPi * 2.0f;
        particles.Emit(p.x, p.y, 0.0f, 10.0f, 2.0f, 0.8f, 0.8f, 0.6f, 20.0f * std::cos(a), 20.0f * std::sin(a), 0.0f);
    }
}

void EmitBallTrail(ParticleSystem& particles, Random& random, const Vector3& ball, bool gravityDown) {
    const float vx = random.Unit() - 0.5f;
    const float vy = random.Unit() - 0.5f;
    const float red = gravityDown ? 0.5f : 0.8f;
    const float blue = gravityDown ? 0.8f : 0.5f;
    particles.Emit(ball.x, ball.y, ball.z, 1.5f, 3.0f, red, 0.5f, blue, vx, vy, 0.0f);
}

void EmitNudgeBurst(ParticleSystem& particles, Random& random, const Vector3& ball) {
    for (int i = 0; i < 50; ++i) {
        const float a = float(i) / 50.0f * kPi * 2.0f;
        const float s1 = (random.Unit() * 0.2f + 0.8f) * 20.0f;
        const float s2 = (random.Unit() * 0.2f + 0.8f) * 20.0f;
        particles.Emit(ball.x, ball.y, ball.z, 0.85f, 1.0f, 0.7f, 0.8f, 0.3f, std::sin(a) * s1, std::cos(a) * s2,
                       0.0f);
    }
}
