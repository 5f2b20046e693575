#pragma once
#include "tools/mediagen/text_layout.h"

// The one palette of the generated pictures: deep night blue and violet, teal accents, warm
// gold for highlights, off-white text.
namespace mediagen::palette {

constexpr Colour kGold{255, 204, 104};       // titles, lit things
constexpr Colour kPaleGold{255, 222, 148};   // bold words in body text
constexpr Colour kTeal{70, 200, 215};        // rules and rims
constexpr Colour kDeepTeal{36, 146, 170};
constexpr Colour kFooterTeal{120, 192, 204};
constexpr Colour kText{232, 230, 244};       // body text
constexpr Colour kViolet{150, 110, 230};

}  // namespace mediagen::palette
