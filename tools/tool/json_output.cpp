#include "tools/tool/json_output.h"

#include <algorithm>
#include <cstdio>

void PrintJson(const Json& result) { std::puts(result.dump(-1, ' ', false, Json::error_handler_t::replace).c_str()); }

void BoundsJson::Add(const Vector3& v) {
    if (!any) {
        low = high = v;
        any = true;
    }
    low = {std::min(low.x, v.x), std::min(low.y, v.y), std::min(low.z, v.z)};
    high = {std::max(high.x, v.x), std::max(high.y, v.y), std::max(high.z, v.z)};
}

Json BoundsJson::ToJson() const { return {{"min", {low.x, low.y, low.z}}, {"max", {high.x, high.y, high.z}}}; }
