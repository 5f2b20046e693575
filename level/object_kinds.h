#pragma once
#include <string>
#include <vector>

// What the game knows of each object kind a level file may hold. The loader builds objects
// from it and the linter checks level files against it, so both always agree.
struct ObjectKind {
    const char* element;          // the element name in level files, e.g. "RevGravBumper"
    const char* className;        // the object's class, e.g. "ReverseGravityBumper"
    const char* model;            // its class model, relative to the game folder
    std::vector<const char*> attributes;  // its own required attributes, beyond name, x, y, radius
    std::vector<const char*> events;      // the events it raises itself
    std::vector<const char*> contents;    // the message contents it understands ("SetSpeed" takes a number)
    bool usesRadius;              // whether "radius" sizes the object (and should match its model)
};

// The twelve kinds, in the order the loader tests element names.
const std::vector<ObjectKind>& ObjectKinds();
// Null for an unknown element name.
const ObjectKind* FindObjectKind(const std::string& element);
