#include "platform/program_folder.h"

#include <SDL2/SDL.h>

namespace platform {

std::string ProgramFolder() {
    char* base = SDL_GetBasePath();
    if (!base) return "./";
    std::string folder = base;
    SDL_free(base);
    return folder;
}

}  // namespace platform
