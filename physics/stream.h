#pragma once
#include <cstdint>

namespace phys {

// Serialisation interface through which cooked meshes and collision maps pass. Values move
// as raw bytes in the machine's byte order: no swapping, framing or length prefixes.
class Stream {
public:
    virtual ~Stream() = default;
    virtual uint8_t readByte() const = 0;
    virtual uint16_t readWord() const = 0;
    virtual uint32_t readDword() const = 0;
    virtual float readFloat() const = 0;
    virtual double readDouble() const = 0;
    virtual void readBuffer(void* buffer, uint32_t size) const = 0;

    virtual Stream& storeByte(uint8_t b) = 0;
    virtual Stream& storeWord(uint16_t w) = 0;
    virtual Stream& storeDword(uint32_t d) = 0;
    virtual Stream& storeFloat(float f) = 0;
    virtual Stream& storeDouble(double f) = 0;
    virtual Stream& storeBuffer(const void* buffer, uint32_t size) = 0;
};

}  // namespace phys
