// Feeds arbitrary bytes to the project-file container and walks whatever tree
// it accepts, reading every stream and folder the way record readers do, then
// loads the same bytes as a document.
// Inputs that do not start with the container's magic are taken as a body
// and given a valid header and checksum, so that mutations reach the folder
// parser instead of stopping at the CRC.
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include <zlib.h>

#include "document/file_storage.h"
#include "effects/register_effects.h"
#include "platform/compiled_file.h"
#include "platform/zo_exception.h"

namespace {

void Walk(ZoCompiledFile& file) {
    std::vector<uint8_t> data(file.GetFolderSize());
    uint32_t got = 0;
    file.ReadData(data.data(), static_cast<uint32_t>(data.size()), got);
    if (got != data.size())
        __builtin_trap();
    std::vector<uint32_t> names;
    for (uint32_t name = 0, more = file.GetFirstFolderName(name); more;
         more = file.GetNextFolderName(name)) {
        names.push_back(name);
    }
    for (const uint32_t name : names) {
        ZoFolderGuard folder(file, name, false);
        Walk(file);
    }
    for (;;) {
        try {
            ZoFolderGuard folder(file, false);
            Walk(file);
        } catch (const ZoFileNonFatalException&) {
            return;
        }
    }
}

void PutUInt32(std::string& out, uint32_t value) {
    for (int shift = 0; shift < 32; shift += 8)
        out.push_back(static_cast<char>(value >> shift));
}

std::string WrapBody(const uint8_t* body, size_t size) {
    std::string out("ZoCF\r\n\x1a\n", 8);
    PutUInt32(out, 1);
    PutUInt32(out, ZoFourCC("TSK1"));
    PutUInt32(out, 0x01000000);
    PutUInt32(out, static_cast<uint32_t>(size));
    out.append(reinterpret_cast<const char*>(body), size);
    PutUInt32(out, static_cast<uint32_t>(
                       crc32(0, reinterpret_cast<const Bytef*>(out.data()), out.size())));
    return out;
}

void LoadAndWalk(std::string_view input) {
    try {
        auto file = ZoCompiledFile::FromBytes(input, ZoFourCC("TSK1"));
        Walk(file);
        // Whatever was accepted must serialise back to the same bytes.
        if (file.ToBytes() != input)
            __builtin_trap();
    } catch (const ZoException&) {
        return;
    }
    // The document loader on the same bytes: it may refuse them, but only
    // with ZoException.
    try {
        auto file = ZoCompiledFile::FromBytes(input, ZoFourCC("TSK1"));
        TeskLoadedDocument loaded = TeskReadDocument(file);
        if (!loaded.state)
            __builtin_trap();
    } catch (const ZoException&) {
    }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    TeskRegisterEffects();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    if (input.starts_with("ZoCF"))
        LoadAndWalk(input);
    else
        LoadAndWalk(WrapBody(data, size));
    return 0;
}
