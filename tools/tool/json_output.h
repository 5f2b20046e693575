#pragma once
#include <nlohmann/json.hpp>

#include "core/vector3.h"

using Json = nlohmann::ordered_json;

// Prints one JSON object on a line of standard output. Text that is not UTF-8 (a file name
// from the command line, a level's own strings) has its bad bytes replaced, never aborts.
void PrintJson(const Json& result);

// The box round the points added, reported as {"min": [x, y, z], "max": [x, y, z]}; all zeros
// when none were added.
class BoundsJson {
public:
    void Add(const Vector3& v);
    Json ToJson() const;

private:
    bool any = false;
    Vector3 low{0, 0, 0}, high{0, 0, 0};
};
