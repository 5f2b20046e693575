#pragma once
#include <nlohmann/json.hpp>

using Json = nlohmann::ordered_json;

// Prints one JSON object on a line of standard output. Text that is not UTF-8 (a file name
// from the command line, a level's own strings) has its bad bytes replaced, never aborts.
void PrintJson(const Json& result);
