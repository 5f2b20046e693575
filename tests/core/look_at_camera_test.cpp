#include "core/look_at_camera.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

TEST(CameraTest, ClosesRateTimesFrameTimeOfTheDistanceAndALongFrameLandsExactly) {
    PositionLookAtCamera camera;
    camera.SetPositionRate(3);
    camera.SetTargetPosition(0, 0, 0);  // starts at (0, 0, 10)
    camera.Update(0, 0.1f);
    EXPECT_NEAR(camera.GetPosition().z, 7.0f, 1e-5f);
    camera.Update(0, 0.1f);
    EXPECT_NEAR(camera.GetPosition().z, 4.9f, 1e-5f);
    EXPECT_EQ(camera.GetPosition().x, 0.0f);

    // Awkward values, so p + (t - p) rounding away from t would show.
    camera.SetPositionRate(4);
    camera.SetLookAtRate(2);
    camera.SetTargetPosition(0.1f, -7.3f, 1e-3f);
    camera.SetTargetLookAt(123.456f, 0.3f, -0.7f);
    camera.Update(0, 0.5f);  // rates x 0.5 = 2 and 1: both saturate
    const Vector3 p = camera.GetPosition(), l = camera.LookAt();
    EXPECT_TRUE(p.x == 0.1f && p.y == -7.3f && p.z == 1e-3f);
    EXPECT_TRUE(l.x == 123.456f && l.y == 0.3f && l.z == -0.7f);
}

TEST(CameraTest, RatesThatAreNotPositiveAreIgnored) {
    PositionLookAtCamera camera;
    camera.SetPositionRate(5);
    camera.SetLookAtRate(6);
    for (float bad : {0.0f, -1.0f, std::numeric_limits<float>::quiet_NaN()}) {
        camera.SetPositionRate(bad);
        camera.SetLookAtRate(bad);
        EXPECT_EQ(camera.PositionRate(), 5.0f) << bad;
        EXPECT_EQ(camera.LookAtRate(), 6.0f) << bad;
    }
}

}  // namespace
