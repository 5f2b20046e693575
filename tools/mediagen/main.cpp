// velloran-mediagen: writes the game's Media/ folder from the sources in assets/. The same
// sources always give byte-identical files. Exit 0 on success, 1 on any error, 2 on bad usage.
#include <cstdio>
#include <exception>
#include <iostream>

#include "tools/mediagen/media_gen.h"

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fputs("usage: velloran-mediagen ASSETS_DIR MEDIA_OUT_DIR\n", stderr);
        return 2;
    }
    try {
        mediagen::GenerateMedia(argv[1], argv[2], mediagen::SystemFonts(), std::cout);
    } catch (const std::exception& e) {  // MediaError and filesystem errors both name the file
        std::fprintf(stderr, "mediagen: error: %s\n", e.what());
        return 1;
    }
    return 0;
}
