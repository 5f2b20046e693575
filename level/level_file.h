#pragma once
#include <cstdint>
#include <string>
#include <vector>

// A level file as read, before anything is built from it. Reading follows the format's rules
// (first LevelInfo / Tracks / Objects only, document order, numbers read as stream extraction
// reads them) and records, instead of rejecting, every attribute that is missing or holds no
// number, so the loader can go on with 0 or empty text and the linter can report it.

// One attribute the format requires that was missing or not a number.
struct AttributeProblem {
    std::string attribute;
    enum Kind { Missing, NotANumber, TrailingText } kind;
};

struct LevelRule {  // a Message element
    std::string event, target, content;
    int line = 0;
    std::vector<AttributeProblem> problems;
};

struct LevelTrack {
    std::string name;
    float x = 0, y = 0;
    std::string collisionModel, renderModel;
    int line = 0;
    std::vector<AttributeProblem> problems;
};

// A child element of Objects. `kind` is the element name; the values a kind does not read
// stay 0.
struct LevelObject {
    std::string kind;
    std::string name;
    float x = 0, y = 0, radius = 0;
    float mass = 0, health = 0, force = 0, speed = 0, initialAngle = 0, quota = 0;
    int32_t count = 0;
    std::vector<std::string> exits;  // TeleportEntrance only: the non-empty Exit names, in order
    std::vector<LevelRule> rules;
    bool known = false;              // one of the twelve kinds
    int line = 0;
    std::vector<AttributeProblem> problems;
};

struct LevelFile {
    bool wellFormed = false;         // the file was read and parsed as XML, whatever it holds
    std::string rootName;            // the document's first element
    int errorLine = 0;               // when reading fails: tinyxml2's error line, or the root's line
    std::string name = "UnnamedLevel";
    std::string description;
    std::vector<LevelTrack> tracks;
    std::vector<LevelObject> objects;
};

// Reads the file. False, with `error` saying why (naming the file), when it cannot be opened,
// is larger than level_limits::kMaxFileBytes, is not well-formed XML, its first element is
// not "VelloranLevel" (rootName is then set), or it holds more tracks and objects than
// level_limits::kMaxElements (rootName set, the lists as read).
bool ReadLevelFile(const std::string& path, LevelFile& file, std::string& error);

// Numbers as stream extraction reads them: leading white space skipped, reading stops at the
// first character that cannot continue the number ("2.5m" is 2.5). False when no number
// could be read (the value is then 0); `trailing` tells whether text followed the number.
bool ReadNumber(const char* text, float& value, bool* trailing = nullptr);
bool ReadWholeNumber(const char* text, int32_t& value, bool* trailing = nullptr);
