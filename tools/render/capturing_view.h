#pragma once
#include <optional>

#include "core/vector3.h"
#include "level/level_view.h"

// Where a point of the world falls in the picture, in pixels from its top-left corner.
struct PicturePoint {
    double x, y;
};

// Passes every call on to the view that draws, and after BeginScene keeps the GL model-view
// and projection matrices and the viewport the scene is drawn with, so points can be placed
// in the picture exactly as the frame placed them, whatever the drawing view does.
class CapturingView : public LevelView {
public:
    explicit CapturingView(LevelView& drawing) : drawing(drawing) {}

    void BeginScene(Level& level, float tiltDegrees) override;
    void DrawSky(Level& level, float tiltDegrees) override { drawing.DrawSky(level, tiltDegrees); }
    void DrawObjects(Level& level) override { drawing.DrawObjects(level); }
    void DrawParticles(const ParticleSystem& particles) override { drawing.DrawParticles(particles); }
    void DrawOverlay(Level& level, float remaining, float textSize) override {
        drawing.DrawOverlay(level, remaining, textSize);
    }

    // Whether a scene has begun since this view was made.
    bool HasScene() const { return captured; }
    // The turn of the last scene about the viewing axis, in degrees.
    float SceneTilt() const { return tilt; }
    // The point under the last scene's matrices; none when no scene began, or when the point
    // lies behind the eye, outside the depth range or outside the viewport.
    std::optional<PicturePoint> Project(const Vector3& point) const;

private:
    LevelView& drawing;
    bool captured = false;
    float tilt = 0.0f;
    double modelView[16] = {};
    double projection[16] = {};
    int viewport[4] = {};
};
