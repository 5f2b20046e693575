#pragma once
#include <cmath>

// A point or direction of 32-bit floats. Default construction leaves the components unset.
struct Vector3 {
    float x, y, z;

    Vector3() = default;
    constexpr Vector3(float x, float y, float z) : x(x), y(y), z(z) {}

    Vector3 operator+(const Vector3& b) const { return {x + b.x, y + b.y, z + b.z}; }
    Vector3& operator+=(const Vector3& b) {
        x += b.x;
        y += b.y;
        z += b.z;
        return *this;
    }
    Vector3 operator-(const Vector3& b) const { return {x - b.x, y - b.y, z - b.z}; }
    Vector3 operator*(float s) const { return {x * s, y * s, z * s}; }
    Vector3 operator-() const { return {-x, -y, -z}; }

    Vector3 Cross(const Vector3& b) const { return {y * b.z - z * b.y, z * b.x - x * b.z, x * b.y - y * b.x}; }

    // Scales to unit length in place; vectors of length 1e-6 or less are left alone.
    Vector3& Normalize() {
        float sum = x * x + y * y + z * z;
        float length = std::sqrt(sum);
        if (length > 0.000001f) {
            float inverse = 1.0f / length;
            x *= inverse;
            y *= inverse;
            z *= inverse;
        }
        return *this;
    }
};

// The direction of v: v divided by its length, each component in turn; a zero vector stays
// zero. (Unlike Normalize, which skips short vectors and multiplies by the inverse length.)
inline Vector3 DividedByLength(Vector3 v) {
    const float length = std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
    if (length != 0.0f) {
        v.x /= length;
        v.y /= length;
        v.z /= length;
    }
    return v;
}
