#pragma once
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

// What the level browser shows of one folder.
enum class FileFilter { Levels, All };  // "*.lvl" files, or every file

// A level's own name and description, read from the file; empty title when it has none.
struct LevelSummary {
    std::string title;
    std::string description;
};
using LevelDescriber = std::function<LevelSummary(const std::filesystem::path& file)>;

struct FolderEntry {
    enum Kind { Parent, Folder, File } kind = File;
    std::string fileName;     // as on disk; ".." for the parent
    std::string title;        // what the list shows: the level's name, else the file name
    std::string description;  // under the title; may be empty
};

struct FolderListing {
    std::filesystem::path folder;   // absolute, normal form
    std::vector<FolderEntry> entries;
    std::string error;              // why the folder could not be read in full; empty when fine
};

// Lists the folder: its parent first (except at the root), then the folders, then the files
// the filter lets through, each group sorted by name ignoring case with numbers in number
// order, hidden (dot) names left out. Level files are described through `describe`; other
// files and folders show their names. At most kMaxEntries entries are listed.
FolderListing ListFolder(const std::filesystem::path& folder, FileFilter filter, const LevelDescriber& describe);

inline constexpr size_t kMaxListedEntries = 5000;

// Whether a file name ends in ".lvl", in any case.
bool IsLevelFileName(const std::string& name);
// Orders names the way a person sorts them: "level2" before "Level10".
bool NaturalLess(const std::string& a, const std::string& b);
