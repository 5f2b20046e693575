#pragma once
#include <cstdint>
#include <vector>

// A picture of RGB pixels, three bytes each, rows from the top down.
struct FramePicture {
    int width = 0;
    int height = 0;
    std::vector<uint8_t> rgb;
};

// The frame drawn so far in the current viewport of the back buffer. Call it before the
// buffers are swapped: afterwards the back buffer's content is undefined.
FramePicture ReadBackBuffer();
