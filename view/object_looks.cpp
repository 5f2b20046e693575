#include "view/object_looks.h"

#include <cmath>
#include <cstring>

#include "level/level.h"
#include "objects/goal.h"
#include "objects/teleporters.h"

namespace {

// A satin finish: a soft highlight that shows the shape without washing out the colour.
OGLMaterial Satin(float red, float green, float blue) {
    OGLMaterial m;
    m.SetAmbient(red * 0.35f, green * 0.35f, blue * 0.35f);
    m.SetDiffuse(red, green, blue);
    m.SetSpecular(0.35f, 0.35f, 0.35f);
    m.shininess = 40.0f;
    return m;
}

// 0 to 1 and back, `rate` times a second.
float Pulse(float seconds, float rate) { return 0.5f + 0.5f * std::sin(seconds * rate * 6.2831853f); }

bool Is(const GameObject& object, const char* kind) { return std::strcmp(object.KindName(), kind) == 0; }

}  // namespace

ObjectLooks::ObjectLooks()
    : track(Satin(1, 1, 1)),
      currentBall(Satin(1.0f, 0.78f, 0.28f)),
      ball(Satin(0.78f, 0.8f, 0.88f)),
      deadBall(Satin(0.22f, 0.22f, 0.27f)),
      bumper(Satin(0.1f, 0.82f, 0.76f)),
      reverseBumper(Satin(0.62f, 0.32f, 0.96f)),
      spawner(Satin(1.0f, 0.5f, 0.16f)),
      peg(Satin(0.72f, 0.74f, 0.82f)),
      turbine(Satin(0.32f, 0.5f, 0.86f)),
      freeTurbine(Satin(0.82f, 0.52f, 0.3f)),
      door(Satin(0.66f, 0.46f, 0.26f)),
      entrance(Satin(0.2f, 0.85f, 1.0f)),
      exit(Satin(0.92f, 0.32f, 0.82f)),
      goal(Satin(0.32f, 1.0f, 0.45f)),
      disabled(Satin(0.35f, 0.36f, 0.4f)),
      unknown(Satin(0.6f, 0.6f, 0.6f)) {
    track.SetAmbient(0.45f, 0.45f, 0.5f);
    track.SetSpecular(0.08f, 0.08f, 0.08f);
    deadBall.SetSpecular(0.05f, 0.05f, 0.05f);  // dull, as it rolls
    currentBall.SetSpecular(1, 1, 1);
}

OGLMaterial& ObjectLooks::For(const GameObject& object, const Level& level, float seconds) {
    if (object.IsBall()) {
        if (&object != level.GetCurrentBall()) return ball;
        // The ball the player moves glows, so it stands out in any crowd.
        const float glow = 0.15f + 0.2f * Pulse(seconds, 1.5f);
        currentBall.SetEmission(glow, glow * 0.7f, glow * 0.2f);
        return currentBall;
    }
    if (Is(object, "DeadBall")) return deadBall;
    if (Is(object, "Bumper")) return bumper;
    if (Is(object, "ReverseGravityBumper")) return reverseBumper;
    if (Is(object, "SpawnerBumper")) return spawner;
    if (Is(object, "Peg")) return peg;
    if (Is(object, "Turbine")) return turbine;
    if (Is(object, "FreeTurbine")) return freeTurbine;
    if (Is(object, "HingedDoor")) return door;
    if (auto* gate = dynamic_cast<const TeleporterEntrance*>(&object)) {
        if (!gate->IsEnabled()) return disabled;
        const float glow = 0.25f + 0.35f * Pulse(seconds, 1.0f);
        entrance.SetEmission(0.1f * glow, 0.6f * glow, 0.8f * glow);
        return entrance;
    }
    if (Is(object, "TeleporterExit")) {
        const float glow = 0.2f + 0.2f * Pulse(seconds, 0.8f);
        exit.SetEmission(0.7f * glow, 0.2f * glow, 0.6f * glow);
        return exit;
    }
    if (auto* target = dynamic_cast<const Goal*>(&object)) {
        if (!target->IsEnabled()) return disabled;
        const float glow = 0.3f + 0.4f * Pulse(seconds, 0.7f);
        goal.SetEmission(0.15f * glow, 0.7f * glow, 0.25f * glow);
        return goal;
    }
    return unknown;
}
