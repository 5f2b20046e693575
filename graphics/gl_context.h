#pragma once

// Whether a GL context is current and its entry points are loaded. Without one, textures
// still read and check their files and report their sizes, but upload nothing; this is
// how the tools and headless play use the same resources as the windowed game.
bool GlContextAvailable();
void SetGlContextAvailable(bool available);
