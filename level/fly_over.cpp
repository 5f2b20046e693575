#include "level/fly_over.h"

#include "level/level.h"
#include "objects/game_object.h"

bool FlyOverStep(Level& level, float t) {
    PositionLookAtCamera& camera = level.GetCamera();
    camera.SetPositionRate(3.0f);
    GameObject* ball = level.GetCurrentBall();
    GameObject* goal = level.GetGoal();

    float rate = 0, height = 0;
    Vector3 point{0, 0, 0};
    if (t < 3) {
        if (!ball) return false;
        rate = 1.0f;
        point = ball->GetPosition();
        height = 100 - 50 * t / 3;
    } else if (t < 6) {
        if (!ball || !goal) return false;
        float f = (t - 3) / 3;
        rate = 0.75f;
        point = ball->GetPosition() * (1 - f) + goal->GetPosition() * f;
        height = 50 + 50 * f;
    } else if (t < 8) {
        if (!goal) return false;
        rate = 1.0f;
        point = goal->GetPosition();
        height = 100;
    } else if (t < 9) {
        if (!ball || !goal) return false;
        float g = t - 8;
        rate = 0.5f;
        point = goal->GetPosition() * (1 - g) + ball->GetPosition() * g;
        height = 100;
    } else if (t < kFlyOverSeconds) {
        if (!ball) return false;
        rate = 0.75f;
        point = ball->GetPosition();
        height = 100 - 25 * (t - 9);
    } else {
        return false;
    }
    camera.SetPositionRate(rate);
    camera.SetTargetLookAt(point.x, point.y, point.z);
    camera.SetTargetPosition(point.x, point.y, point.z + height);
    return true;
}
