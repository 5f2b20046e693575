#pragma once
class Material;
class Model;
class SubModel;
class Texture;

// Draws every sub-model of the model in order, each the way its renderMode says (see
// SubModel), with the material bound around it when one is given and the texture bound, or
// texturing off when none is. Mode 2 uploads the arrays on the first draw; where the graphics
// card has no buffer objects the sub-model falls back to mode 1, drawing nothing that once.
// The buffers go when the model is destroyed.
void DrawModel(Model& model, Material* material = nullptr, Texture* texture = nullptr);
void DrawSubModel(SubModel& sub, Material* material = nullptr, Texture* texture = nullptr);
