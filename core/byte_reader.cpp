#include "core/byte_reader.h"

#include <bit>

bool ByteCursor::Take(size_t count, const uint8_t*& at) {
    if (count > bytes_.size() - position_) return false;
    at = bytes_.data() + position_;
    position_ += count;
    return true;
}

bool ByteCursor::ReadU8(uint8_t& value) {
    const uint8_t* at = nullptr;
    if (!Take(1, at)) return false;
    value = at[0];
    return true;
}

bool ByteCursor::ReadU16(uint16_t& value) {
    const uint8_t* at = nullptr;
    if (!Take(2, at)) return false;
    value = uint16_t(at[0] | (at[1] << 8));
    return true;
}

bool ByteCursor::ReadU32(uint32_t& value) {
    const uint8_t* at = nullptr;
    if (!Take(4, at)) return false;
    value = uint32_t(at[0]) | (uint32_t(at[1]) << 8) | (uint32_t(at[2]) << 16) | (uint32_t(at[3]) << 24);
    return true;
}

bool ByteCursor::ReadFloat(float& value) {
    uint32_t bits = 0;
    if (!ReadU32(bits)) return false;
    value = std::bit_cast<float>(bits);
    return true;
}

void ByteCursor::Skip(int64_t count) {
    if (count <= 0) return;
    const size_t left = bytes_.size() - position_;
    position_ = uint64_t(count) >= left ? bytes_.size() : position_ + size_t(count);
}
