#pragma once
class TextureCUBE;

// The sky: a cube 1200 across around the current origin, each corner showing the sky in its
// own direction. Drawn first and without depth, so it costs one pass over the screen and
// never hides the level.
void DrawSkyCube(TextureCUBE& sky);
