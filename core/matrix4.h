#pragma once
#include <cmath>

#include "core/vector3.h"

// A 4 x 4 transform of 32-bit floats, stored row-major (m[4 * row + column]), acting on column
// vectors: the translation sits at indices 3, 7 and 11.
//
// Note the product: a * b is the matrix b·a, so in a chain the LEFT operand is applied to a
// point first. t * ry * rx translates, then turns about Y, then about X.
struct Matrix4 {
    float m[16];

    Matrix4() = default;
    constexpr Matrix4(float a0, float a1, float a2, float a3, float a4, float a5, float a6, float a7, float a8,
                      float a9, float a10, float a11, float a12, float a13, float a14, float a15)
        : m{a0, a1, a2, a3, a4, a5, a6, a7, a8, a9, a10, a11, a12, a13, a14, a15} {}

    float& at(int row, int column) { return m[4 * row + column]; }
    float at(int row, int column) const { return m[4 * row + column]; }

    static Matrix4 Translation(float x, float y, float z) {
        return {1, 0, 0, x, 0, 1, 0, y, 0, 0, 1, z, 0, 0, 0, 1};
    }
    static Matrix4 RotationX(float theta) {
        float c = std::cos(theta), s = std::sin(theta);
        return {1, 0, 0, 0, 0, c, -s, 0, 0, s, c, 0, 0, 0, 0, 1};
    }
    static Matrix4 RotationY(float theta) {
        float c = std::cos(theta), s = std::sin(theta);
        return {c, 0, s, 0, 0, 1, 0, 0, -s, 0, c, 0, 0, 0, 0, 1};
    }
    static Matrix4 RotationZ(float theta) {
        float c = std::cos(theta), s = std::sin(theta);
        return {c, -s, 0, 0, s, c, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    }

    Matrix4 operator*(const Matrix4& b) const {
        Matrix4 p;
        for (int i = 0; i < 4; ++i)
            for (int j = 0; j < 4; ++j) {
                float sum = 0;
                for (int k = 0; k < 4; ++k) sum += b.at(i, k) * at(k, j);
                p.at(i, j) = sum;
            }
        return p;
    }

    Vector3 TransformPoint(const Vector3& p) const {
        float w = at(3, 0) * p.x + at(3, 1) * p.y + at(3, 2) * p.z + at(3, 3);
        float r = 1.0f / w;
        return {(at(0, 0) * p.x + at(0, 1) * p.y + at(0, 2) * p.z + at(0, 3)) * r,
                (at(1, 0) * p.x + at(1, 1) * p.y + at(1, 2) * p.z + at(1, 3)) * r,
                (at(2, 0) * p.x + at(2, 1) * p.y + at(2, 2) * p.z + at(2, 3)) * r};
    }

    Matrix4 Transposed() const {
        Matrix4 t;
        for (int i = 0; i < 4; ++i)
            for (int j = 0; j < 4; ++j) t.at(i, j) = at(j, i);
        return t;
    }
};
