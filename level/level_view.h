#pragma once
#include <string>

#include "core/vector3.h"

class Level;
class ParticleSystem;

// How a level is drawn. The frame calls these at their places in its order; a level played
// without a window has no view and skips only the drawing.
class LevelView {
public:
    virtual ~LevelView() = default;
    // The camera has glided for this frame; the scene is turned by -tiltDegrees about the
    // viewing axis.
    virtual void BeginScene(Level& level, float tiltDegrees) = 0;
    virtual void DrawSky(Level& level, float tiltDegrees) = 0;
    virtual void DrawObjects(Level& level) = 0;
    virtual void DrawParticles(const ParticleSystem& particles) = 0;
    // The quota and time lines and the dialogues that are due.
    virtual void DrawOverlay(Level& level, float remaining, float textSize) = 0;
};

// Receives what happens in play, in order: for tools that report a game.
class LevelObserver {
public:
    virtual ~LevelObserver() = default;
    virtual void OnEvent(const class GameObject& object, const std::string& event) = 0;
    virtual void OnMessage(const class GameObject& object, const std::string& content) = 0;
    // The physics switched the object's body off (it stays still where it last was fine);
    // play goes on without it.
    virtual void OnSwitchedOff(const class GameObject& object, const std::string& reason) = 0;
};
