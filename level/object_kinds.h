#pragma once
#include <memory>
#include <string>
#include <vector>

class GameObject;
class Level;
struct LevelObject;

// What the game knows of each object kind a level file may hold: the one list of them. The
// loader builds objects with it, objects find their class model through it, the linter checks
// level files against it and the media generator writes a model for each.
struct ObjectKind {
    const char* element;          // the element name in level files, e.g. "RevGravBumper"
    const char* className;        // the object's class, e.g. "ReverseGravityBumper"
    const char* model;            // its class model's file in the media folder
    std::vector<const char*> attributes;  // its own required attributes, beyond name, x, y, radius
    std::vector<const char*> events;      // the events it raises itself
    std::vector<const char*> contents;    // the message contents it understands ("SetSpeed" takes a number)
    bool usesRadius;              // whether "radius" sizes the object (and should match its model)
    std::unique_ptr<GameObject> (*make)(Level& level, const LevelObject& object);
};

// The twelve kinds, in the order the loader tests element names.
const std::vector<ObjectKind>& ObjectKinds();
// Null for an unknown element name.
const ObjectKind* FindObjectKind(const std::string& element);
// Null for an unknown class name.
const ObjectKind* FindObjectClass(const std::string& className);
