#include "graphics/gl_context.h"

namespace {
// Set by the window once the context is current and GLEW is initialised.
bool glContextAvailable = false;
}  // namespace

bool GlContextAvailable() { return glContextAvailable; }

void SetGlContextAvailable(bool available) { glContextAvailable = available; }
