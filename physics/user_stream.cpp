#include "physics/user_stream.h"

#include <cstring>

UserStream::UserStream(const char* fileName, bool load) : fp(std::fopen(fileName, load ? "rb" : "wb")) {}

UserStream::~UserStream() {
    if (fp) std::fclose(fp);
}

namespace {

template <class T>
T ReadValue(std::FILE* fp) {
    T value{};
    if (!fp || std::fread(&value, sizeof value, 1, fp) != 1) return T{};
    return value;
}

template <class T>
void StoreValue(std::FILE* fp, T value) {
    if (fp) std::fwrite(&value, sizeof value, 1, fp);
}

}  // namespace

uint8_t UserStream::readByte() const { return ReadValue<uint8_t>(fp); }
uint16_t UserStream::readWord() const { return ReadValue<uint16_t>(fp); }
uint32_t UserStream::readDword() const { return ReadValue<uint32_t>(fp); }
float UserStream::readFloat() const { return ReadValue<float>(fp); }
double UserStream::readDouble() const { return ReadValue<double>(fp); }

void UserStream::readBuffer(void* buffer, uint32_t size) const {
    if (!size) return;
    if (!fp || std::fread(buffer, size, 1, fp) != 1) std::memset(buffer, 0, size);
}

phys::Stream& UserStream::storeByte(uint8_t b) {
    StoreValue(fp, b);
    return *this;
}
phys::Stream& UserStream::storeWord(uint16_t w) {
    StoreValue(fp, w);
    return *this;
}
phys::Stream& UserStream::storeDword(uint32_t d) {
    StoreValue(fp, d);
    return *this;
}
phys::Stream& UserStream::storeFloat(float f) {
    StoreValue(fp, f);
    return *this;
}
phys::Stream& UserStream::storeDouble(double f) {
    StoreValue(fp, f);
    return *this;
}
phys::Stream& UserStream::storeBuffer(const void* buffer, uint32_t size) {
    if (fp && size) std::fwrite(buffer, size, 1, fp);
    return *this;
}
