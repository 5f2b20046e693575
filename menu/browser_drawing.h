#pragma once

class GraphicsSystem;
class LevelBrowser;

// Draws the level browser's panel over whatever the frame holds so far, in 2D.
void DrawLevelBrowser(const LevelBrowser& browser, GraphicsSystem& graphics);
