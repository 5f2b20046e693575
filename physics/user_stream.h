#pragma once
#include <cstdio>

#include "physics/stream.h"

// The file-backed stream: values go to or come from an open file, one item per call. A read
// that fails gives 0.
class UserStream : public phys::Stream {
public:
    // Opens fileName for reading ("rb") when load is true, for writing ("wb") otherwise.
    UserStream(const char* fileName, bool load);
    ~UserStream() override;
    UserStream(const UserStream&) = delete;
    UserStream& operator=(const UserStream&) = delete;

    uint8_t readByte() const override;
    uint16_t readWord() const override;
    uint32_t readDword() const override;
    float readFloat() const override;
    double readDouble() const override;
    void readBuffer(void* buffer, uint32_t size) const override;

    phys::Stream& storeByte(uint8_t b) override;
    phys::Stream& storeWord(uint16_t w) override;
    phys::Stream& storeDword(uint32_t d) override;
    phys::Stream& storeFloat(float f) override;
    phys::Stream& storeDouble(double f) override;
    phys::Stream& storeBuffer(const void* buffer, uint32_t size) override;

    std::FILE* fp = nullptr;
};
