#pragma once
#include <filesystem>

#include "menu/folder_listing.h"

// A level file's name and description as the level browser shows them; a file that is not a
// level this game reads says so instead.
LevelSummary DescribeLevelFile(const std::filesystem::path& file);
