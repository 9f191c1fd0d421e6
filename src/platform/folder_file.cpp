#include "platform/folder_file.h"

#include <bit>
#include <cstring>

#include "platform/zo_exception.h"

namespace {

template <typename T>
void WriteLittleEndian(ZoFolderFile& file, T value) {
    uint8_t bytes[sizeof(T)];
    for (size_t i = 0; i < sizeof(T); ++i)
        bytes[i] = static_cast<uint8_t>(static_cast<uint64_t>(value) >> (8 * i));
    file.WriteData(bytes, sizeof(T));
}

template <typename T>
T ReadLittleEndian(ZoFolderFile& file) {
    uint8_t bytes[sizeof(T)];
    file.ReadData(bytes, sizeof(T));
    uint64_t value = 0;
    for (size_t i = 0; i < sizeof(T); ++i)
        value |= static_cast<uint64_t>(bytes[i]) << (8 * i);
    return static_cast<T>(value);
}

}  // namespace

void ZoFolderFile::WriteInt32(int32_t value) {
    WriteLittleEndian(*this, static_cast<uint32_t>(value));
}
void ZoFolderFile::WriteUInt32(uint32_t value) {
    WriteLittleEndian(*this, value);
}
void ZoFolderFile::WriteUInt16(uint16_t value) {
    WriteLittleEndian(*this, value);
}
void ZoFolderFile::WriteBool(bool value) {
    WriteLittleEndian<uint8_t>(*this, value ? 1 : 0);
}
void ZoFolderFile::WriteDouble(double value) {
    WriteLittleEndian(*this, std::bit_cast<uint64_t>(value));
}

void ZoFolderFile::WriteGuid(const ZoGuid& guid) {
    const auto bytes = guid.ToBytes();
    WriteData(bytes.data(), static_cast<uint32_t>(bytes.size()));
}

void ZoFolderFile::WriteString(const ZoString& text) {
    WriteUInt32(static_cast<uint32_t>(text.size()));
    WriteData(text.data(), static_cast<uint32_t>(text.size()));
}

int32_t ZoFolderFile::ReadInt32() {
    return static_cast<int32_t>(ReadLittleEndian<uint32_t>(*this));
}
uint32_t ZoFolderFile::ReadUInt32() {
    return ReadLittleEndian<uint32_t>(*this);
}
uint16_t ZoFolderFile::ReadUInt16() {
    return ReadLittleEndian<uint16_t>(*this);
}
bool ZoFolderFile::ReadBool() {
    return ReadLittleEndian<uint8_t>(*this) != 0;
}
double ZoFolderFile::ReadDouble() {
    return std::bit_cast<double>(ReadLittleEndian<uint64_t>(*this));
}

ZoGuid ZoFolderFile::ReadGuid() {
    std::array<uint8_t, 16> bytes;
    ReadData(bytes.data(), static_cast<uint32_t>(bytes.size()));
    return ZoGuid::FromBytes(bytes);
}

void ZoFolderFile::ReadString(ZoString& text) {
    const uint32_t length = ReadUInt32();
    // The count is checked against what the folder holds before allocating,
    // so a damaged count cannot ask for gigabytes.
    if (length > GetFolderSize())
        throw ZoFileNonFatalException("A text is longer than its folder");
    ZoString read(length, '\0');
    ReadData(read.data(), length);
    text = std::move(read);
}

ZoFolderGuard::ZoFolderGuard(ZoFolderFile& file, bool forWriting, bool mustExist) : file_(file) {
    file_.DescendFolder(nullptr, forWriting, mustExist);
}

ZoFolderGuard::ZoFolderGuard(ZoFolderFile& file, uint32_t name, bool forWriting, bool mustExist)
    : file_(file) {
    file_.DescendFolder(&name, forWriting, mustExist);
}

ZoFolderGuard::~ZoFolderGuard() {
    try {
        file_.Ascend();
    } catch (...) {
        // Runs while another exception may be unwinding; a failed ascend
        // has nothing useful to add to that.
    }
}
