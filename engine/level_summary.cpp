#include "engine/level_summary.h"

#include "level/level_file.h"

LevelSummary DescribeLevelFile(const std::filesystem::path& file) {
    LevelFile level;
    std::string error;
    if (!ReadLevelFile(file.string(), level, error) || !level.wellFormed)
        return {"", "Not a level this game can read."};
    // A level without its own name is shown by its file name.
    if (level.name == "UnnamedLevel" || level.name.empty()) return {"", level.description};
    return {level.name, level.description};
}
