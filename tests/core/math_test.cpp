#include <gtest/gtest.h>

#include "core/vector3.h"

namespace {

TEST(Vector3Test, CrossFollowsTheRightHandRuleAndNormalizeLeavesTinyVectorsAlone) {
    const Vector3 c = Vector3{0, 0, -1}.Cross({0, 1, 0});
    EXPECT_TRUE(c.x == 1 && c.y == 0 && c.z == 0);
    Vector3 v{3, 0, 4};
    v.Normalize();
    EXPECT_FLOAT_EQ(v.x, 0.6f);
    EXPECT_FLOAT_EQ(v.z, 0.8f);
    for (Vector3 tiny : {Vector3{0, 0, 0}, Vector3{1e-7f, 0, 0}}) {
        const Vector3 before = tiny;
        tiny.Normalize();
        EXPECT_TRUE(tiny.x == before.x && tiny.y == before.y && tiny.z == before.z) << before.x;
    }
}

}  // namespace
