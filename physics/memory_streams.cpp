#include "physics/memory_streams.h"

#include <cstring>

MemoryWriteBuffer::~MemoryWriteBuffer() { delete[] data; }

phys::Stream& MemoryWriteBuffer::storeByte(uint8_t b) { return storeBuffer(&b, sizeof b); }
phys::Stream& MemoryWriteBuffer::storeWord(uint16_t w) { return storeBuffer(&w, sizeof w); }
phys::Stream& MemoryWriteBuffer::storeDword(uint32_t d) { return storeBuffer(&d, sizeof d); }
phys::Stream& MemoryWriteBuffer::storeFloat(float f) { return storeBuffer(&f, sizeof f); }
phys::Stream& MemoryWriteBuffer::storeDouble(double f) { return storeBuffer(&f, sizeof f); }

phys::Stream& MemoryWriteBuffer::storeBuffer(const void* buffer, uint32_t size) {
    const uint32_t expectedSize = currentSize + size;
    if (expectedSize > maxSize) {
        maxSize = expectedSize + 4096;
        uint8_t* newData = new uint8_t[maxSize];
        if (data) {
            std::memcpy(newData, data, currentSize);
            delete[] data;
        }
        data = newData;
    }
    if (size) std::memcpy(data + currentSize, buffer, size);
    currentSize += size;
    return *this;
}

namespace {

template <class T>
T ReadValue(const uint8_t*& cursor) {
    T value;
    std::memcpy(&value, cursor, sizeof value);
    cursor += sizeof value;
    return value;
}

}  // namespace

uint8_t MemoryReadBuffer::readByte() const { return ReadValue<uint8_t>(buffer); }
uint16_t MemoryReadBuffer::readWord() const { return ReadValue<uint16_t>(buffer); }
uint32_t MemoryReadBuffer::readDword() const { return ReadValue<uint32_t>(buffer); }
float MemoryReadBuffer::readFloat() const { return ReadValue<float>(buffer); }
double MemoryReadBuffer::readDouble() const { return ReadValue<double>(buffer); }

void MemoryReadBuffer::readBuffer(void* destination, uint32_t size) const {
    if (size) std::memcpy(destination, buffer, size);
    buffer += size;
}
