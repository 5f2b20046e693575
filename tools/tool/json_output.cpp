#include "tools/tool/json_output.h"

#include <cstdio>

void PrintJson(const Json& result) { std::puts(result.dump(-1, ' ', false, Json::error_handler_t::replace).c_str()); }
