// One frame of play: tilt and gravity, the camera, the physics step, every object's update,
// the particles, the drawing and the rules, in this order.
#include <cmath>

#include "core/random.h"
#include "level/level.h"
#include "level/level_view.h"
#include "objects/ball.h"
#include "objects/particle_emitters.h"
#include "objects/particle_system.h"
#include "level/level_sounds.h"
#include "physics/physics_system.h"

namespace {

constexpr float kTiltRate = 3.0f;  // radians per second while a turn key is held
constexpr float kZoomOut = 200.0f;
constexpr float kCameraHeight = 40.0f;
constexpr float kCameraCeiling = 500.0f;
constexpr double kDialogueSeconds = 5.0;
constexpr int32_t kMusicRepeatVolume = -1500;

// The tilt is shown in degrees through this rough pi, and gravity turns by those degrees
// through a finer one; the two must stay as they are for play to stay as it is.
constexpr float kDegreesPi = 3.1415f;
constexpr float kRadiansPi = 3.14159265f;

// Particles fall the gravity's way at this fixed acceleration, however strong the level's.
constexpr float kParticleGravity = 9.81f;
// The ball's trail puffs at an interval that swings with the clock.
constexpr float kTrailSwingRate = 3.0f;
constexpr float kTrailSwingInterval = 0.05f;
constexpr float kTrailMinInterval = 0.005f;

// The time line's text size, and its pulse in the last fifths of each of the last seconds.
constexpr float kTextSize = 0.05f;
constexpr float kPulseFrom = 30.0f;
constexpr float kPulseStart = 0.8f;
constexpr float kPulseLength = 0.2f;
constexpr float kPulseSize = 0.0025f;
constexpr float kPulsePi = 3.14f;

}  // namespace

// The base gravity turned counter-clockwise about z by the tilt, as a unit quaternion
// rotation. The tilt goes through degrees with 3.1415, as the picture's turn does.
Vector3 Level::TiltedGravity() const {
    const float degrees = tilt * 180.0f / kDegreesPi;
    const float half = degrees * kRadiansPi / 180.0f * 0.5f;
    const float s = std::sin(half), c = std::cos(half);
    const Vector3 v = baseGravity;
    // v + 2c (q x v) + 2 q x (q x v), with q = (0, 0, s) the quaternion's vector part.
    return {v.x + 2 * c * (-s * v.y) - 2 * s * s * v.x, v.y + 2 * c * (s * v.x) - 2 * s * s * v.y, v.z};
}

void Level::Frame(const FrameInput& frame) {
    input = frame;
    const Vector3 gravity = TiltedGravity();
    const float degrees = tilt * 180.0f / kDegreesPi;
    bool nudged = false;

    if (!intro) {
        GameObject* ball = GetCurrentBall();
        if (!won && !lost) {
            if (frame.Down(ActionTurnLeft)) tilt += kTiltRate * frame.dt;
            if (frame.Down(ActionTurnRight)) tilt -= kTiltRate * frame.dt;
            if (frame.Released(ActionNudge) && ball) {
                static_cast<Ball*>(ball)->Nudge(GetRandom());
                nudged = true;
            }
        }
        zoom = frame.Down(ActionZoomOut) ? kZoomOut : 0.0f;
        if (frame.Released(ActionNextBall) && !balls.empty())
            currentBall = (currentBall + 1) % int(balls.size());
        if (services.physics) services.physics->SetGravity(gravity);
        if (GameObject* current = GetCurrentBall()) {
            const Vector3 b = current->GetPosition();
            const Vector3 v = current->GetVelocity();
            const float distance =
                std::min(std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z) + kCameraHeight + zoom, kCameraCeiling);
            camera.SetTargetPosition(b.x, b.y, distance);
            camera.SetTargetLookAt(b.x, b.y, b.z);
        }
        if (services.physics) services.physics->Step(frame.step);
        HandleContacts();
        ReportSwitchedOff();
        UpdateObjects();
    }

    // The scene: the camera glides whether or not anything is drawn.
    camera.Update(float(frame.now), frame.dt);
    if (services.view) {
        services.view->BeginScene(*this, degrees);
        services.view->DrawSky(*this, degrees);
        services.view->DrawObjects(*this);
    }

    if (particles) {
        particles->emitTimer -= frame.dt;
        GameObject* current = GetCurrentBall();
        if (particles->emitTimer <= 0 && current) {
            EmitBallTrail(*particles, GetRandom(), current->GetPosition(), baseGravity.y < 0);
            const float s = std::sin(kTrailSwingRate * float(frame.now));
            particles->emitTimer = kTrailSwingInterval * s * s + kTrailMinInterval;
        }
        if (nudged && current) EmitNudgeBurst(*particles, GetRandom(), current->GetPosition());
        const float length = std::sqrt(gravity.x * gravity.x + gravity.y * gravity.y + gravity.z * gravity.z);
        const Vector3 a = length != 0.0f ? gravity * (kParticleGravity / length) : Vector3(0, 0, 0);
        particles->Update(frame.dt, a.x, a.y, a.z);
        if (services.view) services.view->DrawParticles(*particles);
    }

    const float remaining = float(timeLimit - elapsed);
    float textSize = kTextSize;
    if (remaining < kPulseFrom) {
        const float f = std::fmod(remaining, 1.0f);
        if (f > kPulseStart)
            textSize = kTextSize + kPulseSize * std::sin((f - kPulseStart) / kPulseLength * kPulsePi * 2);
    }
    if (services.view) services.view->DrawOverlay(*this, remaining, textSize);

    ApplyRules(remaining);
    if (services.sounds) services.sounds->RepeatMusic(kMusicRepeatVolume);
}

// Objects added during the loop are updated this frame; removing one at or before the
// updating object skips the one that followed it, this frame only.
void Level::UpdateObjects() {
    for (size_t i = 0; i < objects.size(); ++i) objects[i]->Update();
}

void Level::ApplyRules(float remaining) {
    bool justWon = false;
    if (!won) {
        const double need = std::ceil(double(ballCount) * double(quota));
        if (collected >= need) {
            won = true;
            dialogueTimer = kDialogueSeconds;
            justWon = true;
        }
    }
    if (!justWon && !lost && remaining <= 0) {
        lost = true;
        dialogueTimer = kDialogueSeconds;
    }
    if ((won || lost) && dialogueTimer <= 0) finished = true;
    if (!intro) {
        dialogueTimer -= input.dt;
        elapsed += input.dt;
    }
}
