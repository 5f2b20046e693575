#pragma once
#include <string>

// Finds an existing file or folder for a path whose letter case may differ from the disk's,
// as level files and code written for a case-blind file system expect ("media/x" reaches
// "Media/x"). An exact match is preferred; otherwise each missing component is matched
// against its folder's entries ignoring ASCII case, the first in name order winning.
// Returns the path as it exists on disk, or "" when nothing matches.
std::string ResolvePathCase(const std::string& path);
