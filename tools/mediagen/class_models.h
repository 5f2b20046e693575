#pragma once
#include <string>
#include <vector>

#include "tools/mediagen/max_writer.h"

namespace mediagen {

// One 3DS file of Media/: its name there and its objects, in order.
struct ModelFile {
    std::string file;
    std::vector<MaxObject> objects;
};

// The model of every object kind the game knows, in the kinds' order, written to the file the
// kind names; sized as in class_sizes.h. Throws MediaError for a kind with no model drawn here. A turbine's first
// object is its collision mesh: a hub and paddles that share no corner, so the physics makes
// each a convex hull of its own.
std::vector<ModelFile> ClassModels();

}  // namespace mediagen
