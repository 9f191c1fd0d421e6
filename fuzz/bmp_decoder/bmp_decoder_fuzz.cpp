// The BMP decoder on arbitrary bytes; see decoder_fuzz.h.
#include "../decoder_fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    return decoder_fuzz::Run(ZoImageFormat::Bmp, data, size);
}
