#pragma once
#include <string>
#include <vector>

// Fitting text drawn with the game's fixed-width font into a width of the screen.

// How many characters of the given size fit in the width, narrowed as the dialogs draw them.
int CharsThatFit(float width, float size);
// The text cut to at most maxChars, ending in "..." when something was cut.
std::string FitEnd(const std::string& text, int maxChars);
// The same cut from the front, for paths whose end matters most: ".../Media/levels".
std::string FitStart(const std::string& text, int maxChars);
// Breaks the text at blanks into lines of at most maxChars (a longer word is cut); beyond
// maxLines the last line ends in "...".
std::vector<std::string> WrapWords(const std::string& text, int maxChars, int maxLines);

// Dialog text is drawn at three quarters of the glyphs' width, so that on a 4:3 window they
// keep their shape, and set closer than the game's spaced-out overlay text.
inline constexpr float kNarrowScale = 0.75f;
inline constexpr float kNarrowSpacing = 0.66f;
// What each glyph advances, in sizes of the screen's x units.
inline constexpr float kNarrowAdvance = kNarrowScale * kNarrowSpacing;
