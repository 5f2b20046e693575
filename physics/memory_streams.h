#pragma once
#include <cstdint>

#include "physics/stream.h"

// A growing byte buffer that collects a cooked mesh. Reading from it gives nothing.
class MemoryWriteBuffer : public phys::Stream {
public:
    MemoryWriteBuffer() = default;
    ~MemoryWriteBuffer() override;
    MemoryWriteBuffer(const MemoryWriteBuffer&) = delete;
    MemoryWriteBuffer& operator=(const MemoryWriteBuffer&) = delete;

    uint8_t readByte() const override { return 0; }
    uint16_t readWord() const override { return 0; }
    uint32_t readDword() const override { return 0; }
    float readFloat() const override { return 0.0f; }
    double readDouble() const override { return 0.0; }
    void readBuffer(void*, uint32_t) const override {}

    phys::Stream& storeByte(uint8_t b) override;
    phys::Stream& storeWord(uint16_t w) override;
    phys::Stream& storeDword(uint32_t d) override;
    phys::Stream& storeFloat(float f) override;
    phys::Stream& storeDouble(double f) override;
    // Appends; when the bytes do not fit, the buffer grows to exactly what is needed plus 4096.
    phys::Stream& storeBuffer(const void* buffer, uint32_t size) override;

    uint32_t currentSize = 0;
    uint32_t maxSize = 0;
    uint8_t* data = nullptr;
};

// Reads back bytes that a MemoryWriteBuffer holds. It has no length: the reader must know
// how much was written, as the mesh reader does for its own cooked data.
class MemoryReadBuffer : public phys::Stream {
public:
    explicit MemoryReadBuffer(const uint8_t* data) : buffer(data) {}

    uint8_t readByte() const override;
    uint16_t readWord() const override;
    uint32_t readDword() const override;
    float readFloat() const override;
    double readDouble() const override;
    void readBuffer(void* destination, uint32_t size) const override;

    phys::Stream& storeByte(uint8_t) override { return *this; }
    phys::Stream& storeWord(uint16_t) override { return *this; }
    phys::Stream& storeDword(uint32_t) override { return *this; }
    phys::Stream& storeFloat(float) override { return *this; }
    phys::Stream& storeDouble(double) override { return *this; }
    phys::Stream& storeBuffer(const void*, uint32_t) override { return *this; }

    mutable const uint8_t* buffer;
};
