#include <gtest/gtest.h>

#include <cstring>
#include <numbers>

#include "core/matrix4.h"
#include "core/vector3.h"

namespace {

constexpr float kQuarterTurn = std::numbers::pi_v<float> / 2;
constexpr float kTolerance = 1e-6f;

void ExpectNear(const Vector3& actual, const Vector3& expected) {
    EXPECT_NEAR(actual.x, expected.x, kTolerance);
    EXPECT_NEAR(actual.y, expected.y, kTolerance);
    EXPECT_NEAR(actual.z, expected.z, kTolerance);
}

TEST(Matrix4Test, LeftOperandOfAProductActsFirst) {
    const Vector3 origin{0, 0, 0};
    // Move out along X, then turn: the point swings round onto Y.
    ExpectNear((Matrix4::Translation(1, 0, 0) * Matrix4::RotationZ(kQuarterTurn)).TransformPoint(origin), {0, 1, 0});
    // Turn first: the origin stays put and is then moved.
    ExpectNear((Matrix4::RotationZ(kQuarterTurn) * Matrix4::Translation(1, 0, 0)).TransformPoint(origin), {1, 0, 0});

    // A three-step chain reads left to right: translate, about Y, about X.
    const Matrix4 t = Matrix4::Translation(1, 0, 0);
    const Matrix4 ry = Matrix4::RotationY(kQuarterTurn);
    const Matrix4 rx = Matrix4::RotationX(kQuarterTurn);
    ExpectNear((t * ry * rx).TransformPoint(origin), {0, 1, 0});
    ExpectNear((t * (ry * rx)).TransformPoint(origin), {0, 1, 0});
}

TEST(Matrix4Test, RotationsTurnCounterClockwiseAboutTheirAxis) {
    ExpectNear(Matrix4::RotationY(kQuarterTurn).TransformPoint({0, 0, -1}), {-1, 0, 0});
    ExpectNear(Matrix4::RotationX(kQuarterTurn).TransformPoint({0, 1, 0}), {0, 0, 1});
    ExpectNear(Matrix4::RotationZ(kQuarterTurn).TransformPoint({1, 0, 0}), {0, 1, 0});
    ExpectNear(Matrix4::Translation(1, 2, 3).TransformPoint({0, 0, 0}), {1, 2, 3});
}

TEST(Matrix4Test, TransposingTwiceRestoresEveryBit) {
    Matrix4 m;
    for (int i = 0; i < 16; ++i) m.m[i] = 0.1f * float(i) - 0.75f;
    m.m[5] = -0.0f;
    const Matrix4 twice = m.Transposed().Transposed();
    EXPECT_EQ(std::memcmp(twice.m, m.m, sizeof m.m), 0);
    EXPECT_EQ(m.Transposed().at(1, 3), m.at(3, 1));
}

TEST(Vector3Test, CrossFollowsTheRightHandRule) {
    const Vector3 c = Vector3{0, 0, -1}.Cross({0, 1, 0});
    EXPECT_FLOAT_EQ(c.x, 1);
    EXPECT_FLOAT_EQ(c.y, 0);
    EXPECT_FLOAT_EQ(c.z, 0);
}

TEST(Vector3Test, NormalizeScalesToUnitLengthButLeavesTinyVectorsAlone) {
    Vector3 v{3, 0, 4};
    ExpectNear(v.Normalize(), {0.6f, 0, 0.8f});

    Vector3 zero{0, 0, 0};
    zero.Normalize();
    EXPECT_EQ(zero.x, 0.0f);
    EXPECT_EQ(zero.y, 0.0f);
    EXPECT_EQ(zero.z, 0.0f);

    Vector3 tiny{1e-7f, 0, 0};
    tiny.Normalize();
    EXPECT_EQ(tiny.x, 1e-7f);
    EXPECT_EQ(tiny.y, 0.0f);
    EXPECT_EQ(tiny.z, 0.0f);
}

}  // namespace
