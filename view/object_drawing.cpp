#include "view/object_drawing.h"

#include <GL/glew.h>

#include <cstring>

#include "formats/model.h"
#include "graphics/model_drawing.h"
#include "level/level.h"
#include "objects/bumpers.h"
#include "objects/game_object.h"
#include "objects/triggered_game_object.h"
#include "physics/actor.h"
#include "view/object_looks.h"

namespace {

constexpr float kFlashScale = 1.2f;

void MultiplyPose(const phys::Actor& actor) {
    const Matrix4 gl = actor.GetGlobalPose().Transposed();  // GL reads column by column
    glMultMatrixf(gl.m);
}

}  // namespace

void DrawObject(GameObject& object, const Level& level, ObjectLooks& looks, float seconds) {
    Model* model = object.GetModel();
    if (!model) return;
    glPushMatrix();
    bool placed = true;
    if (std::strcmp(object.KindName(), "Track") == 0) {
        // The track's vertices are already where they belong.
        looks.TrackLight().Bind();
        DrawModel(*model, &looks.TrackTexture());
        glPopMatrix();
        return;
    }
    if (auto* bumper = dynamic_cast<Bumper*>(&object)) {
        if (const phys::Actor* actor = bumper->GetActor())
            MultiplyPose(*actor);
        else
            placed = false;
        if (placed && bumper->TakeFlash()) glScalef(kFlashScale, kFlashScale, kFlashScale);
    } else if (auto* triggered = dynamic_cast<TriggeredGameObject*>(&object)) {
        if (const phys::Actor* trigger = triggered->GetTrigger())
            MultiplyPose(*trigger);
        else
            placed = false;
    } else if (const phys::Actor* actor = object.GetActor()) {
        MultiplyPose(*actor);
    } else if (std::strcmp(object.KindName(), "TeleporterExit") == 0) {
        const Vector3 p = object.GetPosition();
        glTranslatef(p.x, p.y, p.z);
    } else {
        placed = false;
    }
    if (placed) DrawModel(*model, &looks.For(object, level, seconds));
    glPopMatrix();
}
