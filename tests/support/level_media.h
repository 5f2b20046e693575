#pragma once
// A Media/ folder with what a level needs to load: the fixed textures, a floor track, the
// turbine wheels (whose models the physics collides with) and short contact sounds. Other class
// models are left out: those objects work without them, only unseen. There is no music.
#include <filesystem>
#include <string>
#include <vector>

#include "tests/support/max_boxes.h"
#include "tests/support/tga_bytes.h"
#include "tests/support/wav_file.h"

inline void WriteLevelMedia(const std::filesystem::path& root) {
    const std::filesystem::path media = root / "Media";
    const auto grey = [](int, int) { return Bgra{128, 128, 128, 255}; };
    for (const char* face : {"posx", "negx", "posy", "negy", "posz", "negz"})
        WriteTga32(media / (std::string("sky_") + face + ".tga"), 4, 4, grey);
    for (const char* name : {"UI_dialogue", "UI_dialogue_controls", "intro_t", "smoke", "UI_dialogue_win",
                             "UI_dialogue_lose"})
        WriteTga32(media / (std::string(name) + ".tga"), 4, 4, grey);
    // A floor whose top is y = 0, from x = -100 to 100.
    WriteBytes(media / "floor.3DS", mediagen::WriteMaxFile({MaxBox("floor", {-100, -4, -3}, {100, 0, 3})}));
    // Paddle wheels of radius 4.5 around a hub, every part separate.
    std::vector<std::pair<Vector3, Vector3>> wheel = {{{-0.8f, -0.8f, -1.5f}, {0.8f, 0.8f, 1.5f}},
                                                      {{1, -0.25f, -1.5f}, {4.5f, 0.25f, 1.5f}},
                                                      {{-4.5f, -0.25f, -1.5f}, {-1, 0.25f, 1.5f}},
                                                      {{-0.25f, 1, -1.5f}, {0.25f, 4.5f, 1.5f}},
                                                      {{-0.25f, -4.5f, -1.5f}, {0.25f, -1, 1.5f}}};
    WriteBytes(media / "turbine1.3DS", mediagen::WriteMaxFile({MaxBoxes("wheel", wheel)}));
    WriteBytes(media / "turbine2.3DS", mediagen::WriteMaxFile({MaxBoxes("wheel", wheel)}));
    for (const char* sound : {"claves", "cowbell", "oriental_gong"})
        WriteToneWav(media / (std::string(sound) + ".wav"), 1, 0.05);
}
