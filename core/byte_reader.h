#pragma once
#include <cstddef>
#include <cstdint>
#include <span>

// Little-endian reads from bytes already in memory. Skipping past the end is allowed, so a
// chunk may claim more bytes than the file has; every read after that fails.
class ByteCursor {
public:
    explicit ByteCursor(std::span<const uint8_t> bytes) : bytes_(bytes) {}

    bool ReadU8(uint8_t& value);
    bool ReadU16(uint16_t& value);
    bool ReadU32(uint32_t& value);
    bool ReadFloat(float& value);
    // A negative count is a caller bug; it is ignored rather than moving backwards.
    void Skip(int64_t count);
    bool AtEnd() const { return position_ >= bytes_.size(); }

private:
    bool Take(size_t count, const uint8_t*& at);

    std::span<const uint8_t> bytes_;
    size_t position_ = 0;  // never beyond bytes_.size(): a skip past the end stops there
};
