#pragma once
#include "objects/game_object.h"

// A piece of the level's fixed geometry: its collision model's first sub-model becomes a
// static triangle mesh; its render model is drawn. Both are moved by (x, y) in their vertices
// (a model serving as both is moved once), so the actor itself stays at the origin.
class Track : public GameObject {
public:
    Track(Level& level, std::string name, float x, float y, Model& collisionModel, Model& renderModel);
    const char* KindName() const override { return "Track"; }
};
